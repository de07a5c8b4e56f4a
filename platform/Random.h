// The C library's generator of random numbers.
#pragma once

#include "platform/Service.h"
#include "win32/CLibrary.h"

struct RandomCalls
{
    // The next number of the sequence, from 0 to 32767. The sequence is the host's as well.
    PLATFORM_CALL(rand);
    // Starts the sequence that belongs to the seed.
    PLATFORM_CALL(srand);
};

inline const RandomCalls& Random() noexcept
{
    return PlatformService<RandomCalls>::InForce();
}
