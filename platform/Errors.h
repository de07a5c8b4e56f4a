// The error of the last failed operation, one for each thread.
#pragma once

#include "platform/Service.h"
#include "system/Call.h"
#include "system/Errors.h"

struct ErrorCalls
{
    PLATFORM_CALL(GetLastError);
    PLATFORM_CALL(SetLastError);
};

inline const ErrorCalls& Errors() noexcept
{
    return PlatformService<ErrorCalls>::InForce();
}
