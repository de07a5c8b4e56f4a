// What a test takes out of its own environment.
#pragma once

#include <cstdlib>

inline constexpr bool bShowsNothingWithoutDisplay = true;

inline void Unset(const char* pszName)
{
    unsetenv(pszName);
}
