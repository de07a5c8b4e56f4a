// The C library's functions, as that of Windows promises them. What both promise alike passes through.
#pragma once

#include <cstdio>
#include <cstdlib>
#include <ctime>

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

std::FILE* fopen(const char* pszPath, const char* pszMode);

inline std::size_t fread(void* pBuffer, std::size_t nSize, std::size_t nCount, std::FILE* pFile)
{
    return std::fread(pBuffer, nSize, nCount, pFile);
}

inline int fclose(std::FILE* pFile)
{
    return std::fclose(pFile);
}

inline std::time_t time(std::time_t* pnTime)
{
    return ::time(pnTime);
}
}
