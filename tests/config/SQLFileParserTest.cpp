#include "ZevrinUtils/SQLFileParser.h"

#include "platform/Streams.h"
#include "support/ScratchFolder.h"
#include "support/Substitution.h"

#include <algorithm>
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
};

Statements Parse(const std::string& strScript, Statements oStatements = {})
{
    const ScratchFolder oFolder;
    ScratchFolder::Write(oFolder / "a script.sql", strScript);
    std::string strError = "untouched";
    EXPECT_TRUE(CSSQLFileParser::Parse(oFolder / "a script.sql", oStatements, strError) && strError == "untouched");
    return oStatements;
}

std::string Trimmed(std::string str)
{
    for (const char ch : {' ', '\t'})
        while (str.starts_with(ch) || str.ends_with(ch))
            str.erase(str.ends_with(ch) ? str.size() - 1 : 0, 1);
    return str;
}

// The rules once more, in other words, for a script without zero bytes.
Statements Reference(std::string strScript)
{
    std::replace(strScript.begin(), strScript.end(), '\r', '\n');
    std::istringstream oScript(strScript);
    Statements oStatements{""};
    for (std::string strLine; std::getline(oScript, strLine);)
    {
        strLine = Trimmed(strLine);
        oStatements.back() += strLine.starts_with('#') ? "" : strLine;
        if (!strLine.starts_with('#') && Trimmed(strLine).ends_with(';'))
            oStatements.emplace_back();
    }
    oStatements.pop_back();
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
        {"a\rb;\nc\r\n;\n;", {"ab;", "c;", ";"}},
        {"\t # no comment\n;\n \t# one\n-- none\n/* ; */;", {" # no comment;", "-- none/* ; */;"}},
        {"a; \t\nb; \t \t\n;\n\v;", {"a; ", "b; \t ;", "\v;"}},
        {strLong + "\n" + strLong + ";", {strLong + strLong + ";"}},
        {"a;\nb\0lost"s + std::string(1024 - 9, ';') + "c;", {"a;", "bc;"}},
    };
    for (const auto& [strScript, oExpected] : aoCases)
        EXPECT_EQ(Parse(strScript), oExpected) << strScript;
    EXPECT_EQ(Parse("a;", {"before"}), (Statements{"before", "a;"}));
    std::string strLine;
    EXPECT_TRUE(Parser::IsACommentLine(strLine) && !Parser::IsEndingWithSemiColon(strLine));
    EXPECT_TRUE(!Parser::IsEndingWithSemiColon(strLine = "\t; \t") && strLine == "; ");

    std::mt19937 oRandom(20);
    for (int nRound = 0; nRound < 100; ++nRound)
    {
        std::string strScript(oRandom() % 3000, 0);
        for (char& ch : strScript)
            ch = "  \t\t;;;#\r\n\nab'-"[oRandom() % 15];
        ASSERT_EQ(Parse(strScript), Reference(strScript)) << "round " << nRound;
    }
}

TEST(SqlScript, EndsWhereReadingFails)
{
    Statements oStatements;
    std::string strError;
    EXPECT_FALSE(CSSQLFileParser::Parse("no such file", oStatements, strError));
    EXPECT_EQ(strError, "Failed to open the file no such file");
    static int s_nReads = 0;
    const Substitution<StreamCalls> oFailing([](StreamCalls& oCalls) {
        oCalls.fread = [](void* p, std::size_t nSize, std::size_t nCount, std::FILE* pFile) {
            return ++s_nReads == 2 ? 0 : std::fread(p, nSize, nCount, pFile);
        };
    });
    EXPECT_EQ(Parse("a;\n" + std::string(2000, 'x') + ";"), Statements{"a;"});
}
