// Error numbers are those of Windows; hosts read them in texts and logs.
#pragma once

#include "ZevrinUtils/Types.h"

inline constexpr DWORD ERROR_SUCCESS = 0;
inline constexpr DWORD ERROR_INVALID_HANDLE = 6;
inline constexpr DWORD ERROR_NOT_ENOUGH_MEMORY = 8;
inline constexpr DWORD ERROR_NOT_SUPPORTED = 50;
inline constexpr DWORD ERROR_INVALID_PARAMETER = 87;
inline constexpr DWORD ERROR_MOD_NOT_FOUND = 126;
inline constexpr DWORD ERROR_PROC_NOT_FOUND = 127;
inline constexpr DWORD WSAEFAULT = 10014;
inline constexpr DWORD WSAHOST_NOT_FOUND = 11001;
inline constexpr DWORD WSATRY_AGAIN = 11002;
inline constexpr DWORD WSANO_RECOVERY = 11003;

namespace win32
{
DWORD GetLastError();
void SetLastError(DWORD nError);
}
