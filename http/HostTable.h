// Hosts that were learned from redirects.
#pragma once

#include "ZevrinUtils/framework/StringMap.h"

// The host to ask, by the host in the URL. Shared by all HTTP clients of the process and guarded by none.
extern CMapStringToString g_oHostNameToIp;
