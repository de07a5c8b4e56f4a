#pragma once

#include "ZevrinUtils/ShellTypes.h"

#include <shlwapi.h>
