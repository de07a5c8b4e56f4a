// The calls give their error number as the result.
#pragma once

#include "win32/Kernel.h"

using LPBYTE = BYTE*;
using REGSAM = DWORD;
using LSTATUS = LONG;

inline constexpr DWORD REG_OPTION_NON_VOLATILE = 0;
inline constexpr DWORD REG_CREATED_NEW_KEY = 1;
inline constexpr DWORD REG_OPENED_EXISTING_KEY = 2;
inline constexpr DWORD REG_SZ = 1;
inline constexpr DWORD REG_BINARY = 3;
inline constexpr DWORD REG_DWORD = 4;

inline constexpr REGSAM KEY_QUERY_VALUE = 0x1;
inline constexpr REGSAM KEY_SET_VALUE = 0x2;
inline constexpr REGSAM KEY_ENUMERATE_SUB_KEYS = 0x8;
inline constexpr REGSAM KEY_READ = 0x20019;
inline constexpr REGSAM KEY_ALL_ACCESS = 0xF003F;

struct FILETIME;   // never passed: null only

namespace win32
{
LSTATUS RegOpenKeyExA(HKEY hRoot, LPCSTR pszPath, DWORD nOptions, REGSAM nRights, HKEY* phKey);
LSTATUS RegCreateKeyExA(HKEY hRoot, LPCSTR pszPath, DWORD nReserved, char* pszClass, DWORD nOptions, REGSAM nRights,
                        LPSECURITY_ATTRIBUTES pSecurity, HKEY* phKey, LPDWORD pnDisposition);
LSTATUS RegCloseKey(HKEY hKey);

LSTATUS RegQueryValueExA(HKEY hKey, LPCSTR pszName, LPDWORD pReserved, LPDWORD pnType, LPBYTE pData, LPDWORD pnSize);
LSTATUS RegSetValueExA(HKEY hKey, LPCSTR pszName, DWORD nReserved, DWORD nType, const BYTE* pData, DWORD nSize);
LSTATUS RegDeleteValueA(HKEY hKey, LPCSTR pszName);

LSTATUS RegEnumKeyExA(HKEY hKey, DWORD nIndex, char* pszName, LPDWORD pnLength, LPDWORD pReserved, char* pszClass,
                      LPDWORD pnClassLength, FILETIME* pTime);
LSTATUS RegEnumValueA(HKEY hKey, DWORD nIndex, char* pszName, LPDWORD pnLength, LPDWORD pReserved, LPDWORD pnType,
                      LPBYTE pData, LPDWORD pnSize);
}
