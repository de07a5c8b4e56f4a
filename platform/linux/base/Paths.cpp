// Callers build paths with backslashes on all systems, and ask why a call on one failed in the words of Windows.
#include "Paths.h"

#include "util/OrEmpty.h"

#include <algorithm>
#include <cerrno>
#include <filesystem>

#include <sys/stat.h>

namespace
{
// True if the folder is there that the last name of the path would lie in.
bool HasFolder(std::string strPath)
{
    if (strPath.empty())
        return false;
    const auto nEnd = strPath.find_last_not_of('/');
    const auto nSlash = nEnd == std::string::npos ? 0 : strPath.rfind('/', nEnd);
    if (nSlash == std::string::npos)
        return true;
    strPath.erase(nSlash + 1);
    struct stat oStatus;
    return ::stat(strPath.c_str(), &oStatus) == 0 && S_ISDIR(oStatus.st_mode);
}
}

NativePath::NativePath(LPCSTR pszPath) : m_strPath(OrEmpty(pszPath))
{
    std::replace(m_strPath.begin(), m_strPath.end(), '\\', '/');
}

bool Exists(const char* pszNativePath)
{
    struct stat oStatus;
    return ::lstat(pszNativePath, &oStatus) == 0;
}

std::string AbsolutePath(const NativePath& oPath)
{
    std::error_code oError;
    const auto oAbsolute = std::filesystem::absolute(static_cast<const char*>(oPath), oError);
    return oError ? std::string() : oAbsolute.string();
}

DWORD ErrorOnPath(const char* pszNativePath, int nErrno)
{
    return nErrno == ENOENT && !HasFolder(pszNativePath) ? ERROR_PATH_NOT_FOUND : ErrorOfErrno(nErrno);
}

void ThrowOnPath(const char* pszNativePath)
{
    const DWORD nError = ErrorOnPath(pszNativePath, errno);   // before memory for an exception is asked for
    throw Failure{nError};
}
