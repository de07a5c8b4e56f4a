#pragma once

#include <cstdio>

namespace win32
{
std::FILE* fopen(const char* pszPath, const char* pszMode);

inline std::size_t fread(void* pBuffer, std::size_t nSize, std::size_t nCount, std::FILE* pFile)
{
    return std::fread(pBuffer, nSize, nCount, pFile);
}

inline int fclose(std::FILE* pFile)
{
    return std::fclose(pFile);
}
}
