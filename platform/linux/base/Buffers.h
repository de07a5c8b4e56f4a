// Texts and bytes for the buffers of callers.
#pragma once

#include <cstddef>
#include <cstring>
#include <string_view>

// Copies as much of a text as leaves room for a zero byte, and that byte; gives the length without it.
inline std::size_t CopyCut(std::string_view strText, char* pszBuffer, std::size_t nSize)
{
    const std::size_t nLength = strText.copy(pszBuffer, nSize - 1);
    pszBuffer[nLength] = 0;
    return nLength;
}

// Copies all the bytes and so many zero bytes behind them, or nothing: false if they do not fit.
inline bool CopyWhole(std::string_view strBytes, std::size_t nZeros, void* pBuffer, std::size_t nSize)
{
    if (strBytes.size() + nZeros > nSize)
        return false;
    std::memcpy(pBuffer, strBytes.data(), strBytes.size());
    std::memset(static_cast<char*>(pBuffer) + strBytes.size(), 0, nZeros);
    return true;
}
