// Windows behind handles, with what the calls on windows know of each: a procedure, which hosts may replace, properties
// and a caption. And the message box, which is the desktop module's.
#include "Window.h"

#include "Desktop.h"
#include "platform/linux/base/Buffers.h"
#include "win32/Desktop.h"

#include <utility>

namespace
{
// A call on a window; the failure value where there is none.
template <class Result, class Body>
Result OnWindow(HWND hWindow, Result failure, Body body)
{
    return ResultOr(failure, [&] { return body(*ObjectOf<Window>(hWindow)); });
}

// The value of a property, taken away on demand.
HANDLE Property(HWND hWindow, LPCSTR pszName, bool bTakeAway)
{
    return OnWindow(hWindow, HANDLE{}, [&](Window& oWindow) {
        const auto it = oWindow.m_oProperties.find(pszName);
        Require(it != oWindow.m_oProperties.end(), ERROR_FILE_NOT_FOUND);
        const HANDLE hValue = it->second;
        if (bTakeAway)
            oWindow.m_oProperties.erase(it);
        return hValue;
    });
}
}

LRESULT Window::OwnProcedure(HWND hWindow, UINT nMessage, WPARAM wParam, LPARAM lParam)
{
    const auto pWindow = FindObjectOf<Window>(hWindow);
    return pWindow ? pWindow->OnMessage(nMessage, wParam, lParam) : 0;
}

HWND OpenWindow(std::shared_ptr<Window> pWindow)
{
    return static_cast<HWND>(OpenHandle(std::move(pWindow)));
}

void ForgetWindow(HWND hWindow) noexcept
{
    if (const auto pWindow = FindObjectOf<Window>(hWindow))
        ForgetHandle(hWindow, *pWindow);
}

void CloseWindow(HWND hWindow)
{
    win32::SendMessageA(hWindow, WM_NCDESTROY, 0, 0);
    ForgetWindow(hWindow);
}

// Not within OnWindow: what a hook of the host throws is the host's.
LRESULT win32::SendMessageA(HWND hWindow, UINT nMessage, WPARAM wParam, LPARAM lParam)
{
    WNDPROC const pfnProcedure =
        OnWindow(hWindow, WNDPROC{}, [](const Window& oWindow) { return oWindow.m_pfnProcedure; });
    return pfnProcedure ? pfnProcedure(hWindow, nMessage, wParam, lParam) : 0;
}

int win32::GetWindowTextLengthA(HWND hWindow)
{
    return OnWindow(hWindow, 0, [](const Window& oWindow) { return static_cast<int>(oWindow.Caption().size()); });
}

int win32::GetWindowTextA(HWND hWindow, LPSTR pszText, int nSize)
{
    return ResultOr(0, [&] {
        Require(pszText && nSize > 0, ERROR_INVALID_PARAMETER);
        *pszText = 0;
        return static_cast<int>(
            CopyCut(ObjectOf<Window>(hWindow)->Caption(), pszText, static_cast<std::size_t>(nSize)));
    });
}

LONG_PTR win32::SetWindowLongPtrA(HWND hWindow, int nIndex, LONG_PTR nValue)
{
    return OnWindow(hWindow, LONG_PTR{0}, [&](Window& oWindow) {
        RequireSupported(nIndex == GWLP_WNDPROC);
        return reinterpret_cast<LONG_PTR>(std::exchange(oWindow.m_pfnProcedure, reinterpret_cast<WNDPROC>(nValue)));
    });
}

LRESULT win32::CallWindowProcA(WNDPROC pProcedure, HWND hWindow, UINT nMessage, WPARAM wParam, LPARAM lParam)
{
    return pProcedure ? pProcedure(hWindow, nMessage, wParam, lParam) : 0;
}

LRESULT win32::DefWindowProcA(HWND, UINT, WPARAM, LPARAM)
{
    return 0;
}

BOOL win32::SetPropA(HWND hWindow, LPCSTR pszName, HANDLE hValue)
{
    return OnWindow(hWindow, FALSE, [&](Window& oWindow) {
        oWindow.m_oProperties[pszName] = hValue;
        return TRUE;
    });
}

HANDLE win32::GetPropA(HWND hWindow, LPCSTR pszName)
{
    return Property(hWindow, pszName, false);
}

HANDLE win32::RemovePropA(HWND hWindow, LPCSTR pszName)
{
    return Property(hWindow, pszName, true);
}

int win32::MessageBoxA(HWND hOwner, LPCSTR pszText, LPCSTR pszCaption, UINT nStyle)
{
    const auto* const pDesktop = ResultOr<const DesktopCalls*>(nullptr, [&] {
        RequireSupported(nStyle == (MB_OK | MB_ICONHAND));
        const DesktopCalls* const pCalls = Desktop();
        RequireSupported(pCalls);
        return pCalls;
    });
    if (!pDesktop)
        return 0;
    const auto pOwner = FindObjectOf<Window>(hOwner);
    pDesktop->pfnShowError(pOwner ? pOwner->Native() : nullptr, pszText, pszCaption);
    return IDOK;
}
