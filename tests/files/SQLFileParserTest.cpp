// Scripts split by the rules that the fuzzed program holds them to as well.
#include "ZevrinUtils/SQLFileParser.h"

#include "fuzz/Rules.h"

#include <random>

#include <gtest/gtest.h>

namespace
{
struct Parser : CSSQLFileParser
{
    using CSSQLFileParser::IsACommentLine;
    using CSSQLFileParser::IsEndingWithSemiColon;
};
}

TEST(SqlScript, AgreesWithAPlainReadingOfTheRules)
{
    std::mt19937 oRandom(20);
    for (int nRound = 0; nRound < 300; ++nRound)
    {
        std::vector<unsigned char> oScript(oRandom() % 3000);
        for (auto& nByte : oScript)
            nByte = static_cast<unsigned char>("  \t\t;;;#\r\n\nab'-"[oRandom() % 15]);
        ASSERT_EQ(FaultInSqlScript(oScript.data(), oScript.size()), "") << "round " << nRound;
    }
    std::string strLine;
    EXPECT_TRUE(Parser::IsACommentLine(strLine) && !Parser::IsEndingWithSemiColon(strLine));
    EXPECT_TRUE(!Parser::IsEndingWithSemiColon(strLine = "\t; \t") && strLine == "; ");
}
