#pragma once

#include <cstdlib>

namespace win32
{
inline void* malloc(std::size_t nSize)
{
    return ::malloc(nSize);
}

inline void* realloc(void* pBlock, std::size_t nSize)
{
    return ::realloc(pBlock, nSize);
}
}
