#pragma once

#include "Random.h"   // time
#include "ZevrinUtils/Types.h"

#include <cstdarg>

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
BOOL GetDiskFreeSpaceExA(LPCSTR pszFolder, PULARGE_INTEGER pnFreeToCaller, PULARGE_INTEGER pnTotal,
                         PULARGE_INTEGER pnFree);
DWORD FormatMessageA(DWORD nFlags, LPCVOID pSource, DWORD nMessage, DWORD nLanguage, LPSTR pszBuffer, DWORD nSize,
                     va_list* pArguments);
HLOCAL LocalFree(HLOCAL hMemory);
LPSTR GetCommandLineA();
}
