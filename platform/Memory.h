// Memory that is handed out as C does, where its want is an answer and no exception.
#pragma once

#include "platform/Service.h"
#include "util/Owned.h"
#include "win32/CLibrary.h"

struct MemoryCalls
{
    // Null if there is no memory. What it gives is freed by free; Malloced of util/Owned.h does that.
    PLATFORM_CALL(malloc);
    // A block of another size with the old one's content; null, with the old block as it was, if there is no memory.
    PLATFORM_CALL(realloc);
};

inline const MemoryCalls& Memory() noexcept
{
    return PlatformService<MemoryCalls>::InForce();
}
