// The machine's profile: a few numbers that programs leave for others.
#pragma once

#include "platform/Service.h"
#include "win32/Kernel.h"

struct ProfileCalls
{
    // The number under a section and a key, or the given one if there is none. On Linux the profile holds one
    // entry, "MAPI" of "MAIL": 1 where there is a mail system.
    PLATFORM_CALL(GetProfileIntA);
};

inline const ProfileCalls& Profile() noexcept
{
    return PlatformService<ProfileCalls>::InForce();
}
