// A large SQL script against what a host would write for itself.
#include "Bench.h"

#include "ZevrinUtils/SQLFileParser.h"

#include <fstream>

#include <sqlite3.h>

namespace
{
const std::size_t nScriptSize = Amount(256u << 20);
constexpr int nRounds = 4;

using Statements = std::vector<std::string>;

std::size_t WriteScript(const std::string& strFile)
{
    std::ofstream oFile(strFile);
    std::size_t nSize = 0;
    std::size_t nStatements = 0;
    for (; nSize < nScriptSize; ++nStatements)
    {
        const std::string strStatement = "# item " + std::to_string(nStatements) +
                                         "\nINSERT INTO items (id, name, price, description)\n    VALUES (" +
                                         std::to_string(nStatements) +
                                         ", 'an item with a name',\n            12.50, 'and what is said of it');\n\n";
        oFile << strStatement;
        nSize += strStatement.size();
    }
    Require(oFile.flush().good(), "no room for a script of 256 MiB");
    return nStatements;
}

Statements WithLibrary(const std::string& strFile)
{
    Statements oStatements;
    std::string strError;
    CSSQLFileParser::Parse(strFile, oStatements, strError);
    return oStatements;
}

Statements WithGetline(const std::string& strFile)
{
    std::ifstream oFile(strFile);
    Statements oStatements;
    std::string strStatement;
    for (std::string strLine; std::getline(oFile, strLine);)
    {
        strStatement += strLine;
        if (!strLine.empty() && strLine.back() == ';')
            oStatements.push_back(std::exchange(strStatement, {}));
    }
    return oStatements;
}

Statements WithCompletenessTest(const std::string& strFile)
{
    std::ifstream oFile(strFile);
    Statements oStatements;
    std::string strStatement;
    for (std::string strLine; std::getline(oFile, strLine);)
    {
        strStatement += strLine += '\n';
        if (sqlite3_complete(strStatement.c_str()))
            oStatements.push_back(std::exchange(strStatement, {}));
    }
    return oStatements;
}

}

void Measure(RatioTable& oTable, const std::vector<std::string>& oArguments)
{
    const ScratchFolder oFolder(oArguments);
    const std::string strFile = oFolder / "script.sql";
    const std::size_t nExpected = WriteScript(strFile);
    const auto by = [&](Statements (*pfnSplit)(const std::string&)) {
        return [=] { Require(pfnSplit(strFile).size() == nExpected, "statements are missing, or there are more"); };
    };
    oTable.Compare({{"256 MiB of SQL, against getline", "at most 1.5", by(&WithLibrary), by(&WithGetline)},
                    {"256 MiB of SQL, against sqlite3_complete", "", by(&WithLibrary), by(&WithCompletenessTest)}},
                   nRounds);
}
