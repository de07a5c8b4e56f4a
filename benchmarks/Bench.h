// The common part of the benchmarks. Each of them is a Measure, called by the main in Bench.cpp.
#pragma once

#include "RatioTable.h"

#include <cstddef>
#include <filesystem>

// Fills the table, which is then printed. What it throws is told, and the program fails. The arguments are those that
// are not for the benchmark library.
void Measure(RatioTable& oTable, const std::vector<std::string>& oArguments);

// The amount of something to measure: all of it, or a small part in a run that only shows that it works.
std::size_t Amount(std::size_t nFull);

// Throws if something has failed.
void Require(bool bSucceeded, const std::string& strWhat);

// Runs a command by the shell. Throws if it fails.
void RunCommand(const std::string& strCommand);

// A folder of this process's own, in that which the first argument names or in that for temporary files; removed with
// the object.
class ScratchFolder
{
public:
    explicit ScratchFolder(const std::vector<std::string>& oArguments);
    ~ScratchFolder();
    ScratchFolder(const ScratchFolder&) = delete;
    ScratchFolder& operator=(const ScratchFolder&) = delete;

    std::filesystem::path operator/(const char* pszName) const { return m_oPath / pszName; }

private:
    std::filesystem::path m_oPath;
};
