// Disks, error texts and the command line: what Linux tells of itself and of a process, in the forms of Windows.
#include "win32/Kernel.h"

#include "platform/linux/base/Paths.h"
#include "platform/linux/processes/CommandLine.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <iterator>

#include <sys/statvfs.h>

namespace
{
constexpr DWORD nKnownFlags =
    FORMAT_MESSAGE_ALLOCATE_BUFFER | FORMAT_MESSAGE_IGNORE_INSERTS | FORMAT_MESSAGE_FROM_SYSTEM;
constexpr DWORD nUsersLanguage = 0x400;

// The kernel keeps the arguments, with a zero byte behind each, and not the line that they came from.
std::string MakeCommandLine()
{
    std::ifstream oFile("/proc/self/cmdline", std::ios::binary);
    std::string strLine;
    for (std::string strArgument; std::getline(oFile, strArgument, '\0');)
        strLine.append(strLine.empty() ? 0 : 1, ' ').append(QuotedArgument(strArgument));
    return strLine;
}
}

BOOL win32::GetDiskFreeSpaceExA(LPCSTR pszFolder, PULARGE_INTEGER pnFreeToCaller, PULARGE_INTEGER pnTotal,
                                PULARGE_INTEGER pnFree)
{
    return Succeeds([&] {
        const NativePath oPath(pszFolder ? pszFolder : ".");
        struct statvfs oDisk;
        OrThrowOnPath(oPath, ::statvfs(oPath, &oDisk));
        pnFreeToCaller->QuadPart = ULONGLONG{oDisk.f_bavail} * oDisk.f_frsize;
        pnTotal->QuadPart = ULONGLONG{oDisk.f_blocks} * oDisk.f_frsize;
        pnFree->QuadPart = ULONGLONG{oDisk.f_bfree} * oDisk.f_frsize;
    });
}

DWORD win32::FormatMessageA(DWORD nFlags, LPCVOID pSource, DWORD nMessage, DWORD nLanguage, LPSTR pszBuffer,
                            DWORD nSize, va_list* pArguments)
{
    return ResultOr(DWORD{0}, [&] {
        RequireSupported(nFlags == nKnownFlags && !pSource && nLanguage == nUsersLanguage && !nSize && !pArguments);
        const int nErrno = ErrnoOfError(nMessage);
        Require(nErrno >= 0, ERROR_MR_MID_NOT_FOUND);
        char achText[256];
        const std::string strText = std::string(::strerror_r(nErrno, achText, sizeof achText)) + "\r\n";
        char* const pszText = ::strdup(strText.c_str());
        if (!pszText)
            throw std::bad_alloc();
        std::memcpy(pszBuffer, &pszText, sizeof pszText);   // which is the place for a pointer
        return static_cast<DWORD>(strText.size());
    });
}

HLOCAL win32::LocalFree(HLOCAL hMemory)
{
    std::free(hMemory);
    return nullptr;
}

LPSTR win32::GetCommandLineA()
{
    static char s_szEmpty[] = "";
    return ResultOr<LPSTR>(s_szEmpty, [] {
        static std::string s_strLine = MakeCommandLine();
        return s_strLine.data();
    });
}
