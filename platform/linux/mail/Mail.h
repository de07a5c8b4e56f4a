// Simple MAPI by the desktop's mail client.
#pragma once

#include "ZevrinUtils/MapiTypes.h"

#include <cstdint>
#include <string>

// The program that opens the client, xdg-email; empty if the search path has none.
std::string FindMailProgram();

namespace win32
{
// Opens the client with the message, and gives its result once xdg-email has ended.
ULONG MAPISendMail(LHANDLE hSession, std::uintptr_t hParent, lpMapiMessage pMessage, FLAGS nFlags, ULONG nReserved);
}
