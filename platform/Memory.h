// Memory that is handed out as C does, where its want is an answer and no exception.
#pragma once

#include "platform/Service.h"
#include "system/Call.h"
#include "system/Memory.h"

struct MemoryCalls
{
    // Null if there is no memory. What it gives is freed by free.
    PLATFORM_CALL(malloc);
};

inline const MemoryCalls& Memory() noexcept
{
    return PlatformService<MemoryCalls>::InForce();
}
