#pragma once

#include "win32/Basics.h"

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
