// The system's sockets, for clients in tests.
#pragma once

#include <cstddef>

#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

using NativeSocket = int;
using NativeSize = std::size_t;   // of what is sent
inline constexpr int nShutdownSend = SHUT_WR;
inline constexpr bool bNumbersComeAgain = false;   // a new socket is never taken for one that is closed

inline int CloseNative(NativeSocket nSocket)
{
    return close(nSocket);
}
