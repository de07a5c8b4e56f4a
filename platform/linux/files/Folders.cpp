// Calls that need no more than a path: attributes, making, removing.
#include "OpenFile.h"
#include "platform/linux/base/Paths.h"

#include <cerrno>

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

// Someone has it open and minds its removal. What cannot be opened is not asked.
bool IsInUse(const char* pszNativePath)
{
    // Without waiting, as there may be a pipe by now.
    const Descriptor oOpen(::open(pszNativePath, O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC));
    return oOpen && !TakeLock(oOpen.Get(), LOCK_EX);
}
}

DWORD win32::GetFileAttributesA(LPCSTR pszPath)
{
    return ResultOr(INVALID_FILE_ATTRIBUTES, [&] {
        const NativePath oPath(pszPath);
        struct stat oStatus;
        OrThrowOnPath(oPath, ::lstat(oPath, &oStatus));
        const DWORD nAttributes = (S_ISDIR(oStatus.st_mode) ? FILE_ATTRIBUTE_DIRECTORY : 0) |
                                  (S_ISLNK(oStatus.st_mode) ? FILE_ATTRIBUTE_REPARSE_POINT : 0) |
                                  (IsReadOnly(oStatus.st_mode) ? FILE_ATTRIBUTE_READONLY : 0);
        return nAttributes ? nAttributes : FILE_ATTRIBUTE_NORMAL;
    });
}

BOOL win32::CreateDirectoryA(LPCSTR pszPath, LPSECURITY_ATTRIBUTES pSecurity)
{
    return Succeeds([&] {
        RequireSupported(!pSecurity);
        const NativePath oPath(pszPath);
        OrThrowOnPath(oPath, ::mkdir(oPath, nNewFolderMode));
    });
}

BOOL win32::DeleteFileA(LPCSTR pszPath)
{
    return Succeeds([&] {
        const NativePath oPath(pszPath);
        // unlink alone asks for nothing but the folder: it would remove a file that is read-only or in use.
        struct stat oStatus;
        if (::lstat(oPath, &oStatus) == 0 && S_ISREG(oStatus.st_mode))
        {
            Require(!IsReadOnly(oStatus.st_mode), ERROR_ACCESS_DENIED);
            Require(!IsInUse(oPath), ERROR_SHARING_VIOLATION);
        }
        OrThrowOnPath(oPath, ::unlink(oPath));
    });
}

BOOL win32::RemoveDirectoryA(LPCSTR pszPath)
{
    return Succeeds([&] {
        const NativePath oPath(pszPath);
        if (::rmdir(oPath) == 0)
            return;
        if (errno != ENOTDIR || !Exists(oPath))
            ThrowOnPath(oPath);
        // Windows takes a link to a folder for one; rmdir does not.
        Require(IsLinkToFolder(oPath), ERROR_DIRECTORY);
        OrThrowOnPath(oPath, ::unlink(oPath));
    });
}
