#pragma once

#include <cstdlib>

namespace win32
{
// The high bits: of the C library's sequence those are the better ones.
inline int rand()
{
    static_assert(RAND_MAX == 0x7fffffff);
    return ::rand() >> 16;
}

inline void srand(unsigned int nSeed)
{
    ::srand(nSeed);
}
}
