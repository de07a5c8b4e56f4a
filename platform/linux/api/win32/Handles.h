#pragma once

#include "ZevrinUtils/Types.h"

namespace win32
{
BOOL CloseHandle(HANDLE hObject);
}
