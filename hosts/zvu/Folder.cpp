// zvu folder: trees copied, deleted, listed and measured.
#include "Command.h"

#include "ZevrinUtils/Folder.h"

#include <iostream>

namespace
{
struct Options
{
    std::string strPath;
    std::string strOther;   // a destination or a name
    bool bRecursive = false;
};

// A text may stand beside a success, of what was in use and passed by.
int Report(bool bSucceeded, const std::string& strError)
{
    if (!strError.empty())
        std::cerr << "zvu: " << strError << '\n';
    return bSucceeded ? eSucceeded : eFailed;
}

template <auto pOperation>
int Change(const Options& oOptions)
{
    std::string strError;
    const bool bSucceeded = pOperation(oOptions.strPath.c_str(), strError);
    return Report(bSucceeded, strError);
}

template <auto pOperation>
int Copy(const Options& oOptions)
{
    std::string strError;
    const bool bSucceeded = pOperation(oOptions.strPath.c_str(), oOptions.strOther.c_str(), strError);
    return Report(bSucceeded, strError);
}

int Print(const std::vector<std::string>& oPaths)
{
    for (const auto& strPath : oPaths)
        std::cout << strPath << '\n';
    return eSucceeded;
}

int List(const Options& oOptions)
{
    std::vector<std::string> oFolders;
    CSFolder::GetFolderList(oOptions.strPath.c_str(), oFolders, oOptions.bRecursive);
    return Print(oFolders);
}

int Find(const Options& oOptions)
{
    std::vector<std::string> oFiles;
    CSFolder::GetFilesPathList(oOptions.strPath.c_str(), oOptions.strOther.c_str(), oFiles, true);
    return Print(oFiles);
}

int Size(const Options& oOptions)
{
    long nKilobytes = 0;
    CSFolder::GetFolderSize(oOptions.strPath.c_str(), nKilobytes);
    std::cout << nKilobytes << '\n';
    return eSucceeded;
}

struct Operation
{
    const char* pszName;
    const char* pszHelp;
    const char* pszOther;   // null: there is none
    int (*pfnRun)(const Options&);
};
const Operation s_aOperations[] = {
    {"create", "Make one folder", nullptr, &Change<&CSFolder::CreateFolder>},
    {"delete", "Delete a tree", nullptr, &Change<&CSFolder::DeleteFolder>},
    {"copy", "Copy a tree, onto one that may be there", "TO", &Copy<&CSFolder::CopyFolder>},
    {"xcopy", "Let the system's xcopy copy a tree", "TO", &Copy<&CSFolder::XCopyFolder>},
    {"list", "Print the folders in a folder", nullptr, &List},
    {"find", "Print the files of a name, whatever its case, in a tree", "NAME", &Find},
    {"size", "Print the size of a tree, in units of 1024 bytes", nullptr, &Size},
};

void AddOperation(CLI::App& oGroup, const Operation& oOperation, Action& action)
{
    const auto pOptions = std::make_shared<Options>();
    auto* const pCommand = oGroup.add_subcommand(oOperation.pszName, oOperation.pszHelp);
    pCommand->add_option("PATH", pOptions->strPath, "Folder")->required();
    if (oOperation.pszOther)
        pCommand->add_option(oOperation.pszOther, pOptions->strOther)->required();
    if (oOperation.pfnRun == &List)
        pCommand->add_flag("--recursive", pOptions->bRecursive, "Also the folders below those");
    pCommand->callback(
        [pOptions, pfnRun = oOperation.pfnRun, &action] { action = [pOptions, pfnRun] { return pfnRun(*pOptions); }; });
}
}

void AddFolder(CLI::App& oApp, Action& action)
{
    auto* const pGroup = oApp.add_subcommand("folder", "Copy, delete, list and measure trees of folders");
    pGroup->require_subcommand(1);
    for (const auto& oOperation : s_aOperations)
        AddOperation(*pGroup, oOperation, action);
    pGroup->footer("Example: zvu folder copy photos /backup/photos");
}
