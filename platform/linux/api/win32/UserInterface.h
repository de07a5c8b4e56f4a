#pragma once

#include "ZevrinUtils/Types.h"

inline constexpr UINT WM_NCDESTROY = 0x82;
inline constexpr int GWLP_WNDPROC = -4;
inline constexpr UINT MB_OK = 0;
inline constexpr UINT MB_ICONHAND = 0x10;
inline constexpr int IDOK = 1;

namespace win32
{
LRESULT SendMessageA(HWND hWindow, UINT nMessage, WPARAM wParam, LPARAM lParam);
int GetWindowTextLengthA(HWND hWindow);
int GetWindowTextA(HWND hWindow, LPSTR pszText, int nSize);

LONG_PTR SetWindowLongPtrA(HWND hWindow, int nIndex, LONG_PTR nValue);
LRESULT CallWindowProcA(WNDPROC pProcedure, HWND hWindow, UINT nMessage, WPARAM wParam, LPARAM lParam);
LRESULT DefWindowProcA(HWND hWindow, UINT nMessage, WPARAM wParam, LPARAM lParam);

BOOL SetPropA(HWND hWindow, LPCSTR pszName, HANDLE hValue);
HANDLE GetPropA(HWND hWindow, LPCSTR pszName);
HANDLE RemovePropA(HWND hWindow, LPCSTR pszName);

int MessageBoxA(HWND hOwner, LPCSTR pszText, LPCSTR pszCaption, UINT nStyle);
}
