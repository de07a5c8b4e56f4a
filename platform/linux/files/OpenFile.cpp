// The sharing modes of Windows by flock, so that "in use by another process" means the same on both. flock has two
// locks and Windows four modes: what cannot be told apart is let through.
#include "OpenFile.h"

#include "platform/linux/base/Paths.h"

#include <cerrno>

#include <fcntl.h>
#include <sys/file.h>

namespace
{
// The lock that keeps others out as the sharing mode asks; 0 for none.
int LockFor(DWORD nAccess, DWORD nShare) noexcept
{
    const bool bWrites = nAccess & GENERIC_WRITE;
    if (!(nShare & FILE_SHARE_READ) || (bWrites && !(nShare & FILE_SHARE_WRITE)))
        return LOCK_EX;
    return bWrites || nShare & FILE_SHARE_WRITE ? 0 : LOCK_SH;
}

int OpenFlags(DWORD nAccess, DWORD nDisposition) noexcept
{
    const int nDirection = nAccess & GENERIC_WRITE ? nAccess & GENERIC_READ ? O_RDWR : O_WRONLY : O_RDONLY;
    return nDirection | (nDisposition == CREATE_ALWAYS ? O_CREAT : 0) | O_CLOEXEC | O_NOCTTY | O_NONBLOCK;
}
}

bool TakeLock(int nDescriptor, int nLock) noexcept
{
    return ::flock(nDescriptor, nLock | LOCK_NB) == 0 || errno != EWOULDBLOCK;
}

// Not emptied by the opening itself, as it may turn out to be another's.
OpenedFile OpenFile(const char* pszNativePath, DWORD nAccess, DWORD nDisposition, mode_t nMode)
{
    OpenedFile oOpened{Descriptor(::open(pszNativePath, OpenFlags(nAccess, nDisposition), nMode)), {}};
    OrThrowOnPath(pszNativePath, oOpened.oDescriptor.Get());
    OrThrowErrno(::fstat(oOpened.oDescriptor.Get(), &oOpened.oStatus));
    return oOpened;
}

// Only files are shared or not: a device serves all who open it.
void TakeIntoUse(const OpenedFile& oOpened, DWORD nAccess, DWORD nShare, DWORD nDisposition)
{
    const int nDescriptor = oOpened.oDescriptor.Get();
    const auto& oStatus = oOpened.oStatus;
    Require(!S_ISDIR(oStatus.st_mode), ERROR_ACCESS_DENIED);
    if (!S_ISREG(oStatus.st_mode))
    {
        OrThrowErrno(::fcntl(nDescriptor, F_SETFL, 0));   // only its opening was not to wait
        return;
    }
    Require(!(nAccess & GENERIC_WRITE) || !IsReadOnly(oStatus.st_mode), ERROR_ACCESS_DENIED);
    const int nLock = LockFor(nAccess, nShare);
    Require(!nLock || TakeLock(nDescriptor, nLock), ERROR_SHARING_VIOLATION);
    if (nDisposition == CREATE_ALWAYS && oStatus.st_size > 0)
        OrThrowErrno(::ftruncate(nDescriptor, 0));
}
