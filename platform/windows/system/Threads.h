#pragma once

#include "system/Types.h"

#include <objbase.h>
