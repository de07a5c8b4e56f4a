// The internet functions.
#pragma once

#include "ZevrinUtils/Types.h"

#include <wininet.h>
