#include "win32/UserInterface.h"

#include "Desktop.h"
#include "Window.h"
#include "platform/linux/base/Failure.h"

#include <utility>

namespace
{
// What a call does to a window; the failure value where there is none.
template <class Result, class Body>
Result OnWindow(HWND hWindow, Result failure, Body body)
{
    return OrOutOfMemory(failure, [&] {
        const auto pWindow = FindWindowOf(hWindow);
        return pWindow ? body(*pWindow) : Fail(ERROR_INVALID_HANDLE, failure);
    });
}

// The value of a property, taken away on demand.
HANDLE Property(HWND hWindow, LPCSTR pszName, bool bTakeAway)
{
    return OnWindow(hWindow, HANDLE{}, [&](Window& oWindow) -> HANDLE {
        const auto it = oWindow.m_oProperties.find(pszName);
        if (it == oWindow.m_oProperties.end())
            return Fail(ERROR_FILE_NOT_FOUND, HANDLE{});
        const HANDLE hValue = it->second;
        if (bTakeAway)
            oWindow.m_oProperties.erase(it);
        return hValue;
    });
}
}

// Not within OnWindow: what a hook of the host throws is the host's.
LRESULT win32::SendMessageA(HWND hWindow, UINT nMessage, WPARAM wParam, LPARAM lParam)
{
    const auto pWindow = FindWindowOf(hWindow);
    return pWindow ? pWindow->m_pfnProcedure(hWindow, nMessage, wParam, lParam)
                   : Fail(ERROR_INVALID_HANDLE, LRESULT{0});
}

int win32::GetWindowTextLengthA(HWND hWindow)
{
    return OnWindow(hWindow, 0, [](const Window& oWindow) { return static_cast<int>(oWindow.Caption().size()); });
}

int win32::GetWindowTextA(HWND hWindow, LPSTR pszText, int nSize)
{
    if (!pszText || nSize < 1)
        return Fail(ERROR_INVALID_PARAMETER, 0);
    *pszText = 0;
    return OnWindow(hWindow, 0, [&](const Window& oWindow) {
        const std::size_t nLength = oWindow.Caption().copy(pszText, static_cast<std::size_t>(nSize) - 1);
        pszText[nLength] = 0;
        return static_cast<int>(nLength);
    });
}

LONG_PTR win32::SetWindowLongPtrA(HWND hWindow, int nIndex, LONG_PTR nValue)
{
    if (nIndex != GWLP_WNDPROC)
        return Fail(ERROR_NOT_SUPPORTED, LONG_PTR{0});
    return OnWindow(hWindow, LONG_PTR{0}, [&](Window& oWindow) {
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
    if (nStyle != (MB_OK | MB_ICONHAND))
        return Fail(ERROR_NOT_SUPPORTED, 0);
    const DesktopCalls* const pDesktop = Desktop();
    if (!pDesktop)
        return Fail(ERROR_NOT_SUPPORTED, 0);
    const auto pOwner = FindWindowOf(hOwner);
    pDesktop->pfnShowError(pOwner ? pOwner->Native() : nullptr, pszText, pszCaption);
    return IDOK;
}
