#pragma once

#include "ZevrinUtils/Types.h"

#include <ctime>
