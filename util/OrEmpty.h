// Null as an empty text, for what hosts may leave out.
#pragma once

inline const char* OrEmpty(const char* pszText) noexcept
{
    return pszText ? pszText : "";
}
