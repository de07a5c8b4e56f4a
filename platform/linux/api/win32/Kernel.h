// The part of Windows that its main header declares, for most services. As in all of these headers only what the
// library uses is here, with the names, widths and values that are documented for Windows.
#pragma once

#include "ZevrinUtils/Types.h"

#include <cstdarg>

// Shared by several services.

inline constexpr HRESULT S_OK = 0;
inline constexpr HRESULT S_FALSE = 1;

struct SECURITY_ATTRIBUTES;   // never passed: null only
using LPSECURITY_ATTRIBUTES = SECURITY_ATTRIBUTES*;

// Error numbers are those of Windows; hosts read them in texts and logs.

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

// Handles.

namespace win32
{
BOOL CloseHandle(HANDLE hObject);
}

// Threads, critical sections, events, waits, and the starts of COM.

inline constexpr DWORD INFINITE = 0xFFFFFFFF;
inline constexpr DWORD WAIT_OBJECT_0 = 0;
inline constexpr DWORD WAIT_TIMEOUT = 258;
inline constexpr DWORD WAIT_FAILED = 0xFFFFFFFF;
inline constexpr DWORD MAXIMUM_WAIT_OBJECTS = 64;

inline constexpr DWORD STILL_ACTIVE = 259;

using LPTHREAD_START_ROUTINE = DWORD (*)(LPVOID);

namespace win32
{
void InitializeCriticalSection(LPCRITICAL_SECTION pSection);
void EnterCriticalSection(LPCRITICAL_SECTION pSection);
void LeaveCriticalSection(LPCRITICAL_SECTION pSection);
void DeleteCriticalSection(LPCRITICAL_SECTION pSection);

HANDLE CreateEventA(LPSECURITY_ATTRIBUTES pSecurity, BOOL bManualReset, BOOL bInitialState, LPCSTR pszName);
BOOL SetEvent(HANDLE hEvent);
BOOL ResetEvent(HANDLE hEvent);

HANDLE CreateThread(LPSECURITY_ATTRIBUTES pSecurity, SIZE_T nStackSize, LPTHREAD_START_ROUTINE pStart, LPVOID pArgument,
                    DWORD nFlags, LPDWORD pnThreadId);

BOOL GetExitCodeThread(HANDLE hThread, LPDWORD pnExitCode);
BOOL TerminateThread(HANDLE hThread, DWORD nExitCode);

DWORD WaitForSingleObject(HANDLE hObject, DWORD nMilliseconds);
DWORD WaitForMultipleObjects(DWORD nCount, const HANDLE* phObjects, BOOL bWaitAll, DWORD nMilliseconds);

HRESULT CoInitialize(LPVOID pReserved);
void CoUninitialize();
}

// Files and folders.

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

// Processes and messages.

inline constexpr DWORD NORMAL_PRIORITY_CLASS = 0x20;
inline constexpr DWORD CREATE_SEPARATE_WOW_VDM = 0x800;
inline constexpr DWORD CREATE_NO_WINDOW = 0x8000000;
inline constexpr UINT PM_REMOVE = 1;

struct STARTUPINFOA
{
    DWORD cb;
};
using LPSTARTUPINFOA = STARTUPINFOA*;

struct PROCESS_INFORMATION
{
    HANDLE hProcess;
    HANDLE hThread;
};
using LPPROCESS_INFORMATION = PROCESS_INFORMATION*;

struct MSG
{
    UINT message;
};
using LPMSG = MSG*;

namespace win32
{
BOOL CreateProcessA(LPCSTR pszApplication, LPSTR pszCommandLine, LPSECURITY_ATTRIBUTES pProcessSecurity,
                    LPSECURITY_ATTRIBUTES pThreadSecurity, BOOL bInheritHandles, DWORD nFlags, LPVOID pEnvironment,
                    LPCSTR pszWorkingFolder, LPSTARTUPINFOA pStartup, LPPROCESS_INFORMATION pProcess);
BOOL GetExitCodeProcess(HANDLE hProcess, LPDWORD pnExitCode);
void Sleep(DWORD nMilliseconds);

BOOL PeekMessageA(LPMSG pMessage, HWND hWindow, UINT nFirst, UINT nLast, UINT nRemove);
BOOL TranslateMessage(const MSG* pMessage);
LRESULT DispatchMessageA(const MSG* pMessage);
}

// Modules.

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

// The machine's profile.

namespace win32
{
UINT GetProfileIntA(LPCSTR pszSection, LPCSTR pszKey, int nDefault);
}

// Disks, error texts, the command line.

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

// Text.

using LCID = DWORD;

inline constexpr LCID LOCALE_USER_DEFAULT = 0x400;
inline constexpr DWORD NORM_IGNORECASE = 1;
inline constexpr UINT CP_ACP = 0;
inline constexpr DWORD MB_PRECOMPOSED = 1;
inline constexpr int CSTR_LESS_THAN = 1;
inline constexpr int CSTR_EQUAL = 2;
inline constexpr int CSTR_GREATER_THAN = 3;

namespace win32
{
int MultiByteToWideChar(UINT nCodePage, DWORD nFlags, LPCSTR pszText, int nText, LPWSTR pszWide, int nWide);
int CompareStringA(LCID nLocale, DWORD nFlags, LPCSTR pszLeft, int nLeft, LPCSTR pszRight, int nRight);
}
