/// @file
/// The Windows types that the exported headers and the platform services use, for Linux: the same names,
/// widths and layouts. Only what is in use is here.
#pragma once

#include <cstddef>
#include <cstdint>

#include <pthread.h>

/// As the system's documentation of that name tells, here and below.
/// @{
#define WINAPI
#define CALLBACK
#ifndef FALSE
#define FALSE 0
#define TRUE 1
#endif

using BOOL = int;
using BYTE = std::uint8_t;
using WORD = std::uint16_t;
using DWORD = std::uint32_t;
using UINT = unsigned int;
using LONG = std::int32_t;
using ULONG = std::uint32_t;
using LONGLONG = std::int64_t;
using ULONGLONG = std::uint64_t;
using HRESULT = LONG;
using WCHAR = std::uint16_t;   // text of this width is UTF-16
using LPWSTR = WCHAR*;
using LPCWSTR = const WCHAR*;
using LONG_PTR = std::intptr_t;
using WPARAM = UINT;   // of this width on 32-bit Windows, and never a pointer
using LPARAM = std::intptr_t;
using LRESULT = std::intptr_t;
using LPSTR = char*;
using LPCSTR = const char*;
using LPVOID = void*;
using LPCVOID = const void*;
using LPDWORD = DWORD*;
using SIZE_T = std::size_t;
using DWORD_PTR = std::uintptr_t;
using HANDLE = void*;
using HMODULE = void*;
using HWND = struct HWND__*;   // NOLINT(bugprone-reserved-identifier): exported names hold it
using WNDPROC = LRESULT (*)(HWND hWindow, UINT nMessage, WPARAM wParam, LPARAM lParam);

// A key of the registry, and the root of those that belong to the machine. What the exported names of both targets
// say of a key is the same. NOLINTNEXTLINE(bugprone-reserved-identifier)
using HKEY = struct HKEY__*;
#define HKEY_LOCAL_MACHINE (reinterpret_cast<HKEY>(std::uintptr_t{0x80000002}))

/// @}

/// A lock of the platform, plain data as on Windows.
struct CRITICAL_SECTION
{
    pthread_mutex_t Mutex;   ///< the C library's
};
using LPCRITICAL_SECTION = CRITICAL_SECTION*;   ///< where one is
