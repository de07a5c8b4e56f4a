// Windows: what a dialog of the desktop is to the calls that Windows has for it.
#pragma once

#include "platform/linux/base/KernelObject.h"

#include <map>
#include <string>

struct DesktopBrowser;

class Window : public KernelObject
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

// Null if the handle stands for no window.
std::shared_ptr<Window> FindWindowOf(HWND hWindow);

// Tells the window of its end, and forgets it.
void CloseWindow(HWND hWindow);
