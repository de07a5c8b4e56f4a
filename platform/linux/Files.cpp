#include "system/Files.h"

#include "Descriptor.h"
#include "KernelObject.h"
#include "Paths.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>

namespace
{
struct File final : KernelObject
{
    explicit File(Descriptor oOpen) noexcept : oDescriptor(std::move(oOpen)) {}

    const Descriptor oDescriptor;
};

constexpr mode_t nAnyWriteBit = S_IWUSR | S_IWGRP | S_IWOTH;
constexpr mode_t nNewFileMode = 0666;   // less the process's mask

// Which lock keeps others out as the sharing mode asks; 0 for none.
int LockFor(DWORD nAccess, DWORD nShare) noexcept
{
    const bool bWrites = nAccess & GENERIC_WRITE;
    if (!(nShare & FILE_SHARE_READ) || (bWrites && !(nShare & FILE_SHARE_WRITE)))
        return LOCK_EX;
    return bWrites || nShare & FILE_SHARE_WRITE ? 0 : LOCK_SH;
}

// Without waiting for the other end of a pipe. An empty file is made of an old one only when it is ours.
int OpenFlags(DWORD nAccess, DWORD nDisposition) noexcept
{
    const int nDirection = nAccess & GENERIC_WRITE ? nAccess & GENERIC_READ ? O_RDWR : O_WRONLY : O_RDONLY;
    return nDirection | (nDisposition == CREATE_ALWAYS ? O_CREAT : 0) | O_CLOEXEC | O_NOCTTY | O_NONBLOCK;
}

// The error that speaks against the use of what was opened; ERROR_SUCCESS if none does. Only files are shared
// or not: a device serves all who open it.
DWORD TakeIntoUse(int nDescriptor, DWORD nAccess, DWORD nShare, DWORD nDisposition)
{
    struct stat oStatus;
    if (::fstat(nDescriptor, &oStatus) != 0)
        return ErrorOfErrno(errno);
    if (S_ISDIR(oStatus.st_mode))
        return ERROR_ACCESS_DENIED;
    if (!S_ISREG(oStatus.st_mode))
        return ::fcntl(nDescriptor, F_SETFL, 0) == 0 ? ERROR_SUCCESS : ErrorOfErrno(errno);
    if (nAccess & GENERIC_WRITE && !(oStatus.st_mode & nAnyWriteBit))
        return ERROR_ACCESS_DENIED;
    const int nLock = LockFor(nAccess, nShare);
    // A file system that knows no locks is used without.
    if (nLock && ::flock(nDescriptor, nLock | LOCK_NB) != 0 && errno == EWOULDBLOCK)
        return ERROR_SHARING_VIOLATION;
    return nDisposition != CREATE_ALWAYS || ::ftruncate(nDescriptor, 0) == 0 ? ERROR_SUCCESS : ErrorOfErrno(errno);
}

// Makes the call on the file's descriptor, again when a signal interrupted it; -1 with the last error set.
template <class Call>
ssize_t OnFile(HANDLE hFile, Call call)
{
    const auto pFile = FindObjectOf<File>(hFile);
    if (!pFile)
        return Fail(ERROR_INVALID_HANDLE, ssize_t{-1});
    for (;;)
    {
        const ssize_t nResult = call(pFile->oDescriptor.Get());
        if (nResult >= 0)
            return nResult;
        if (errno != EINTR)
            return FailByErrno(nResult);
    }
}
}

HANDLE win32::CreateFileA(LPCSTR pszName, DWORD nAccess, DWORD nShare, LPSECURITY_ATTRIBUTES pSecurity,
                          DWORD nDisposition, DWORD nAttributes, HANDLE hTemplate)
{
    if (pSecurity || hTemplate || nAttributes != FILE_ATTRIBUTE_NORMAL || nAccess & ~(GENERIC_READ | GENERIC_WRITE) ||
        nShare & ~(FILE_SHARE_READ | FILE_SHARE_WRITE) ||
        (nDisposition != OPEN_EXISTING && nDisposition != CREATE_ALWAYS))
        return Fail(ERROR_NOT_SUPPORTED, INVALID_HANDLE_VALUE);

    return OrOutOfMemory(INVALID_HANDLE_VALUE, [&] {
        const NativePath oPath(pszName);
        Descriptor oOpen(::open(oPath, OpenFlags(nAccess, nDisposition), nNewFileMode));
        if (!oOpen)
            return FailOnPath(oPath, INVALID_HANDLE_VALUE);
        if (const DWORD nError = TakeIntoUse(oOpen.Get(), nAccess, nShare, nDisposition))
            return Fail(nError, INVALID_HANDLE_VALUE);
        return OpenHandle(std::make_shared<File>(std::move(oOpen)));
    });
}

BOOL win32::ReadFile(HANDLE hFile, LPVOID pBuffer, DWORD nCount, LPDWORD pnRead, LPOVERLAPPED pOverlapped)
{
    if (pOverlapped)
        return Fail(ERROR_NOT_SUPPORTED, FALSE);
    const auto nRead = OnFile(hFile, [&](int nDescriptor) { return ::read(nDescriptor, pBuffer, nCount); });
    *pnRead = nRead < 0 ? 0 : static_cast<DWORD>(nRead);
    return nRead >= 0;
}

BOOL win32::WriteFile(HANDLE hFile, LPCVOID pData, DWORD nCount, LPDWORD pnWritten, LPOVERLAPPED pOverlapped)
{
    if (pOverlapped)
        return Fail(ERROR_NOT_SUPPORTED, FALSE);
    *pnWritten = 0;
    do
    {
        const auto nMore = OnFile(hFile, [&](int nDescriptor) {
            return ::write(nDescriptor, static_cast<const char*>(pData) + *pnWritten, nCount - *pnWritten);
        });
        if (nMore < 0)
            return FALSE;
        *pnWritten += static_cast<DWORD>(nMore);
    } while (*pnWritten < nCount);
    return TRUE;
}

BOOL win32::GetFileSizeEx(HANDLE hFile, PLARGE_INTEGER pnSize)
{
    struct stat oStatus;
    if (OnFile(hFile, [&](int nDescriptor) { return ssize_t{::fstat(nDescriptor, &oStatus)}; }) < 0)
        return FALSE;
    pnSize->QuadPart = oStatus.st_size;
    return TRUE;
}
