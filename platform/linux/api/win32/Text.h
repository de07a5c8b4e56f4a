#pragma once

#include "ZevrinUtils/Types.h"

using LCID = DWORD;

inline constexpr LCID LOCALE_USER_DEFAULT = 0x400;
inline constexpr DWORD NORM_IGNORECASE = 1;
inline constexpr UINT CP_ACP = 0;
inline constexpr DWORD MB_PRECOMPOSED = 1;
inline constexpr int CSTR_LESS_THAN = 1;
inline constexpr int CSTR_EQUAL = 2;
inline constexpr int CSTR_GREATER_THAN = 3;

namespace win32
{
int MultiByteToWideChar(UINT nCodePage, DWORD nFlags, LPCSTR pszText, int nText, LPWSTR pszWide, int nWide);
int CompareStringA(LCID nLocale, DWORD nFlags, LPCSTR pszLeft, int nLeft, LPCSTR pszRight, int nRight);
}
