// Sending a reply to the client of a port listener.
#pragma once

#include "platform/Sockets.h"

// Sends a reply in one piece, behind the header if it is wanted; nothing at all if it is empty or null. Whether
// all of it went out is not looked at. The question about the header is put twice, once for the size of the
// buffer and once for the header, so that a switch in between takes effect.
void SendReply(SOCKET hConnection, const char* pszReply, bool (*pfnUseHeader)());
