// Windows on the screen, and the shell.
#pragma once

#include "ZevrinUtils/ShellTypes.h"

#include <shlwapi.h>
