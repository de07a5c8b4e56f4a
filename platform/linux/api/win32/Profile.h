#pragma once

#include "ZevrinUtils/Types.h"

namespace win32
{
UINT GetProfileIntA(LPCSTR pszSection, LPCSTR pszKey, int nDefault);
}
