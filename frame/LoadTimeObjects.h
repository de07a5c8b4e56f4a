// The objects that live for as long as the module is loaded. They belong to several classes and stand
// together in one source file, because only within one file does the language promise the order in which
// they are built and, reversed, destroyed.
#pragma once

#include "frame/UtilsApp.h"
#include "framework/String.h"
#include "framework/StringMap.h"

// The folder that was picked last; it outlives every folder dialog.
extern CString g_strLastFolder;

// Hosts that were learned from redirects, by the host that was asked for. Shared by all HTTP clients of
// the process and guarded by none.
extern CMapStringToString g_oHostNameToIp;

extern CUtilsApp g_oApp;

// Length of the listener's reply header template as it stands, placeholder included, in bytes.
extern const int g_nReplyHeaderLength;
