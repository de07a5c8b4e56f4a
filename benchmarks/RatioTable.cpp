// Medians instead of means, because a round that the machine disturbed must not move the result.
#include "RatioTable.h"

#include <algorithm>
#include <chrono>
#include <iomanip>
#include <iostream>

namespace
{
double Nanoseconds(const std::function<void()>& action)
{
    const auto nStart = std::chrono::steady_clock::now();
    action();
    return std::chrono::duration<double, std::nano>(std::chrono::steady_clock::now() - nStart).count();
}

// The mean of the middle two: the number is even, because half of the times went first and half second.
double Median(std::vector<double> oTimes)
{
    std::ranges::sort(oTimes);
    const std::size_t nMiddle = oTimes.size() / 2;
    return (oTimes[nMiddle - 1] + oTimes[nMiddle]) / 2;
}
}

void RatioTable::Compare(const std::vector<Case>& oCases, int nRounds)
{
    std::vector<std::vector<double>> oLibrary(oCases.size());
    std::vector<std::vector<double>> oPeer(oCases.size());
    for (int nRound = 0; nRound < nRounds; ++nRound)
        for (std::size_t n = 0; n < oCases.size(); ++n)
        {
            const bool bLibraryFirst = nRound % 2;
            if (bLibraryFirst)
                oLibrary[n].push_back(Nanoseconds(oCases[n].library));
            oPeer[n].push_back(Nanoseconds(oCases[n].peer));
            if (!bLibraryFirst)
                oLibrary[n].push_back(Nanoseconds(oCases[n].library));
        }
    for (std::size_t n = 0; n < oCases.size(); ++n)
    {
        const auto& [strName, strGoal, library, peer, nTimes] = oCases[n];
        SetGoal(strName, strGoal);
        Add(strName, "library", Median(oLibrary[n]) / nTimes);
        Add(strName, "peer", Median(oPeer[n]) / nTimes);
    }
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
                  << "  " << (itGoal == m_oGoals.end() || itGoal->second.empty() ? "-" : itGoal->second) << '\n';
    }
}
