// Sockets, the look-up of addresses, network adapters.
#pragma once

#include "ZevrinUtils/Types.h"

#include <iphlpapi.h>
