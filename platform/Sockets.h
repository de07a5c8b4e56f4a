// The socket layer and the reverse lookup.
#pragma once

#include "platform/Service.h"
#include "system/Call.h"
#include "system/Sockets.h"

struct SocketCalls
{
    // Starts the socket layer and reports its version; 0 on success. On Windows the starts are counted and
    // the other calls need one; Linux has nothing to start.
    PLATFORM_CALL(WSAStartup);
    // Undoes one WSAStartup.
    PLATFORM_CALL(WSACleanup);

    // Dotted text to a four-byte address in network order; INADDR_NONE for text that is no address.
    PLATFORM_CALL(inet_addr);
    // Blocking reverse lookup of a four-byte Internet address, null if there is no name. The result
    // stays valid until the next call on the same thread.
    PLATFORM_CALL(gethostbyaddr);
};

inline const SocketCalls& Sockets() noexcept
{
    return PlatformService<SocketCalls>::InForce();
}
