// Giving up handles, whatever they stand for.
#pragma once

#include "platform/Service.h"
#include "win32/Kernel.h"

struct HandleCalls
{
    // Gives up a handle; fails for a null or closed one. The object lives on while a thread runs in it or
    // a wait for it is under way.
    PLATFORM_CALL(CloseHandle);
};

inline const HandleCalls& Handles() noexcept
{
    return PlatformService<HandleCalls>::InForce();
}
