#pragma once

#include "win32/Basics.h"

inline const HANDLE INVALID_HANDLE_VALUE = reinterpret_cast<HANDLE>(~std::uintptr_t{0});

inline constexpr DWORD GENERIC_READ = 0x80000000;
inline constexpr DWORD GENERIC_WRITE = 0x40000000;
inline constexpr DWORD FILE_SHARE_READ = 1;
inline constexpr DWORD FILE_SHARE_WRITE = 2;
inline constexpr DWORD CREATE_ALWAYS = 2;
inline constexpr DWORD OPEN_EXISTING = 3;
inline constexpr DWORD FILE_ATTRIBUTE_READONLY = 1;
inline constexpr DWORD FILE_ATTRIBUTE_DIRECTORY = 0x10;
inline constexpr DWORD FILE_ATTRIBUTE_NORMAL = 0x80;
inline constexpr DWORD FILE_ATTRIBUTE_REPARSE_POINT = 0x400;
inline constexpr DWORD INVALID_FILE_ATTRIBUTES = 0xFFFFFFFF;
inline constexpr std::size_t MAX_PATH = 260;

struct LARGE_INTEGER
{
    LONGLONG QuadPart;
};
using PLARGE_INTEGER = LARGE_INTEGER*;

struct WIN32_FIND_DATAA
{
    DWORD nFileSizeHigh;
    DWORD nFileSizeLow;
    char cFileName[MAX_PATH];
};
using LPWIN32_FIND_DATAA = WIN32_FIND_DATAA*;

struct OVERLAPPED;   // never passed: null only
using LPOVERLAPPED = OVERLAPPED*;

namespace win32
{
HANDLE CreateFileA(LPCSTR pszName, DWORD nAccess, DWORD nShare, LPSECURITY_ATTRIBUTES pSecurity, DWORD nDisposition,
                   DWORD nAttributes, HANDLE hTemplate);
BOOL ReadFile(HANDLE hFile, LPVOID pBuffer, DWORD nCount, LPDWORD pnRead, LPOVERLAPPED pOverlapped);
BOOL WriteFile(HANDLE hFile, LPCVOID pData, DWORD nCount, LPDWORD pnWritten, LPOVERLAPPED pOverlapped);
BOOL GetFileSizeEx(HANDLE hFile, PLARGE_INTEGER pnSize);

HANDLE FindFirstFileA(LPCSTR pszPattern, LPWIN32_FIND_DATAA pFound);
BOOL FindNextFileA(HANDLE hFind, LPWIN32_FIND_DATAA pFound);
BOOL FindClose(HANDLE hFind);
DWORD GetFileAttributesA(LPCSTR pszPath);

BOOL CopyFileA(LPCSTR pszSource, LPCSTR pszTarget, BOOL bFailIfExists);
BOOL CreateDirectoryA(LPCSTR pszPath, LPSECURITY_ATTRIBUTES pSecurity);
BOOL DeleteFileA(LPCSTR pszPath);
BOOL RemoveDirectoryA(LPCSTR pszPath);
}
