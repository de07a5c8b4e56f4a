#pragma once

#include "system/Types.h"

struct SECURITY_ATTRIBUTES;   // never passed: null only
using LPSECURITY_ATTRIBUTES = SECURITY_ATTRIBUTES*;
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
BOOL CloseHandle(HANDLE hObject);

DWORD WaitForSingleObject(HANDLE hObject, DWORD nMilliseconds);
DWORD WaitForMultipleObjects(DWORD nCount, const HANDLE* phObjects, BOOL bWaitAll, DWORD nMilliseconds);

HRESULT CoInitialize(LPVOID pReserved);
void CoUninitialize();
}
