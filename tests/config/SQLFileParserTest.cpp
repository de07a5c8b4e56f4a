#include "ZevrinUtils/SQLFileParser.h"

#include "platform/Streams.h"
#include "support/ScratchFolder.h"
#include "support/Substitution.h"

#include <random>
#include <sstream>

#include <gmock/gmock.h>

namespace
{
using Statements = std::vector<std::string>;

struct Parser : CSSQLFileParser
{
    using CSSQLFileParser::IsACommentLine;
    using CSSQLFileParser::IsEndingWithSemiColon;
    using CSSQLFileParser::Trim;
};

Statements Parse(const std::string& strScript, Statements oStatements = {})
{
    const ScratchFolder oFolder;
    ScratchFolder::Write(oFolder / "a script.sql", strScript);
    std::string strError = "untouched";
    EXPECT_TRUE(CSSQLFileParser::Parse(oFolder / "a script.sql", oStatements, strError));
    EXPECT_EQ(strError, "untouched");
    return oStatements;
}

// The rules once more, in the plainest way, for a script without zero bytes.
Statements Reference(std::string strScript)
{
    const auto trim = [](std::string& str) {
        for (const char ch : {' ', '\t'})
        {
            while (!str.empty() && str.back() == ch)
                str.pop_back();
            while (!str.empty() && str.front() == ch)
                str.erase(0, 1);
        }
    };
    std::replace(strScript.begin(), strScript.end(), '\r', '\n');
    std::istringstream oScript(strScript);
    Statements oStatements;
    std::string strPending;
    for (std::string strLine; std::getline(oScript, strLine);)
    {
        trim(strLine);
        if (strLine.empty() || strLine[0] == '#')
            continue;
        strPending += strLine;
        trim(strLine);
        if (!strLine.empty() && strLine.back() == ';')
            oStatements.push_back(std::exchange(strPending, ""));
    }
    return oStatements;
}
}

TEST(SqlScript, GivesItsStatements)
{
    using namespace std::string_literals;
    const std::string strLong(5000, 'x');
    const std::pair<std::string, Statements> aoCases[] = {
        {"# create the table\n\nCREATE TABLE a (\n    id INT\n# a comment inside\n);\n"
         "INSERT INTO a VALUES (1); INSERT INTO a VALUES (2);\nDELETE FROM a; # cleanup\nSELECT 1;\nDROP TABLE a\n",
         {"CREATE TABLE a (id INT);", "INSERT INTO a VALUES (1); INSERT INTO a VALUES (2);",
          "DELETE FROM a; # cleanupSELECT 1;"}},
        {"", {}},
        {"# only\n \t\n\n", {}},
        {"SELECT 1\n", {}},
        {"a;", {"a;"}},
        {"a\rb;\nc\r\n;\n;", {"ab;", "c;", ";"}},
        {"\t # no comment\n;\n \t# one\n-- none\n/* ; */;", {" # no comment;", "-- none/* ; */;"}},
        {"a; \t\nb; \t \t\n;", {"a; ", "b; \t ;"}},
        {"\v;\n'text;\n#lost';", {"\v;", "'text;"}},
        {strLong + "\n" + strLong + ";", {strLong + strLong + ";"}},
        {"a;\nb\0lost"s + std::string(1024 - 9, ';') + "c;", {"a;", "bc;"}},
    };
    for (const auto& [strScript, oExpected] : aoCases)
        EXPECT_EQ(Parse(strScript), oExpected) << strScript;
    EXPECT_THAT(Parse("a;", {"before"}), testing::ElementsAre("before", "a;"));
}

TEST(SqlScript, AgreesWithAPlainReadingOfTheRules)
{
    std::mt19937 oRandom(20);
    for (int nRound = 0; nRound < 300; ++nRound)
    {
        std::string strScript(oRandom() % 3000, 0);
        for (char& ch : strScript)
            ch = "  \t\t;;;#\r\n\nab'-"[oRandom() % 15];
        ASSERT_EQ(Parse(strScript), Reference(strScript)) << "round " << nRound;
    }
}

TEST(SqlScript, EndsWhereReadingFails)
{
    Statements oStatements{"before"};
    std::string strError;
    EXPECT_FALSE(CSSQLFileParser::Parse("no such file", oStatements, strError));
    EXPECT_EQ(strError, "Failed to open the file no such file");
    EXPECT_THAT(oStatements, testing::ElementsAre("before"));

    static int s_nReads = 0;
    const Substitution<StreamCalls> oFailing([](StreamCalls& oCalls) {
        oCalls.fread = [](void* p, std::size_t nSize, std::size_t nCount, std::FILE* pFile) {
            EXPECT_EQ(nSize * nCount, 1024u);
            return ++s_nReads == 2 ? 0 : std::fread(p, nSize, nCount, pFile);
        };
    });
    EXPECT_THAT(Parse("a;\n" + std::string(2000, 'x') + ";"), testing::ElementsAre("a;"));
}

TEST(SqlLines, AreTrimmedInPlace)
{
    std::string strLine = " \t x \t ";
    Parser::Trim(strLine);
    EXPECT_EQ(strLine, " x ");
    EXPECT_FALSE(Parser::IsEndingWithSemiColon(strLine = ""));
    EXPECT_TRUE(Parser::IsEndingWithSemiColon(strLine = "\t; "));
    EXPECT_EQ(strLine, ";");
    EXPECT_TRUE(Parser::IsACommentLine(strLine = "\t"));
    EXPECT_TRUE(Parser::IsACommentLine(strLine = " # "));
    EXPECT_EQ(strLine, "#");
}
