#include "RatioTable.h"

#include <cstdlib>
#include <iomanip>
#include <iostream>

std::size_t Amount(std::size_t nFull)
{
    constexpr std::size_t nShortPart = 64;
    return std::getenv("ZEVRIN_BENCH_SHORT") ? nFull / nShortPart : nFull;
}

void RatioTable::SetGoal(const std::string& strCase, const std::string& strGoal)
{
    m_oGoals[strCase] = strGoal;
}

void RatioTable::Add(const std::string& strCase, const std::string& strSide, double nNanoseconds)
{
    m_oNanoseconds[strCase][strSide] = nNanoseconds;
}

void RatioTable::ReportRuns(const std::vector<Run>& oRuns)
{
    ConsoleReporter::ReportRuns(oRuns);
    for (const auto& oRun : oRuns)
    {
        const std::string& strName = oRun.run_name.function_name;
        const auto nSlash = strName.rfind('/');
        if (oRun.run_type == Run::RT_Aggregate && oRun.aggregate_name == "median" && nSlash != std::string::npos)
            Add(strName.substr(0, nSlash), strName.substr(nSlash + 1), oRun.GetAdjustedRealTime());
    }
}

void RatioTable::Print() const
{
    std::cout << '\n'
              << std::left << std::setw(46) << "case" << std::right << std::setw(14) << "library, ns" << std::setw(14)
              << "peer, ns" << std::setw(8) << "ratio"
              << "  goal\n"
              << std::fixed;
    for (const auto& [strCase, oSides] : m_oNanoseconds)
    {
        if (oSides.size() < 2)
            continue;   // a filter left the other side out
        const double nLibrary = oSides.at("library");
        const double nPeer = oSides.at("peer");
        const auto itGoal = m_oGoals.find(strCase);
        std::cout << std::left << std::setw(46) << strCase << std::right << std::setprecision(1) << std::setw(14)
                  << nLibrary << std::setw(14) << nPeer << std::setprecision(2) << std::setw(8) << nLibrary / nPeer
                  << "  " << (itGoal == m_oGoals.end() ? "-" : itGoal->second) << '\n';
    }
}
