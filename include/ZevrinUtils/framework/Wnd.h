/// @file
/// CWnd: a window of the system as an object.
#pragma once

#include "ZevrinUtils/Export.h"
#include "ZevrinUtils/Types.h"
#include "ZevrinUtils/framework/String.h"

/// Holds a window that others make and destroy, and takes its messages if it is asked to. Belongs to the window's
/// thread. On Linux the only windows are those of the library's own dialogs.
class ZEVRINUTILS_API CWnd
{
public:
    explicit CWnd(HWND hWnd = nullptr) noexcept;   ///< holds a window, or none
    virtual ~CWnd();                               ///< gives the window back its messages; does not destroy it
    CWnd(const CWnd&) = delete;
    CWnd& operator=(const CWnd&) = delete;

    /// Takes hold of a window and puts WindowProc before its own procedure, until UnsubclassWindow or the window's
    /// end, after which the object holds none. FALSE if the window does not let it; the object holds it all the same.
    /// Only while no window is held.
    BOOL SubclassWindow(HWND hWnd);

    /// Undoes SubclassWindow and lets the window go; gives it.
    HWND UnsubclassWindow();

    /// The window's caption.
    void GetWindowText(CString& strText) const { ReadText(strText); }

    HWND m_hWnd;   ///< null: no window

protected:
    /// A message of the subclassed window; this one leaves it to the window's own procedure.
    virtual LRESULT WindowProc(UINT nMessage, WPARAM wParam, LPARAM lParam);

private:
    // The system's headers make GetWindowText a macro for another name; this one is the same on all targets.
    void ReadText(CString& strText) const;

    static LRESULT CALLBACK Dispatch(HWND hWnd, UINT nMessage, WPARAM wParam, LPARAM lParam);

    WNDPROC m_pfnBefore = nullptr;   // the window's own procedure, while it is subclassed
};
