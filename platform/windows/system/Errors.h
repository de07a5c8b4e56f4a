#pragma once

#include "system/Types.h"
