// Trees of folders against the system's own tools: bench_folder [FOLDER TO WORK IN]
#include "RatioTable.h"

#include "ZevrinUtils/Folder.h"

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <functional>
#include <iostream>

#include <unistd.h>

namespace
{
namespace fs = std::filesystem;
using Clock = std::chrono::steady_clock;

const std::size_t nFolders = Amount(500);
constexpr std::size_t nGroups = 20;   // of folders, each below a folder of its own
constexpr int nFilesInEach = 100;
constexpr int nRounds = 7;
const std::uintmax_t nLargeSize = Amount(2ull << 30);

void Require(bool bSucceeded, const std::string& strWhat)
{
    if (bSucceeded)
        return;
    std::cerr << "bench_folder: " << strWhat << '\n';
    std::exit(1);
}

void PlantTree(const fs::path& oRoot)
{
    for (std::size_t nFolder = 0; nFolder < nFolders; ++nFolder)
    {
        const fs::path oFolder = oRoot / std::to_string(nFolder % nGroups) / std::to_string(nFolder);
        fs::create_directories(oFolder);
        for (int nFile = 0; nFile < nFilesInEach; ++nFile)
            std::ofstream(oFolder / std::to_string(nFile)) << std::string(200, 'b');
    }
}

void PlantLargeFile(const fs::path& oRoot)
{
    fs::create_directory(oRoot);
    std::ofstream oFile(oRoot / "large", std::ios::binary);
    const std::string strBlock(1 << 20, 'b');
    for (std::uintmax_t nSize = 0; nSize < nLargeSize; nSize += strBlock.size())
        oFile << strBlock;
    Require(oFile.flush().good(), "no room for a file of 2 GiB");
}

void Run(const std::string& strCommand)
{
    Require(std::system((strCommand + " >/dev/null").c_str()) == 0, strCommand);
}

double Measure(const std::function<void()>& action)
{
    const auto nStart = Clock::now();
    action();
    return std::chrono::duration<double, std::nano>(Clock::now() - nStart).count();
}

struct Case
{
    std::string strName;
    std::string strGoal;
    std::function<void()> library, peer;
    std::vector<double> oLibrary, oPeer;
};

double Median(std::vector<double>& oTimes)
{
    std::nth_element(oTimes.begin(), oTimes.begin() + nRounds / 2, oTimes.end());
    return oTimes[nRounds / 2];
}

std::vector<Case> CasesIn(const fs::path& oRoot)
{
    const std::string strTree = oRoot / "tree", strLarge = oRoot / "large";
    const std::string strOurs = oRoot / "by library", strTheirs = oRoot / "by peer";
    const auto copy = [strOurs](const std::string& strFrom) {
        std::string strError;
        Require(CSFolder::CopyFolder(strFrom.c_str(), strOurs.c_str(), strError), strError);
    };
    const auto remove = [strOurs] {
        std::string strError;
        Require(CSFolder::DeleteFolder(strOurs.c_str(), strError), strError);
    };
    const auto list = [strTree] {
        std::vector<std::string> oFolders;
        CSFolder::GetFolderList(strTree.c_str(), oFolders, true);
        Require(oFolders.size() == nFolders + std::min(nFolders, nGroups), "folders are missing");
    };
    const auto size = [strTree] {
        long nKilobytes = 0;
        CSFolder::GetFolderSize(strTree.c_str(), nKilobytes);
        Require(nKilobytes == static_cast<long>(nFolders) * (nFilesInEach * 200 / 1024), "a wrong size");
    };
    const auto command = [](const std::string& str) { return [str] { Run(str); }; };
    // Each round deletes what it has copied.
    return {
        {"copy 50,000 files, against cp -r",
         "at most 1.0",
         [=] { copy(strTree); },
         command("cp -r '" + strTree + "' '" + strTheirs + "'"),
         {},
         {}},
        {"delete them, against rm -rf", "at most 1.1", remove, command("rm -rf '" + strTheirs + "'"), {}, {}},
        {"list their folders, against find", "at most 1.2", list, command("find '" + strTree + "' -type d"), {}, {}},
        {"measure them, against du -s", "at most 1.2", size, command("du -s '" + strTree + "'"), {}, {}},
        {"copy 2 GiB, against cp -r",
         "at most 1.0",
         [=] { copy(strLarge); },
         command("cp -r '" + strLarge + "' '" + strTheirs + "'"),
         {},
         {}},
        {"delete it, against rm -rf", "", remove, command("rm -rf '" + strTheirs + "'"), {}, {}},
    };
}
}

int main(int nArguments, char** ppArguments)
{
    const fs::path oRoot = (nArguments > 1 ? fs::path(ppArguments[1]) : fs::temp_directory_path()) /
                           ("folder bench " + std::to_string(getpid()));
    PlantTree(oRoot / "tree");
    PlantLargeFile(oRoot / "large");
    auto oCases = CasesIn(oRoot);
    for (int nRound = 0; nRound < nRounds; ++nRound)
        for (auto& oCase : oCases)
        {
            const bool bLibraryFirst = nRound % 2;   // so that neither finds the ground prepared
            if (bLibraryFirst)
                oCase.oLibrary.push_back(Measure(oCase.library));
            oCase.oPeer.push_back(Measure(oCase.peer));
            if (!bLibraryFirst)
                oCase.oLibrary.push_back(Measure(oCase.library));
        }
    fs::remove_all(oRoot);

    RatioTable oTable;
    for (auto& oCase : oCases)
    {
        oTable.SetGoal(oCase.strName, oCase.strGoal);
        oTable.Add(oCase.strName, "library", Median(oCase.oLibrary));
        oTable.Add(oCase.strName, "peer", Median(oCase.oPeer));
    }
    oTable.Print();
}
