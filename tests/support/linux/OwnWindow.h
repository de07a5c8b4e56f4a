// A window for a test alone, which nobody sees.
#pragma once

#include "platform/linux/desktop/Window.h"

inline HWND OpenOwnWindow()
{
    struct Unseen : Window
    {
        LRESULT OnMessage(UINT, WPARAM, LPARAM) override { return 0; }
        std::string Caption() const override { return "Caption"; }
        DesktopBrowser* Native() const override { return nullptr; }
    };
    return OpenWindow(std::make_shared<Unseen>());
}

inline void CloseOwnWindow(HWND hWindow)
{
    CloseWindow(hWindow);
}
