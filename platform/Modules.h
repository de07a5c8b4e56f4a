// Loaded modules.
#pragma once

#include "platform/Service.h"
#include "win32/Kernel.h"

struct ModuleCalls
{
    // Loads a module and what it needs, or counts one more use of it; null if that fails. On Linux MAPI32.DLL is
    // the desktop's mail client, and there where xdg-email is on the search path.
    PLATFORM_CALL(LoadLibraryA);
    // Undoes one use; the last one unloads the module, unless it was pinned.
    PLATFORM_CALL(FreeLibrary);
    // A function that the module exports, by name; null if there is none.
    PLATFORM_CALL(GetProcAddress);
    // With PIN and FROM_ADDRESS: keeps the module that holds the address loaded until the process
    // ends, however often it is freed. Non-zero on success.
    PLATFORM_CALL(GetModuleHandleExA);
    // Without a buffer: the bytes that the path of a file on the standard search path takes; 0 if there is none.
    // On Linux only for MAPI32.DLL, of the program that stands for it.
    PLATFORM_CALL(SearchPathA);
};

inline const ModuleCalls& Modules() noexcept
{
    return PlatformService<ModuleCalls>::InForce();
}
