// Access lists and SIDs.
#pragma once

#include "ZevrinUtils/Types.h"

#include <aclapi.h>
#include <sddl.h>
