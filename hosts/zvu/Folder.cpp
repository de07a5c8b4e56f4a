// zvu folder and zvu run-and-wait: the operations of CSFolder on trees, and its run of a process to the end.
#include "Command.h"

#include "ZevrinUtils/Folder.h"

#include <algorithm>
#include <filesystem>
#include <iostream>

namespace
{
struct FolderOptions
{
    std::string strPath;
    std::string strOther;   // a destination or a name
    bool bRecursive = false;
};

// A success may have a text too: it names what was in use and was passed over.
int Report(bool bSucceeded, const std::string& strError)
{
    if (!strError.empty())
        Fail(strError);
    return bSucceeded ? eSucceeded : eFailed;
}

template <auto pOperation>
int Change(const FolderOptions& oOptions)
{
    std::string strError;
    const bool bSucceeded = pOperation(oOptions.strPath.c_str(), strError);
    return Report(bSucceeded, strError);
}

template <auto pOperation>
int Copy(const FolderOptions& oOptions)
{
    std::string strError;
    const bool bSucceeded = pOperation(oOptions.strPath.c_str(), oOptions.strOther.c_str(), strError);
    return Report(bSucceeded, strError);
}

// The library lists nothing of a folder that cannot be read, just as of an empty one.
bool IsFolder(std::string strPath)
{
    std::ranges::replace(strPath, '\\', static_cast<char>(std::filesystem::path::preferred_separator));
    std::error_code oIgnored;
    return std::filesystem::is_directory(strPath, oIgnored);
}

int Print(const FolderOptions& oOptions, const std::vector<std::string>& oPaths)
{
    if (oPaths.empty() && !IsFolder(oOptions.strPath))
        return Fail(oOptions.strPath + " is no folder");
    for (const auto& strPath : oPaths)
        std::cout << strPath << '\n';
    return eSucceeded;
}

int List(const FolderOptions& oOptions)
{
    std::vector<std::string> oFolders;
    CSFolder::GetFolderList(oOptions.strPath.c_str(), oFolders, oOptions.bRecursive);
    return Print(oOptions, oFolders);
}

int Find(const FolderOptions& oOptions)
{
    std::vector<std::string> oFiles;
    CSFolder::GetFilesPathList(oOptions.strPath.c_str(), oOptions.strOther.c_str(), oFiles, true);
    return Print(oOptions, oFiles);
}

int Size(const FolderOptions& oOptions)
{
    long nKilobytes = 0;
    CSFolder::GetFolderSize(oOptions.strPath.c_str(), nKilobytes);
    if (nKilobytes == 0 && !IsFolder(oOptions.strPath))
        return Fail(oOptions.strPath + " is no folder");
    std::cout << nKilobytes << '\n';
    return eSucceeded;
}

struct Argument
{
    const char* pszName;
    const char* pszHelp;
};
constexpr Argument s_oPath{"PATH", "Folder"};
constexpr Argument s_oFrom{"FROM", "Folder to copy"};
constexpr Argument s_oTo{"TO", "Folder that the copy becomes"};
constexpr Argument s_oName{"NAME", "Name of the files, without wildcards"};
constexpr Argument s_oNone{};

struct FolderOperation
{
    const char* pszName;
    const char* pszHelp;
    const char* pszExample;
    int (*pfnRun)(const FolderOptions&);
    Argument oPath = s_oPath;
    Argument oOther = s_oNone;
    const char* pszNotes = "";
};
const FolderOperation s_aFolderOperations[] = {
    {"create", "Make one folder", "folder create photos", &Change<&CSFolder::CreateFolder>},
    {"delete", "Delete a tree", "folder delete photos", &Change<&CSFolder::DeleteFolder>},
    {"copy", "Copy a tree, onto one that may be there", "folder copy photos backup", &Copy<&CSFolder::CopyFolder>,
     s_oFrom, s_oTo},
    {"xcopy", "Let the system's xcopy copy a tree", "folder xcopy photos backup", &Copy<&CSFolder::XCopyFolder>,
     s_oFrom, s_oTo, "Whether it could is not reported."},
    {"list", "Print the folders in a folder", "folder list photos --recursive", &List},
    {"find", "Print the files of a name, whatever its case, in a tree", "folder find photos Thumbs.db", &Find, s_oPath,
     s_oName},
    {"size", "Print the size of a tree, in units of 1024 bytes", "folder size photos", &Size},
};

int RunAndWait(const std::string& strCommandLine)
{
    CSFolder::CreateProcessAndWait(nullptr, strCommandLine.c_str(), nullptr);
    return eSucceeded;
}

void DefineFolder(CLI::App& oGroup, Action& action)
{
    oGroup.require_subcommand(1);
    for (const auto& oOperation : s_aFolderOperations)
    {
        auto& oCommand =
            AddCommand(oGroup, oOperation.pszName, oOperation.pszHelp, oOperation.pszExample, oOperation.pszNotes);
        auto& oOptions = Runs(oCommand, action, oOperation.pfnRun);
        AddArgument(oCommand, oOperation.oPath.pszName, oOptions.strPath, oOperation.oPath.pszHelp);
        if (oOperation.oOther.pszName)
            AddArgument(oCommand, oOperation.oOther.pszName, oOptions.strOther, oOperation.oOther.pszHelp);
        if (oOperation.pfnRun == &List)
            oCommand.add_flag("--recursive", oOptions.bRecursive, "Also the folders below those");
    }
}
const Command s_oFolderCommand("folder", "Copy, delete, list and measure trees of folders", "folder copy photos backup",
                               &DefineFolder);

void DefineRunAndWait(CLI::App& oCommand, Action& action)
{
    AddArgument(oCommand, "COMMAND", Runs(oCommand, action, &RunAndWait),
                "Program and arguments, quoted as on Windows");
}
const Command s_oRunAndWaitCommand("run-and-wait", "Run a command line and wait for its end",
                                   "run-and-wait 'touch \"a file\"'", &DefineRunAndWait,
                                   "Nothing is reported, not even a program that does not start.");
}
