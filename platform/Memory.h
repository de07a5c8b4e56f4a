// Memory as C hands it out: where there is none the answer is null, and no exception.
#pragma once

#include "platform/Service.h"
#include "util/Owned.h"
#include "win32/CLibrary.h"

struct MemoryCalls
{
    // Null if there is no memory. The block is freed by free, as Malloced of util/Owned.h does.
    PLATFORM_CALL(malloc);
    // A block of another size with the old one's content; null, with the old block as it was, if there is no memory.
    PLATFORM_CALL(realloc);
};

inline const MemoryCalls& Memory() noexcept
{
    return PlatformService<MemoryCalls>::InForce();
}
