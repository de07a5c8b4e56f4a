// Trees of folders against the system's own tools: bench_folder [FOLDER TO WORK IN]
#include "Bench.h"

#include "ZevrinUtils/Folder.h"

#include <algorithm>
#include <fstream>

namespace
{
namespace fs = std::filesystem;

const std::size_t nFolders = Amount(500);
constexpr std::size_t nGroups = 20;   // of folders, each below a folder of its own
constexpr int nFilesInEach = 100;
constexpr int nRounds = 6;
const std::uintmax_t nLargeSize = Amount(2ull << 30);

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

std::vector<RatioTable::Case> CasesIn(const ScratchFolder& oRoot)
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
    const auto command = [](const std::string& str) { return [str] { RunCommand(str + " >/dev/null"); }; };
    // Each round deletes what it has copied.
    return {
        {"copy 50,000 files, against cp -r", "at most 1.0", [=] { copy(strTree); },
         command("cp -r '" + strTree + "' '" + strTheirs + "'")},
        {"delete them, against rm -rf", "at most 1.1", remove, command("rm -rf '" + strTheirs + "'")},
        {"list their folders, against find", "at most 1.2", list, command("find '" + strTree + "' -type d")},
        {"measure them, against du -s", "at most 1.2", size, command("du -s '" + strTree + "'")},
        {"copy 2 GiB, against cp -r", "at most 1.0", [=] { copy(strLarge); },
         command("cp -r '" + strLarge + "' '" + strTheirs + "'")},
        {"delete it, against rm -rf", "", remove, command("rm -rf '" + strTheirs + "'")},
    };
}
}

void Measure(RatioTable& oTable, const std::vector<std::string>& oArguments)
{
    const ScratchFolder oRoot(oArguments);
    PlantTree(oRoot / "tree");
    PlantLargeFile(oRoot / "large");
    oTable.Compare(CasesIn(oRoot), nRounds);
}
