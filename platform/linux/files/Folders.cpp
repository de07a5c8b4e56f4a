#include "OpenFile.h"
#include "platform/linux/base/Paths.h"

#include <fcntl.h>
#include <sys/file.h>

namespace
{
constexpr mode_t nNewFolderMode = 0777;   // less the process's mask

bool IsLinkToFolder(const char* pszNativePath)
{
    struct stat oStatus;
    return ::lstat(pszNativePath, &oStatus) == 0 && S_ISLNK(oStatus.st_mode) && ::stat(pszNativePath, &oStatus) == 0 &&
           S_ISDIR(oStatus.st_mode);
}

// Whether someone has it open and minds its removal. What cannot be opened is not asked.
bool IsInUse(const char* pszNativePath)
{
    const Descriptor oOpen(::open(pszNativePath, O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC));
    return oOpen && !TakeLock(oOpen.Get(), LOCK_EX);
}
}

DWORD win32::GetFileAttributesA(LPCSTR pszPath)
{
    return OrOutOfMemory(INVALID_FILE_ATTRIBUTES, [&] {
        const NativePath oPath(pszPath);
        struct stat oStatus;
        if (::lstat(oPath, &oStatus) != 0)
            return FailOnPath(oPath, INVALID_FILE_ATTRIBUTES);
        const DWORD nAttributes = (S_ISDIR(oStatus.st_mode) ? FILE_ATTRIBUTE_DIRECTORY : 0) |
                                  (S_ISLNK(oStatus.st_mode) ? FILE_ATTRIBUTE_REPARSE_POINT : 0) |
                                  (IsReadOnly(oStatus.st_mode) ? FILE_ATTRIBUTE_READONLY : 0);
        return nAttributes ? nAttributes : FILE_ATTRIBUTE_NORMAL;
    });
}

BOOL win32::CreateDirectoryA(LPCSTR pszPath, LPSECURITY_ATTRIBUTES pSecurity)
{
    if (pSecurity)
        return Fail(ERROR_NOT_SUPPORTED, FALSE);
    return OrOutOfMemory(FALSE, [&] {
        const NativePath oPath(pszPath);
        return ::mkdir(oPath, nNewFolderMode) == 0 ? TRUE : FailOnPath(oPath, FALSE);
    });
}

BOOL win32::DeleteFileA(LPCSTR pszPath)
{
    return OrOutOfMemory(FALSE, [&] {
        const NativePath oPath(pszPath);
        struct stat oStatus;
        if (::lstat(oPath, &oStatus) == 0 && S_ISREG(oStatus.st_mode))
        {
            if (IsReadOnly(oStatus.st_mode))
                return Fail(ERROR_ACCESS_DENIED, FALSE);
            if (IsInUse(oPath))
                return Fail(ERROR_SHARING_VIOLATION, FALSE);
        }
        return ::unlink(oPath) == 0 ? TRUE : FailOnPath(oPath, FALSE);
    });
}

BOOL win32::RemoveDirectoryA(LPCSTR pszPath)
{
    return OrOutOfMemory(FALSE, [&] {
        const NativePath oPath(pszPath);
        if (::rmdir(oPath) == 0)
            return TRUE;
        if (errno != ENOTDIR || !Exists(oPath))
            return FailOnPath(oPath, FALSE);
        if (!IsLinkToFolder(oPath))
            return Fail(ERROR_DIRECTORY, FALSE);
        return ::unlink(oPath) == 0 ? TRUE : FailOnPath(oPath, FALSE);
    });
}
