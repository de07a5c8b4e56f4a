// Null as an empty text.
#pragma once

inline const char* OrEmpty(const char* pszText) noexcept
{
    return pszText ? pszText : "";
}
