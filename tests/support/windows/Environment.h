// Changes of the environment for a test alone.
#pragma once

#include "ZevrinUtils/Types.h"

inline void Unset(const char* pszName)
{
    SetEnvironmentVariableA(pszName, nullptr);
}
