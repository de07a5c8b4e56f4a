// Windows on the screen, and the shell.
#pragma once

#include "ZevrinUtils/ShellTypes.h"

// Windows and their messages.

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

// The shell.

inline constexpr DWORD SHGDN_FORPARSING = 0x8000;   // the whole path, not the name alone

constexpr bool SUCCEEDED(HRESULT nResult)
{
    return nResult >= 0;
}

namespace win32
{
ITEMIDLIST* SHBrowseForFolderA(BROWSEINFOA* pInfo);
BOOL SHGetPathFromIDListA(const ITEMIDLIST* pItem, LPSTR pszPath);
HRESULT SHGetDesktopFolder(IShellFolder** ppFolder);
HRESULT SHGetMalloc(IMalloc** ppMalloc);
HRESULT StrRetToBufA(STRRET* pName, const ITEMIDLIST* pItem, LPSTR pszBuffer, UINT nSize);
}
