/// @file
/// Folders and files: trees copied, deleted, listed and measured, and processes run.
#pragma once

#include "ZevrinUtils/Export.h"
#include "ZevrinUtils/framework/String.h"

#include <string>
#include <vector>

/// Hears of folders as a listing finds them. The library keeps no consumer beyond the call.
class ZEVRINUTILS_API CSFolderConsumer
{
public:
    CSFolderConsumer();
    CSFolderConsumer(const CSFolderConsumer& oOther);              ///< copies nothing
    CSFolderConsumer& operator=(const CSFolderConsumer& oOther);   ///< copies nothing

    /// Called once for each folder, on the thread of the listing, before the folders below it.
    ///
    /// @param pszFolder  its full path; valid for the call
    /// @param bDescend   true; false keeps the listing out of this folder
    virtual void OnFolderFound(const char* pszFolder, bool& bDescend) = 0;
};

/// Static operations on folders, files and processes. They keep nothing between calls, so calls on different
/// trees may run side by side.
///
/// A path is taken as it is, and what is below it is named with a backslash between. No path may be null where
/// nothing else is said. Entries come in the order of the file system. At the root of a Windows volume the first of
/// them is left out by every operation here.
///
/// To listings and sizes a path that cannot be opened adds nothing, and nothing is reported.
///
/// On Linux a link to a folder counts as a file wherever a tree is walked: nothing goes through it, and what is
/// deleted is the link. A link that is given as the path of the tree itself is followed.
///
/// An error text is written only on failure and ends in the Win32 error number. Nothing is undone after a failure:
/// what was copied stays, what was deleted is gone. One find handle for each level of depth then stays open until
/// the process ends. Memory that runs out passes through as an exception, and the find handles stay open too.
class ZEVRINUTILS_API CSFolder
{
public:
    CSFolder();
    CSFolder(const CSFolder& oOther);              ///< copies nothing
    CSFolder& operator=(const CSFolder& oOther);   ///< copies nothing
    virtual ~CSFolder();

    /// Runs a process without a window of its own and waits for its end, without a limit. Messages for windows of
    /// the calling thread are dispatched meanwhile, one each 10 milliseconds; what they bring about may call
    /// back into the caller. A failure to start is not reported, nor is the exit code. A process that ends with exit
    /// code 259 is waited for for ever. It inherits the handles of the caller that can be inherited.
    ///
    /// @param pszApplication    program; null if the command line begins with it
    /// @param pszCommandLine    may be null if there is a program
    /// @param pszWorkingFolder  null for that of the calling process
    static void CreateProcessAndWait(const char* pszApplication, const char* pszCommandLine,
                                     const char* pszWorkingFolder);

    /// Lets the system's xcopy copy a tree: with owners and access rights, without empty folders. True says only
    /// that both paths were given; the error text is never written.
    static bool XCopyFolder(const char* pszSource, const char* pszDestination, std::string& strError);

    /// Copies a tree, onto one that may exist: files of the same name are overwritten, others left alone. The
    /// destination is made first, and stays if there is no source; then the text goes behind what the string held.
    static bool CopyFolder(const char* pszSource, const char* pszDestination, std::string& strError);

    /// Makes one folder, whose parent must exist. True also if there is something of that name.
    static bool CreateFolder(const char* pszPath, std::string& strError);

    /// Deletes a tree. A file that is in use (error 32) does not keep its neighbours from being deleted; a
    /// read-only one ends it. True if the folder is gone or itself in use; then a text may be set all the same.
    static bool DeleteFolder(const char* pszPath, std::string& strError);

    /// Tells a consumer of each folder below a path. Null only walks the tree.
    static void GetFolderList(const char* pszPath, CSFolderConsumer* pConsumer);

    /// Adds the full path of each folder in a path to a list, and if asked for of those below, each behind the
    /// folder that it is in.
    static void GetFolderList(const char* pszPath, std::vector<std::string>& oFolders, bool bRecursive);

    /// Adds the full path of each file of a name, whatever its case, to a list. The name has no wildcards.
    static void GetFilesPathList(const char* pszPath, const char* pszFileName, std::vector<std::string>& oFiles,
                                 bool bRecursive);

    /// Adds the size of a tree, in units of 1024 bytes, to a number that the caller has set.
    ///
    /// All of it is 32-bit arithmetic that wraps: of each file the low half of its size, the sum of the files of one
    /// folder, signed and rounded towards zero once for each folder, and the result.
    static void GetFolderSize(const char* pszPath, long& nKilobytes);

    /// True if a file can be opened for reading while others read; false for a folder.
    static bool IsFileExists(const char* pszFileName);

    /// The path with a backslash behind it, unless it ends in one. An empty one gives a backslash.
    static std::string AddBackslash(const char* pszPath);
    static std::string AddBackslash(const std::string& strPath);   ///< likewise
    static CString AddBackslash(const CString& strPath);           ///< likewise
};
