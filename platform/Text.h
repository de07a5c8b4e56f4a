// What the system knows about text.
#pragma once

#include "platform/Service.h"
#include "system/Call.h"
#include "system/Text.h"

struct TextCalls
{
    // Compares whole texts in the user's language, with NORM_IGNORECASE whatever their case: CSTR_LESS_THAN,
    // CSTR_EQUAL, CSTR_GREATER_THAN; 0 on failure.
    PLATFORM_CALL(CompareStringA);
};

inline const TextCalls& Text() noexcept
{
    return PlatformService<TextCalls>::InForce();
}
