// Text as the system compares and converts it.
#pragma once

#include "platform/Service.h"
#include "win32/Kernel.h"

struct TextCalls
{
    // Compares whole texts in the user's language, with NORM_IGNORECASE whatever their case: CSTR_LESS_THAN,
    // CSTR_EQUAL, CSTR_GREATER_THAN; 0 on failure.
    PLATFORM_CALL(CompareStringA);
    // The system's text as UTF-16, with -1 its zero byte too: the count of units written; 0 if they do not fit, and
    // then as many as do are written. On Linux a byte that is no UTF-8 becomes a surrogate that stands alone.
    PLATFORM_CALL(MultiByteToWideChar);
};

inline const TextCalls& Text() noexcept
{
    return PlatformService<TextCalls>::InForce();
}
