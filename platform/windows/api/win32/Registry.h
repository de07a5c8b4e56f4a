// The registry.
#pragma once

#include "ZevrinUtils/Types.h"
