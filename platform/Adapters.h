// Network adapters.
#pragma once

#include "platform/Service.h"
#include "win32/Network.h"

struct AdapterCalls
{
    // Fills a buffer with a linked list of the machine's adapters, each with its IPv4 addresses as texts; gives an
    // error, 0 for none. If the buffer is too small, or null, the size that it takes and ERROR_BUFFER_OVERFLOW.
    // The loopback adapter is none of them; one without an address has "0.0.0.0". Without adapters the error is
    // ERROR_NO_DATA.
    PLATFORM_CALL(GetAdaptersInfo);
};

inline const AdapterCalls& Adapters() noexcept
{
    return PlatformService<AdapterCalls>::InForce();
}
