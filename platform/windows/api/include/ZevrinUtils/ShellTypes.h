// What the exported headers need of the shell.
#pragma once

#include "ZevrinUtils/Types.h"

#include <shlobj.h>
