// Splits the script once more, by the standard library's lines, where the library reads blocks.
#include "Rules.h"

#include "ZevrinUtils/SQLFileParser.h"
#include "support/ScratchFolder.h"

#include <algorithm>
#include <sstream>

namespace
{
using Statements = std::vector<std::string>;

std::string Trimmed(std::string str)
{
    for (const char ch : {' ', '\t'})
        while (str.starts_with(ch) || str.ends_with(ch))
            str.erase(str.ends_with(ch) ? str.size() - 1 : 0, 1);
    return str;
}

// A zero byte takes the rest of its block with it.
std::string WithoutZeros(const std::string& strScript)
{
    std::string strText;
    for (std::size_t nBlock = 0; nBlock < strScript.size(); nBlock += 1024)
        strText += strScript.substr(nBlock, 1024).c_str();
    return strText;
}

Statements StatementsOf(std::string strScript)
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

std::string FaultInSqlScript(const unsigned char* pText, std::size_t nSize)
{
    static const ScratchFolder s_oFolder(ScratchFolder::InMemory());
    const std::string strScript(pText, pText + nSize);
    const std::string strPath = s_oFolder / "a script.sql";
    ScratchFolder::Write(strPath, strScript);
    Statements oStatements{"before"};
    std::string strError = "untouched";
    if (!CSSQLFileParser::Parse(strPath, oStatements, strError) || strError != "untouched")
        return strError;
    return oStatements == StatementsOf(WithoutZeros(strScript)) ? "" : "the statements";
}
