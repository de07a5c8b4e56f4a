// The system's sockets, for clients in tests.
#pragma once

#include "ZevrinUtils/Types.h"

using NativeSocket = SOCKET;
using NativeSize = int;   // of what is sent
using socklen_t = int;
inline constexpr int nShutdownSend = SD_SEND;
inline constexpr bool bNumbersComeAgain = true;   // a new socket may have the number of one that is closed

inline int CloseNative(NativeSocket hSocket)
{
    return closesocket(hSocket);
}
