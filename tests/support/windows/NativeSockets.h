// The system's sockets, for clients in tests.
#pragma once

#include "ZevrinUtils/Types.h"

using NativeSocket = SOCKET;
using socklen_t = int;
inline constexpr int nShutdownSend = SD_SEND;

inline int CloseNative(NativeSocket hSocket)
{
    return closesocket(hSocket);
}
