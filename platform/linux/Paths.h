// Paths as callers write them, and what their failures mean.
#pragma once

#include "Errno.h"
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

// Fails by errno, for a call on the path: where nothing is found, it matters whether the folder is there.
DWORD ErrorOnPath(const char* pszNativePath, int nErrno);

template <class Result>
Result FailOnPath(const char* pszNativePath, Result failure)
{
    return Fail(ErrorOnPath(pszNativePath, errno), failure);
}
