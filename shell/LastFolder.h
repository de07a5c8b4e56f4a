// The folder that was picked last: one for all folder dialogs, so that the next one can begin there.
#pragma once

#include "ZevrinUtils/framework/String.h"

// Lives in memory only and outlives every folder dialog.
extern CString g_strLastFolder;
