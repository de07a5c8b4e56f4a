// A window for a test alone, which nobody sees.
#pragma once

#include "ZevrinUtils/Types.h"

inline HWND OpenOwnWindow()
{
    return CreateWindowExA(0, "STATIC", "Caption", 0, 0, 0, 0, 0, HWND_MESSAGE, nullptr, nullptr, nullptr);
}

inline void CloseOwnWindow(HWND hWindow)
{
    DestroyWindow(hWindow);
}
