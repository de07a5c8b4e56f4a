// The records of Simple MAPI, as the exported headers use them.
#pragma once

#include "ZevrinUtils/Types.h"

#include <mapi.h>
