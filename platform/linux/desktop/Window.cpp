#include "Window.h"

#include "win32/UserInterface.h"

LRESULT Window::OwnProcedure(HWND hWindow, UINT nMessage, WPARAM wParam, LPARAM lParam)
{
    const auto pWindow = FindWindowOf(hWindow);
    return pWindow ? pWindow->OnMessage(nMessage, wParam, lParam) : 0;
}

HWND OpenWindow(std::shared_ptr<Window> pWindow)
{
    return static_cast<HWND>(OpenHandle(std::move(pWindow)));
}

std::shared_ptr<Window> FindWindowOf(HWND hWindow)
{
    return FindObjectOf<Window>(hWindow);
}

void CloseWindow(HWND hWindow)
{
    win32::SendMessageA(hWindow, WM_NCDESTROY, 0, 0);
    ForgetHandle(hWindow);
}
