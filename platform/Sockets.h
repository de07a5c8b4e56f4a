// The socket layer, TCP sockets and the reverse lookup.
#pragma once

#include "platform/Service.h"
#include "win32/Network.h"

struct SocketCalls
{
    // Starts the socket layer and reports its version; 0 on success. On Windows the starts are counted and
    // the other calls need one; Linux has nothing to start.
    PLATFORM_CALL(WSAStartup);
    // Undoes one WSAStartup.
    PLATFORM_CALL(WSACleanup);

    // A new socket; INVALID_SOCKET on failure. On Linux a number comes again only after all others.
    PLATFORM_CALL(socket);
    // Gives it a local address and port. Fails while another listens there, and only then: connections of a
    // closed listener that linger do not count.
    PLATFORM_CALL(bind);
    // Opens it for connections.
    PLATFORM_CALL(listen);
    // Waits for a connection; INVALID_SOCKET on failure, and at once when the listening socket is closed.
    PLATFORM_CALL(accept);
    // Receives what has arrived, waiting for the first byte: the count, 0 when the peer has closed, -1.
    PLATFORM_CALL(recv);
    // Sends; a peer that is gone is a failure and nothing more.
    PLATFORM_CALL(send);
    // Closes. Bytes that were sent are still delivered, unless others that nobody read turn the close into a reset.
    PLATFORM_CALL(closesocket);

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
