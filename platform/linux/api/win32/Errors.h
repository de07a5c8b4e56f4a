// Error numbers are those of Windows; hosts read them in texts and logs.
#pragma once

#include "ZevrinUtils/Types.h"

inline constexpr DWORD ERROR_SUCCESS = 0;
inline constexpr DWORD ERROR_FILE_NOT_FOUND = 2;
inline constexpr DWORD ERROR_PATH_NOT_FOUND = 3;
inline constexpr DWORD ERROR_TOO_MANY_OPEN_FILES = 4;
inline constexpr DWORD ERROR_ACCESS_DENIED = 5;
inline constexpr DWORD ERROR_INVALID_HANDLE = 6;
inline constexpr DWORD ERROR_NOT_ENOUGH_MEMORY = 8;
inline constexpr DWORD ERROR_OUTOFMEMORY = 14;
inline constexpr DWORD ERROR_NOT_SAME_DEVICE = 17;
inline constexpr DWORD ERROR_NO_MORE_FILES = 18;
inline constexpr DWORD ERROR_WRITE_PROTECT = 19;
inline constexpr DWORD ERROR_GEN_FAILURE = 31;
inline constexpr DWORD ERROR_SHARING_VIOLATION = 32;
inline constexpr DWORD ERROR_NOT_SUPPORTED = 50;
inline constexpr DWORD ERROR_INVALID_PARAMETER = 87;
inline constexpr DWORD ERROR_BUFFER_OVERFLOW = 111;
inline constexpr DWORD ERROR_DISK_FULL = 112;
inline constexpr DWORD ERROR_INSUFFICIENT_BUFFER = 122;
inline constexpr DWORD ERROR_MOD_NOT_FOUND = 126;
inline constexpr DWORD ERROR_PROC_NOT_FOUND = 127;
inline constexpr DWORD ERROR_DIR_NOT_EMPTY = 145;
inline constexpr DWORD ERROR_BAD_PATHNAME = 161;
inline constexpr DWORD ERROR_BUSY = 170;
inline constexpr DWORD ERROR_ALREADY_EXISTS = 183;
inline constexpr DWORD ERROR_BAD_EXE_FORMAT = 193;
inline constexpr DWORD ERROR_FILENAME_EXCED_RANGE = 206;
inline constexpr DWORD ERROR_NO_DATA = 232;
inline constexpr DWORD ERROR_MORE_DATA = 234;
inline constexpr DWORD ERROR_NO_MORE_ITEMS = 259;
inline constexpr DWORD ERROR_DIRECTORY = 267;
inline constexpr DWORD ERROR_MR_MID_NOT_FOUND = 317;
inline constexpr DWORD ERROR_BADDB = 1009;
inline constexpr DWORD ERROR_REGISTRY_IO_FAILED = 1016;
inline constexpr DWORD ERROR_NOT_REGISTRY_FILE = 1017;
inline constexpr DWORD ERROR_KEY_DELETED = 1018;
inline constexpr DWORD ERROR_IO_DEVICE = 1117;
inline constexpr DWORD ERROR_CANCELLED = 1223;
inline constexpr DWORD ERROR_NONE_MAPPED = 1332;
inline constexpr DWORD ERROR_INVALID_SID = 1337;
inline constexpr DWORD ERROR_CANT_RESOLVE_FILENAME = 1921;
inline constexpr DWORD WSAEACCES = 10013;
inline constexpr DWORD WSAEFAULT = 10014;
inline constexpr DWORD WSAEINVAL = 10022;
inline constexpr DWORD WSAEMFILE = 10024;
inline constexpr DWORD WSAENOTSOCK = 10038;
inline constexpr DWORD WSAEADDRINUSE = 10048;
inline constexpr DWORD WSAEADDRNOTAVAIL = 10049;
inline constexpr DWORD WSAENETDOWN = 10050;
inline constexpr DWORD WSAECONNABORTED = 10053;
inline constexpr DWORD WSAECONNRESET = 10054;
inline constexpr DWORD WSAENOBUFS = 10055;
inline constexpr DWORD WSAENOTCONN = 10057;
inline constexpr DWORD WSAHOST_NOT_FOUND = 11001;
inline constexpr DWORD WSATRY_AGAIN = 11002;
inline constexpr DWORD WSANO_RECOVERY = 11003;

namespace win32
{
DWORD GetLastError();
void SetLastError(DWORD nError);
}
