#pragma once

#include "ZevrinUtils/Types.h"

#include <aclapi.h>
#include <sddl.h>
