// The part of Windows that its main header declares, for most services.
#pragma once

#include "ZevrinUtils/Types.h"

#include <objbase.h>
