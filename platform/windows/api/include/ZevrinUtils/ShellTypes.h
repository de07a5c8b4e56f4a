// The part of the shell that the exported headers use.
#pragma once

#include "ZevrinUtils/Types.h"

#include <shlobj.h>
