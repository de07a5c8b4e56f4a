// True where the Windows targets' tests run under Wine, for all that it does otherwise than Windows.
#pragma once

#include "platform/Modules.h"

inline bool UnderWine()
{
    const HMODULE hModule = Modules().LoadLibraryA("ntdll.dll");
    return hModule && Modules().GetProcAddress(hModule, "wine_get_version");
}
