#include "ZevrinUtils/SQLFileParser.h"

#include "support/ScratchFolder.h"

#include <algorithm>
#include <random>
#include <sstream>

#include <gtest/gtest.h>

namespace
{
using Statements = std::vector<std::string>;

struct Parser : CSSQLFileParser
{
    using CSSQLFileParser::IsACommentLine;
    using CSSQLFileParser::IsEndingWithSemiColon;
};

Statements Parse(const std::string& strScript)
{
    const ScratchFolder oFolder;
    ScratchFolder::Write(oFolder / "a script.sql", strScript);
    Statements oStatements{"before"};
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
    Statements oStatements{"before", ""};
    for (std::string strLine; std::getline(oScript, strLine);)
        if (strLine = Trimmed(strLine); !strLine.starts_with('#'))
            if (oStatements.back() += strLine; Trimmed(strLine).ends_with(';'))
                oStatements.emplace_back();
    oStatements.pop_back();
    return oStatements;
}
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
    std::string strLine;
    EXPECT_TRUE(Parser::IsACommentLine(strLine) && !Parser::IsEndingWithSemiColon(strLine));
    EXPECT_TRUE(!Parser::IsEndingWithSemiColon(strLine = "\t; \t") && strLine == "; ");
}
