// Changes of the environment for a test alone.
#pragma once

#include <cstdlib>

inline constexpr bool bShowsNothingWithoutDisplay = true;

inline void Unset(const char* pszName)
{
    unsetenv(pszName);
}
