#pragma once

#include "ZevrinUtils/Types.h"

inline const HANDLE INVALID_HANDLE_VALUE = reinterpret_cast<HANDLE>(~std::uintptr_t{0});

inline constexpr DWORD GENERIC_READ = 0x80000000;
inline constexpr DWORD GENERIC_WRITE = 0x40000000;
inline constexpr DWORD FILE_SHARE_READ = 1;
inline constexpr DWORD FILE_SHARE_WRITE = 2;
inline constexpr DWORD CREATE_ALWAYS = 2;
inline constexpr DWORD OPEN_EXISTING = 3;
inline constexpr DWORD FILE_ATTRIBUTE_NORMAL = 0x80;

struct LARGE_INTEGER
{
    LONGLONG QuadPart;
};
using PLARGE_INTEGER = LARGE_INTEGER*;

struct OVERLAPPED;   // never passed: null only
using LPOVERLAPPED = OVERLAPPED*;

struct SECURITY_ATTRIBUTES;   // never passed: null only
using LPSECURITY_ATTRIBUTES = SECURITY_ATTRIBUTES*;

namespace win32
{
HANDLE CreateFileA(LPCSTR pszName, DWORD nAccess, DWORD nShare, LPSECURITY_ATTRIBUTES pSecurity, DWORD nDisposition,
                   DWORD nAttributes, HANDLE hTemplate);
BOOL ReadFile(HANDLE hFile, LPVOID pBuffer, DWORD nCount, LPDWORD pnRead, LPOVERLAPPED pOverlapped);
BOOL WriteFile(HANDLE hFile, LPCVOID pData, DWORD nCount, LPDWORD pnWritten, LPOVERLAPPED pOverlapped);
BOOL GetFileSizeEx(HANDLE hFile, PLARGE_INTEGER pnSize);
}
