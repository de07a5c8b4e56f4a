// Trees are walked depth first, each entry named by its whole path. Copying ends at the first failure. Deleting goes on
// past what is in use (a sharing violation) and keeps the last such text, also when it then succeeds. Listings and
// sizes pass by what they cannot open.
#include "ZevrinUtils/Folder.h"

#include "files/Walk.h"
#include "platform/Errors.h"
#include "platform/Handles.h"

#include <cstdint>

namespace
{
std::string NumberText(DWORD nError)
{
    return std::to_string(static_cast<std::int32_t>(nError));
}
}

CSFolderConsumer::CSFolderConsumer() = default;
CSFolderConsumer::CSFolderConsumer(const CSFolderConsumer&) = default;
CSFolderConsumer& CSFolderConsumer::operator=(const CSFolderConsumer&) = default;

CSFolder::CSFolder() = default;
CSFolder::CSFolder(const CSFolder&) = default;
CSFolder& CSFolder::operator=(const CSFolder&) = default;
CSFolder::~CSFolder() = default;

bool CSFolder::CreateFolder(const char* pszPath, std::string& strError)
{
    // Tried first and judged then: what a look before had found might have changed by the time of the call.
    if (Files().CreateDirectoryA(pszPath, nullptr))
        return true;
    const DWORD nError = Errors().GetLastError();
    if (nError == ERROR_ALREADY_EXISTS)   // a folder or a file
        return true;
    strError = "Cannot create new folder: " + std::string(pszPath) + ". Error: " + NumberText(nError);
    return false;
}

bool CSFolder::CopyFolder(const char* pszSource, const char* pszDestination, std::string& strError)
{
    if (!CreateFolder(pszDestination, strError))
        return false;
    Walk oWalk(pszSource);
    if (!oWalk.IsOpen())
    {
        // The only text that goes behind what was there.
        strError += "Cannot find folder " + std::string(pszSource) + ". Error: " + NumberText(Errors().GetLastError());
        return false;
    }
    while (oWalk.Next())
    {
        const std::string strTarget = std::string(pszDestination) + '\\' + oWalk.Name();
        if (oWalk.IsFolder())
        {
            if (!CopyFolder(oWalk.Path().c_str(), strTarget.c_str(), strError))
                return false;
        }
        else if (!Files().CopyFileA(oWalk.Path().c_str(), strTarget.c_str(), FALSE))
        {
            strError = "Failed to copy file: " + oWalk.Path() + ". Error: " + NumberText(Errors().GetLastError());
            return false;
        }
    }
    if (oWalk.Close())
        return true;
    strError = "Failed to close file handle. Error: " + NumberText(Errors().GetLastError());
    return false;
}

bool CSFolder::DeleteFolder(const char* pszPath, std::string& strError)
{
    // Tells of a failure. True if the walk may go on: the file or folder is in use.
    const auto canGoOn = [&](const std::string& strText) {
        const DWORD nError = Errors().GetLastError();
        strError = strText + NumberText(nError);
        return nError == ERROR_SHARING_VIOLATION;
    };
    Walk oWalk(pszPath);
    if (!oWalk.IsOpen())
    {
        canGoOn("Failed to find folder " + oWalk.Pattern() + "Error: ");
        return false;
    }
    while (oWalk.Next())
    {
        if (oWalk.IsFolder())
        {
            if (!DeleteFolder(oWalk.Path().c_str(), strError))
                return false;
        }
        else if (!Files().DeleteFileA(oWalk.Path().c_str()) &&
                 !canGoOn("Unable to delete file " + oWalk.Path() + ". Error: "))
            return false;
    }
    // The listing ends before the folder goes, because on Windows its open handle would keep the folder there.
    if (!oWalk.Close() && !canGoOn("Unable to close files handle. Error: "))
        return false;
    return Files().RemoveDirectoryA(pszPath) || canGoOn("Unable to remove folder " + std::string(pszPath) + " Error:");
}

void CSFolder::GetFolderList(const char* pszPath, CSFolderConsumer* pConsumer)
{
    Walk oWalk(pszPath);
    while (oWalk.Next())
    {
        if (!oWalk.IsFolder())
            continue;
        bool bDescend = true;
        if (pConsumer)
            pConsumer->OnFolderFound(oWalk.Path().c_str(), bDescend);
        if (bDescend)
            GetFolderList(oWalk.Path().c_str(), pConsumer);
    }
    oWalk.Close();
}

void CSFolder::GetFolderList(const char* pszPath, std::vector<std::string>& oFolders, bool bRecursive)
{
    Walk oWalk(pszPath);
    while (oWalk.Next())
    {
        if (!oWalk.IsFolder())
            continue;
        oFolders.push_back(oWalk.Path());
        if (bRecursive)
            GetFolderList(oWalk.Path().c_str(), oFolders, true);
    }
    oWalk.Close();
}

void CSFolder::GetFilesPathList(const char* pszPath, const char* pszFileName, std::vector<std::string>& oFiles,
                                bool bRecursive)
{
    const CString strFileName(pszFileName);
    Walk oWalk(pszPath);
    while (oWalk.Next())
    {
        if (oWalk.IsFolder())
        {
            if (bRecursive)
                GetFilesPathList(oWalk.Path().c_str(), pszFileName, oFiles, true);
        }
        else if (strFileName.CollateNoCase(oWalk.Name().c_str()) == 0)
            oFiles.push_back(oWalk.Path());
    }
    oWalk.Close();
}

void CSFolder::GetFolderSize(const char* pszPath, long& nKilobytes)
{
    std::uint32_t nBytes = 0;
    Walk oWalk(pszPath);
    while (oWalk.Next())
    {
        if (oWalk.IsFolder())
            GetFolderSize(oWalk.Path().c_str(), nKilobytes);
        else
            nBytes += static_cast<std::uint32_t>(oWalk.SizeLow());
    }
    oWalk.Close();
    // 32 bits on every target, as callers know it: 2 GiB and more in one folder count as less than nothing.
    const std::int32_t nQuotient = static_cast<std::int32_t>(nBytes) / 1024;
    nKilobytes =
        static_cast<std::int32_t>(static_cast<std::uint32_t>(nKilobytes) + static_cast<std::uint32_t>(nQuotient));
}

bool CSFolder::IsFileExists(const char* pszFileName)
{
    const HANDLE hFile = Files().CreateFileA(pszFileName, GENERIC_READ, FILE_SHARE_READ, nullptr, OPEN_EXISTING,
                                             FILE_ATTRIBUTE_NORMAL, nullptr);
    if (hFile == INVALID_HANDLE_VALUE)
        return false;
    Handles().CloseHandle(hFile);
    return true;
}

std::string CSFolder::AddBackslash(const char* pszPath)
{
    std::string strPath(pszPath);
    return strPath.ends_with('\\') ? strPath : strPath + '\\';
}

std::string CSFolder::AddBackslash(const std::string& strPath)
{
    return AddBackslash(strPath.c_str());
}

CString CSFolder::AddBackslash(const CString& strPath)
{
    return strPath.Right(1) == "\\" ? strPath : strPath + '\\';
}
