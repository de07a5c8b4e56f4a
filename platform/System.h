// Questions to the system about itself and about this process.
#pragma once

#include "platform/Service.h"
#include "win32/CLibrary.h"
#include "win32/Kernel.h"

struct SystemCalls
{
    // Seconds since 1970.
    PLATFORM_CALL(time);
    // Tells, for a folder or with null for the current one, the bytes free to the caller, those of the disk, and those
    // free on it. Fails for a folder that is not there.
    PLATFORM_CALL(GetDiskFreeSpaceExA);
    // The system's text for an error number, in a buffer of its own that LocalFree releases, a line end behind it;
    // gives its length, 0 if there is none.
    PLATFORM_CALL(FormatMessageA);
    // Releases what the system has given; null is allowed.
    PLATFORM_CALL(LocalFree);
    // The command line of the process, as it was written or as it could have been; never null.
    PLATFORM_CALL(GetCommandLineA);
};

inline const SystemCalls& System() noexcept
{
    return PlatformService<SystemCalls>::InForce();
}
