// The closing table of a benchmark: the library and its peer, measured in the same run. Machines are noisy, so the
// medians of several interleaved repetitions are compared, and the ratio is what counts.
#pragma once

#include <functional>
#include <map>
#include <string>
#include <vector>

#include <benchmark/benchmark.h>

class RatioTable : public benchmark::ConsoleReporter
{
public:
    struct Case
    {
        std::string strName;
        std::string strGoal;             // the ratio that it aims at, as text for the table
        std::function<void()> library;   // throw if they fail
        std::function<void()> peer;
        int nTimes = 1;   // how often each does what is to be measured
    };

    // Measures the cases, one after the other in each round, so that one can build on what another has done. Library
    // and peer take turns in going first: the second one finds a machine that the first has used, with less memory
    // at hand. So the rounds must be even in number.
    void Compare(const std::vector<Case>& oCases, int nRounds);

    // For a pair of benchmarks of the benchmark library, named "CASE/library" and "CASE/peer".
    void SetGoal(const std::string& strCase, const std::string& strGoal);

    // A result that was measured elsewhere.
    void Add(const std::string& strCase, const std::string& strSide, double nNanoseconds);

    void Print() const;

    void ReportRuns(const std::vector<Run>& oRuns) override;

private:
    std::map<std::string, std::map<std::string, double>> m_oNanoseconds;   // by case and side
    std::map<std::string, std::string> m_oGoals;
};
