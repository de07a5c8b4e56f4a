// Files behind handles: what is opened, read, written and measured.
#include "win32/Kernel.h"

#include "OpenFile.h"
#include "platform/linux/base/Handles.h"
#include "platform/linux/base/Paths.h"

#include <cerrno>

namespace
{
constexpr mode_t nNewFileMode = 0666;   // less the process's mask

struct File final : KernelObject
{
    explicit File(Descriptor oOpen) noexcept : oDescriptor(std::move(oOpen)) {}

    const Descriptor oDescriptor;
};

// Makes the call again when a signal has interrupted it: Windows knows no such failure.
template <class Call>
ssize_t UnlessInterrupted(Call call)
{
    ssize_t nResult = 0;
    do
        nResult = call();
    while (nResult < 0 && errno == EINTR);
    return OrThrowErrno(nResult);
}
}

HANDLE win32::CreateFileA(LPCSTR pszName, DWORD nAccess, DWORD nShare, LPSECURITY_ATTRIBUTES pSecurity,
                          DWORD nDisposition, DWORD nAttributes, HANDLE hTemplate)
{
    return ResultOr(INVALID_HANDLE_VALUE, [&] {
        RequireSupported(!pSecurity && !hTemplate && nAttributes == FILE_ATTRIBUTE_NORMAL &&
                         !(nAccess & ~(GENERIC_READ | GENERIC_WRITE)) &&
                         !(nShare & ~(FILE_SHARE_READ | FILE_SHARE_WRITE)) &&
                         (nDisposition == OPEN_EXISTING || nDisposition == CREATE_ALWAYS));
        OpenedFile oOpened = OpenFile(NativePath(pszName), nAccess, nDisposition, nNewFileMode);
        TakeIntoUse(oOpened, nAccess, nShare, nDisposition);
        return OpenHandle(std::make_shared<File>(std::move(oOpened.oDescriptor)));
    });
}

BOOL win32::ReadFile(HANDLE hFile, LPVOID pBuffer, DWORD nCount, LPDWORD pnRead, LPOVERLAPPED pOverlapped)
{
    return Succeeds([&] {
        RequireSupported(!pOverlapped);
        *pnRead = 0;
        const auto pFile = ObjectOf<File>(hFile);
        const auto read = [&] { return ::read(pFile->oDescriptor.Get(), pBuffer, nCount); };
        *pnRead = static_cast<DWORD>(UnlessInterrupted(read));
    });
}

BOOL win32::WriteFile(HANDLE hFile, LPCVOID pData, DWORD nCount, LPDWORD pnWritten, LPOVERLAPPED pOverlapped)
{
    return Succeeds([&] {
        RequireSupported(!pOverlapped);
        *pnWritten = 0;
        const auto pFile = ObjectOf<File>(hFile);
        *pnWritten = static_cast<DWORD>(WriteAll(pFile->oDescriptor.Get(), pData, nCount));
        if (*pnWritten < nCount)
            ThrowErrno();
    });
}

BOOL win32::GetFileSizeEx(HANDLE hFile, PLARGE_INTEGER pnSize)
{
    return Succeeds([&] {
        struct stat oStatus;
        OrThrowErrno(::fstat(ObjectOf<File>(hFile)->oDescriptor.Get(), &oStatus));
        pnSize->QuadPart = oStatus.st_size;
    });
}
