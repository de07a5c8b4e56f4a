// The closing table of a benchmark: the library and its peer, measured in the same run.
//
// A pair is two benchmarks named "CASE/library" and "CASE/peer". Machines are noisy, so the medians of
// several interleaved repetitions are compared, and the ratio is what counts.
#pragma once

#include <cstddef>
#include <map>
#include <string>

#include <benchmark/benchmark.h>

// How much of something to measure: all of it, or a small part in a run that only shows that it works.
std::size_t Amount(std::size_t nFull);

class RatioTable : public benchmark::ConsoleReporter
{
public:
    // The ratio that a case aims at, as text for the table.
    void SetGoal(const std::string& strCase, const std::string& strGoal);

    // A result that was measured outside of the benchmark library.
    void Add(const std::string& strCase, const std::string& strSide, double nNanoseconds);

    void Print() const;

    void ReportRuns(const std::vector<Run>& oRuns) override;

private:
    std::map<std::string, std::map<std::string, double>> m_oNanoseconds;   // by case and side
    std::map<std::string, std::string> m_oGoals;
};
