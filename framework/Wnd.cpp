// A window finds its object by a property of its own and not by a table of ours: it goes with the window, and nothing
// has to be locked.
#include "ZevrinUtils/framework/Wnd.h"

#include "platform/UserInterface.h"

#include <utility>

namespace
{
constexpr char s_szObject[] = "ZevrinUtils.CWnd";   // the property under which a window knows its object
}

CWnd::CWnd(HWND hWnd) noexcept : m_hWnd(hWnd) {}

CWnd::~CWnd()
{
    UnsubclassWindow();
}

BOOL CWnd::SubclassWindow(HWND hWnd)
{
    m_hWnd = hWnd;
    // The property comes before the procedure and goes after it, so that every message finds its object.
    if (!UserInterface().SetPropA(hWnd, s_szObject, this))
        return FALSE;
    m_pfnBefore = reinterpret_cast<WNDPROC>(
        UserInterface().SetWindowLongPtrA(hWnd, GWLP_WNDPROC, reinterpret_cast<LONG_PTR>(&Dispatch)));
    if (!m_pfnBefore)
        UserInterface().RemovePropA(hWnd, s_szObject);
    return m_pfnBefore != nullptr;
}

HWND CWnd::UnsubclassWindow()
{
    if (m_pfnBefore)
    {
        UserInterface().SetWindowLongPtrA(m_hWnd, GWLP_WNDPROC,
                                          reinterpret_cast<LONG_PTR>(std::exchange(m_pfnBefore, nullptr)));
        UserInterface().RemovePropA(m_hWnd, s_szObject);
    }
    return std::exchange(m_hWnd, nullptr);
}

void CWnd::ReadText(CString& strText) const
{
    const int nLength = UserInterface().GetWindowTextLengthA(m_hWnd);
    strText.Empty();
    UserInterface().GetWindowTextA(m_hWnd, strText.GetBuffer(nLength), nLength + 1);
    strText.ReleaseBuffer();
}

LRESULT CWnd::WindowProc(UINT nMessage, WPARAM wParam, LPARAM lParam)
{
    return UserInterface().CallWindowProcA(m_pfnBefore, m_hWnd, nMessage, wParam, lParam);
}

LRESULT CALLBACK CWnd::Dispatch(HWND hWnd, UINT nMessage, WPARAM wParam, LPARAM lParam)
{
    auto* const pWnd = static_cast<CWnd*>(UserInterface().GetPropA(hWnd, s_szObject));
    if (!pWnd)
        return UserInterface().DefWindowProcA(hWnd, nMessage, wParam, lParam);
    const LRESULT nResult = pWnd->WindowProc(nMessage, wParam, lParam);
    // After the last one, at which an object may have deleted itself.
    if (nMessage == WM_NCDESTROY && UserInterface().GetPropA(hWnd, s_szObject) == pWnd)
        pWnd->UnsubclassWindow();
    return nResult;
}
