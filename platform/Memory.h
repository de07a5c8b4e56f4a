// Memory as C hands it out: where there is none the answer is null, and no exception.
#pragma once

#include "platform/Service.h"
#include "win32/Call.h"
#include "win32/Memory.h"

#include <memory>

struct MemoryCalls
{
    // Null if there is no memory. The block is freed by free.
    PLATFORM_CALL(malloc);
    // A block of another size with the old one's content; null, with the old block as it was, if there is no memory.
    PLATFORM_CALL(realloc);
};

// Owns a block from here, or from an operation whose result is freed by free as well.
struct FreeMemory
{
    void operator()(void* pBlock) const noexcept { std::free(pBlock); }
};
template <class Block>
using Malloced = std::unique_ptr<Block, FreeMemory>;

inline const MemoryCalls& Memory() noexcept
{
    return PlatformService<MemoryCalls>::InForce();
}
