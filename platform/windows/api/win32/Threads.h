#pragma once

#include "ZevrinUtils/Types.h"

#include <objbase.h>
