// A window, as which the calls that Windows has for windows know a dialog of the desktop.
#pragma once

#include "platform/linux/base/Handles.h"

#include <map>
#include <string>

struct DesktopBrowser;

class Window : public HandleObject
{
public:
    // The window's own answer to a message.
    virtual LRESULT OnMessage(UINT nMessage, WPARAM wParam, LPARAM lParam) = 0;
    virtual std::string Caption() const = 0;
    virtual DesktopBrowser* Native() const = 0;

    WNDPROC m_pfnProcedure = &OwnProcedure;   // another while the window is subclassed
    std::map<std::string, HANDLE> m_oProperties;

private:
    static LRESULT OwnProcedure(HWND hWindow, UINT nMessage, WPARAM wParam, LPARAM lParam);
};

HWND OpenWindow(std::shared_ptr<Window> pWindow);

// Tells the window of its end, and forgets it.
void CloseWindow(HWND hWindow);

// Without telling it; nothing happens to what is no window.
void ForgetWindow(HWND hWindow) noexcept;
