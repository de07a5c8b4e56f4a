// Identifiers that nobody else has.
#pragma once

#include "platform/Service.h"
#include "win32/Identifiers.h"

struct IdentifierCalls
{
    // A new identifier, with a status that tells how far it is unique.
    PLATFORM_CALL(UuidCreate);
    // Its text in small letters, without braces, or RPC_S_OUT_OF_MEMORY.
    PLATFORM_CALL(UuidToStringA);
    // Frees that text.
    PLATFORM_CALL(RpcStringFreeA);
};

inline const IdentifierCalls& Identifiers() noexcept
{
    return PlatformService<IdentifierCalls>::InForce();
}
