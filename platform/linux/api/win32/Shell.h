#pragma once

#include "ZevrinUtils/ShellTypes.h"
#include "win32/Basics.h"

inline constexpr HRESULT E_INVALIDARG = static_cast<HRESULT>(0x80070057);
inline constexpr HRESULT E_OUTOFMEMORY = static_cast<HRESULT>(0x8007000E);

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
