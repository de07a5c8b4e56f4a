#pragma once

#include "ZevrinUtils/Types.h"

inline constexpr DWORD GET_MODULE_HANDLE_EX_FLAG_PIN = 1;
inline constexpr DWORD GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS = 4;

using FARPROC = void (*)();

namespace win32
{
HMODULE LoadLibraryA(LPCSTR pszName);
BOOL FreeLibrary(HMODULE hModule);
FARPROC GetProcAddress(HMODULE hModule, LPCSTR pszName);
BOOL GetModuleHandleExA(DWORD nFlags, LPCSTR pszNameOrAddress, HMODULE* phModule);
DWORD SearchPathA(LPCSTR pszPath, LPCSTR pszFile, LPCSTR pszExtension, DWORD nSize, LPSTR pszBuffer,
                  LPSTR* ppszFilePart);
}
