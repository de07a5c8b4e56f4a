// How a call of the registry fails.
#pragma once

#include "win32/Errors.h"

// What ends a call of the registry: the number that its caller gets.
struct RegistryFailure
{
    DWORD nError;
};
