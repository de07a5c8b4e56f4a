// A window for a test alone, which nobody sees.
#pragma once

#include "platform/linux/desktop/Window.h"

class OwnWindow
{
public:
    explicit OwnWindow(const char* pszCaption) : m_hWindow(OpenWindow(std::make_shared<Captioned>(pszCaption))) {}
    ~OwnWindow() { CloseWindow(m_hWindow); }
    OwnWindow(const OwnWindow&) = delete;
    OwnWindow& operator=(const OwnWindow&) = delete;

    HWND Get() const { return m_hWindow; }

private:
    struct Captioned : Window
    {
        explicit Captioned(const char* psz) : strCaption(psz) {}
        LRESULT OnMessage(UINT, WPARAM, LPARAM) override { return 0; }
        std::string Caption() const override { return strCaption; }
        DesktopBrowser* Native() const override { return nullptr; }
        const std::string strCaption;
    };

    const HWND m_hWindow;
};
