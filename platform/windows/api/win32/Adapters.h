#pragma once

#include "ZevrinUtils/Types.h"

#include <iphlpapi.h>
