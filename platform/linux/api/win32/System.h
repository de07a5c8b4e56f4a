#pragma once

#include "ZevrinUtils/Types.h"

#include <cstdarg>
#include <ctime>

inline constexpr DWORD FORMAT_MESSAGE_ALLOCATE_BUFFER = 0x100;
inline constexpr DWORD FORMAT_MESSAGE_IGNORE_INSERTS = 0x200;
inline constexpr DWORD FORMAT_MESSAGE_FROM_SYSTEM = 0x1000;

struct ULARGE_INTEGER
{
    ULONGLONG QuadPart;
};
using PULARGE_INTEGER = ULARGE_INTEGER*;
using HLOCAL = HANDLE;

namespace win32
{
inline std::time_t time(std::time_t* pnTime)
{
    return ::time(pnTime);
}

BOOL GetDiskFreeSpaceExA(LPCSTR pszFolder, PULARGE_INTEGER pnFreeToCaller, PULARGE_INTEGER pnTotal,
                         PULARGE_INTEGER pnFree);
DWORD FormatMessageA(DWORD nFlags, LPCVOID pSource, DWORD nMessage, DWORD nLanguage, LPSTR pszBuffer, DWORD nSize,
                     va_list* pArguments);
HLOCAL LocalFree(HLOCAL hMemory);
LPSTR GetCommandLineA();
}
