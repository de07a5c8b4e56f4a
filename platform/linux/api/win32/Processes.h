#pragma once

#include "win32/Threads.h"   // STILL_ACTIVE

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
