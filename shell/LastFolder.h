// The folder that was picked last.
#pragma once

#include "ZevrinUtils/framework/String.h"

// Lives in memory only and outlives every folder dialog.
extern CString g_strLastFolder;
