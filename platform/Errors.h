// The error of the last failed operation, one for each thread.
#pragma once

#include "platform/Service.h"
#include "win32/Kernel.h"

struct ErrorCalls
{
    PLATFORM_CALL(GetLastError);
    PLATFORM_CALL(SetLastError);
};

inline const ErrorCalls& Errors() noexcept
{
    return PlatformService<ErrorCalls>::InForce();
}
