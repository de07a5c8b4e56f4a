// A window for a test alone, which nobody sees.
#pragma once

#include "ZevrinUtils/Types.h"

class OwnWindow
{
public:
    explicit OwnWindow(const char* pszCaption)
        : m_hWindow(CreateWindowExA(0, "STATIC", pszCaption, 0, 0, 0, 0, 0, HWND_MESSAGE, nullptr, nullptr, nullptr))
    {
    }
    ~OwnWindow() { DestroyWindow(m_hWindow); }
    OwnWindow(const OwnWindow&) = delete;
    OwnWindow& operator=(const OwnWindow&) = delete;

    HWND Get() const { return m_hWindow; }

private:
    const HWND m_hWindow;
};
