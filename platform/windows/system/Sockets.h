#pragma once

#include <winsock2.h>

#include "system/Types.h"
