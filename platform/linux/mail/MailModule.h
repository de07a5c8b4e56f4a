// The one module of Windows that this layer answers for by itself: MAPI32.DLL, which is there where the program is that
// sends mail.
#pragma once

#include "win32/Kernel.h"

bool IsMailModule(LPCSTR pszName);
bool IsMailModule(HMODULE hModule);

// The calls on modules, for this one; all fail as those do.
HMODULE LoadMailModule();
void FreeMailModule();
FARPROC FunctionOfMailModule(LPCSTR pszName);

// The bytes that the path of its program takes.
DWORD PathSizeOfMailModule();
