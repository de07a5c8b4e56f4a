#pragma once

#include "system/Types.h"

inline constexpr DWORD GET_MODULE_HANDLE_EX_FLAG_PIN = 1;
inline constexpr DWORD GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS = 4;

namespace win32
{
BOOL GetModuleHandleExA(DWORD nFlags, LPCSTR pszNameOrAddress, HMODULE* phModule);
}
