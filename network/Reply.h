// The reply to the client of a port listener, and the fixed HTTP/1.0 header that may stand before it.
#pragma once

#include "platform/Sockets.h"

// A format with one place: the length of the reply in bytes, in decimal.
extern const char g_szReplyHeader[];

// Length of the format as it stands, placeholder included, in bytes; measured when the module loads.
extern const int g_nReplyHeaderLength;
int MeasureReplyHeader() noexcept;

// Sends a reply in one piece, behind the header if it is wanted; nothing at all if it is empty or null. Whether
// all of it went out is not looked at. The question about the header is put twice, once for the size of the
// buffer and once for the header, so that a switch in between takes effect.
void SendReply(SOCKET hConnection, const char* pszReply, bool (*pfnUseHeader)());
