// A large SQL script against what a host would write for itself.
#include "RatioTable.h"

#include "ZevrinUtils/SQLFileParser.h"

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iostream>

#include <sqlite3.h>
#include <unistd.h>

namespace
{
const std::size_t nScriptSize = Amount(256u << 20);
constexpr int nRounds = 5;

using Statements = std::vector<std::string>;
using Clock = std::chrono::steady_clock;

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

double Measure(Statements (*pfnSplit)(const std::string&), const std::string& strFile, std::size_t nExpected)
{
    const auto nStart = Clock::now();
    const std::size_t nStatements = pfnSplit(strFile).size();
    if (nStatements != nExpected)
    {
        std::cerr << "bench_sql: " << nStatements << " statements instead of " << nExpected << '\n';
        std::exit(1);
    }
    return std::chrono::duration<double, std::nano>(Clock::now() - nStart).count();
}
}

int main()
{
    const std::string strFile =
        std::filesystem::temp_directory_path() / ("sql bench " + std::to_string(getpid()) + ".sql");
    const std::size_t nStatements = WriteScript(strFile);

    // In turn, so that all see the machine's moods; the medians are compared.
    Statements (*const apfnSplit[])(const std::string&) = {&WithLibrary, &WithGetline, &WithCompletenessTest};
    std::vector<double> aoTimes[std::size(apfnSplit)];
    for (int n = 0; n < nRounds; ++n)
        for (std::size_t nSplit = 0; nSplit < std::size(apfnSplit); ++nSplit)
            aoTimes[nSplit].push_back(Measure(apfnSplit[nSplit], strFile, nStatements));
    std::filesystem::remove(strFile);
    for (auto& oTimes : aoTimes)
        std::nth_element(oTimes.begin(), oTimes.begin() + nRounds / 2, oTimes.end());

    RatioTable oTable;
    const std::string astrCases[] = {"256 MiB of SQL, against getline", "256 MiB of SQL, against sqlite3_complete"};
    oTable.SetGoal(astrCases[0], "at most 1.5");
    for (std::size_t nPeer : {1, 2})
    {
        oTable.Add(astrCases[nPeer - 1], "library", aoTimes[0][nRounds / 2]);
        oTable.Add(astrCases[nPeer - 1], "peer", aoTimes[nPeer][nRounds / 2]);
    }
    oTable.Print();
}
