#include "OpenFile.h"

#include "platform/linux/base/Paths.h"

#include <fcntl.h>
#include <sys/file.h>

namespace
{
// Which lock keeps others out as the sharing mode asks; 0 for none.
int LockFor(DWORD nAccess, DWORD nShare) noexcept
{
    const bool bWrites = nAccess & GENERIC_WRITE;
    if (!(nShare & FILE_SHARE_READ) || (bWrites && !(nShare & FILE_SHARE_WRITE)))
        return LOCK_EX;
    return bWrites || nShare & FILE_SHARE_WRITE ? 0 : LOCK_SH;
}

// Without waiting for the other end of a pipe, and without emptying what may be another's.
int OpenFlags(DWORD nAccess, DWORD nDisposition) noexcept
{
    const int nDirection = nAccess & GENERIC_WRITE ? nAccess & GENERIC_READ ? O_RDWR : O_WRONLY : O_RDONLY;
    return nDirection | (nDisposition == CREATE_ALWAYS ? O_CREAT : 0) | O_CLOEXEC | O_NOCTTY | O_NONBLOCK;
}

// The error that speaks against the use of what was opened; ERROR_SUCCESS if none does. Only files are shared
// or not: a device serves all who open it.
DWORD TakeIntoUse(int nDescriptor, DWORD nAccess, DWORD nShare, DWORD nDisposition, struct stat& oStatus)
{
    if (::fstat(nDescriptor, &oStatus) != 0)
        return ErrorOfErrno(errno);
    if (S_ISDIR(oStatus.st_mode))
        return ERROR_ACCESS_DENIED;
    if (!S_ISREG(oStatus.st_mode))
        return ::fcntl(nDescriptor, F_SETFL, 0) == 0 ? ERROR_SUCCESS : ErrorOfErrno(errno);
    if (nAccess & GENERIC_WRITE && IsReadOnly(oStatus.st_mode))
        return ERROR_ACCESS_DENIED;
    const int nLock = LockFor(nAccess, nShare);
    if (nLock && !TakeLock(nDescriptor, nLock))
        return ERROR_SHARING_VIOLATION;
    const bool bEmpties = nDisposition == CREATE_ALWAYS && oStatus.st_size > 0;
    return !bEmpties || ::ftruncate(nDescriptor, 0) == 0 ? ERROR_SUCCESS : ErrorOfErrno(errno);
}
}

bool TakeLock(int nDescriptor, int nLock) noexcept
{
    return ::flock(nDescriptor, nLock | LOCK_NB) == 0 || errno != EWOULDBLOCK;
}

Descriptor OpenFile(const char* pszNativePath, DWORD nAccess, DWORD nShare, DWORD nDisposition, mode_t nMode,
                    struct stat& oStatus)
{
    Descriptor oOpen(::open(pszNativePath, OpenFlags(nAccess, nDisposition), nMode));
    if (!oOpen)
        return Fail(ErrorOnPath(pszNativePath, errno), Descriptor(-1));
    const DWORD nError = TakeIntoUse(oOpen.Get(), nAccess, nShare, nDisposition, oStatus);
    return nError ? Fail(nError, Descriptor(-1)) : std::move(oOpen);
}
