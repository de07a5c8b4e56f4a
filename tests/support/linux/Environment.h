// Changes of the environment for a test alone.
#pragma once

#include <cstdlib>

inline void Unset(const char* pszName)
{
    unsetenv(pszName);
}
