// Unique identifiers.
#pragma once

#include "ZevrinUtils/Types.h"

#include <rpc.h>
