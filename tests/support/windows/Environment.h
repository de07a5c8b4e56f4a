// Changes of the environment for a test alone.
#pragma once

#include "ZevrinUtils/Types.h"

inline constexpr bool bShowsNothingWithoutDisplay = false;   // a window that nobody sees waits for its user

inline void Unset(const char* pszName)
{
    SetEnvironmentVariableA(pszName, nullptr);
}
