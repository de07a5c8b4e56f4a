// The main of every benchmark: runs its Measure and prints the table, or tells what failed. With ZEVRIN_BENCH_SHORT set
// the amounts shrink, for a run that shows only that everything works.
#include "Bench.h"

#include <cstdlib>
#include <iostream>
#include <stdexcept>

#include <unistd.h>

std::size_t Amount(std::size_t nFull)
{
    constexpr std::size_t nShortPart = 64;
    return std::getenv("ZEVRIN_BENCH_SHORT") ? nFull / nShortPart : nFull;
}

void Require(bool bSucceeded, const std::string& strWhat)
{
    if (!bSucceeded)
        throw std::runtime_error(strWhat);
}

void RunCommand(const std::string& strCommand)
{
    Require(std::system(strCommand.c_str()) == 0, strCommand);
}

ScratchFolder::ScratchFolder(const std::vector<std::string>& oArguments)
    : m_oPath((oArguments.empty() ? std::filesystem::temp_directory_path() : std::filesystem::path(oArguments[0])) /
              ("zevrin bench " + std::to_string(getpid())))
{
    std::filesystem::create_directory(m_oPath);
}

ScratchFolder::~ScratchFolder()
{
    std::error_code oIgnored;
    std::filesystem::remove_all(m_oPath, oIgnored);
}

int main(int nArguments, char** ppArguments)
{
    benchmark::Initialize(&nArguments, ppArguments);
    RatioTable oTable;
    try
    {
        Measure(oTable, {ppArguments + 1, ppArguments + nArguments});
    }
    catch (const std::exception& oError)
    {
        std::cerr << ppArguments[0] << ": " << oError.what() << '\n';
        return 1;
    }
    oTable.Print();
}
