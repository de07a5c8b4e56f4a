#include "win32/Files.h"

#include "OpenFile.h"
#include "platform/linux/base/KernelObject.h"
#include "platform/linux/base/Paths.h"

namespace
{
constexpr mode_t nNewFileMode = 0666;   // less the process's mask

struct File final : KernelObject
{
    explicit File(Descriptor oOpen) noexcept : oDescriptor(std::move(oOpen)) {}

    const Descriptor oDescriptor;
};

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
        struct stat oStatus;
        Descriptor oOpen = OpenFile(NativePath(pszName), nAccess, nShare, nDisposition, nNewFileMode, oStatus);
        return oOpen ? OpenHandle(std::make_shared<File>(std::move(oOpen))) : INVALID_HANDLE_VALUE;
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
    const auto pFile = FindObjectOf<File>(hFile);
    if (!pFile)
        return Fail(ERROR_INVALID_HANDLE, FALSE);
    *pnWritten = static_cast<DWORD>(WriteAll(pFile->oDescriptor.Get(), pData, nCount));
    return *pnWritten == nCount ? TRUE : FailByErrno(FALSE);
}

BOOL win32::GetFileSizeEx(HANDLE hFile, PLARGE_INTEGER pnSize)
{
    struct stat oStatus;
    if (OnFile(hFile, [&](int nDescriptor) { return ssize_t{::fstat(nDescriptor, &oStatus)}; }) < 0)
        return FALSE;
    pnSize->QuadPart = oStatus.st_size;
    return TRUE;
}
