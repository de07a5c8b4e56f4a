// Loaded modules.
#pragma once

#include "platform/Service.h"
#include "system/Call.h"
#include "system/Modules.h"

struct ModuleCalls
{
    // With PIN and FROM_ADDRESS: keeps the module that holds the address loaded until the process
    // ends, however often it is freed. Non-zero on success.
    PLATFORM_CALL(GetModuleHandleExA);
};

inline const ModuleCalls& Modules() noexcept
{
    return PlatformService<ModuleCalls>::InForce();
}
