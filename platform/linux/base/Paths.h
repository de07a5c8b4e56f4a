// Paths as callers write them, and what their failures mean.
#pragma once

#include "Failure.h"
#include "ZevrinUtils/Types.h"

#include <string>

// A path as the kernel wants it: backslashes are separators too, and null counts as empty.
class NativePath
{
public:
    explicit NativePath(LPCSTR pszPath);

    operator const char*() const noexcept { return m_strPath.c_str(); }

private:
    std::string m_strPath;
};

// True for anything of that name, if only a link that leads nowhere.
bool Exists(const char* pszNativePath);

// From the root; empty for an empty path, and where the working folder is gone.
std::string AbsolutePath(const NativePath& oPath);

// The meaning of errno for a call on that path: ENOENT is 3 if the folder that it would lie in is missing, otherwise 2.
DWORD ErrorOnPath(const char* pszNativePath, int nErrno);
[[noreturn]] void ThrowOnPath(const char* pszNativePath);

// Around a call on a path that is zero or more on success: its result.
template <class Result>
Result OrThrowOnPath(const char* pszNativePath, Result nResult)
{
    if (nResult < 0)
        ThrowOnPath(pszNativePath);
    return nResult;
}
