#pragma once

#include "ZevrinUtils/Types.h"
