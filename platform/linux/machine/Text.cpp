// Comparing and widening of text, for the arguments that callers pass: whole texts, in the user's language.
#include "win32/Kernel.h"

#include "platform/linux/base/Failure.h"
#include "platform/linux/base/Unicode.h"

#include <algorithm>

// Texts are UTF-8 in any language, and sorted by their characters' numbers.
int win32::CompareStringA(LCID nLocale, DWORD nFlags, LPCSTR pszLeft, int nLeft, LPCSTR pszRight, int nRight)
{
    return ResultOr(0, [&] {
        RequireSupported(nLocale == LOCALE_USER_DEFAULT && nFlags == NORM_IGNORECASE && nLeft == -1 && nRight == -1);
        Require(pszLeft && pszRight, ERROR_INVALID_PARAMETER);
        const int nOrder = FoldCase(pszLeft).compare(FoldCase(pszRight));
        return nOrder == 0 ? CSTR_EQUAL : nOrder < 0 ? CSTR_LESS_THAN : CSTR_GREATER_THAN;
    });
}

int win32::MultiByteToWideChar(UINT nCodePage, DWORD nFlags, LPCSTR pszText, int nText, LPWSTR pszWide, int nWide)
{
    return ResultOr(0, [&] {
        RequireSupported(nCodePage == CP_ACP && nFlags == MB_PRECOMPOSED && nText == -1 && pszText && pszWide &&
                         nWide >= 0);
        const auto strWide = Widened(pszText);   // and a zero
        const auto nUnits = std::min(strWide.size() + 1, static_cast<std::size_t>(nWide));
        std::copy_n(strWide.c_str(), nUnits, pszWide);
        Require(nUnits > strWide.size(), ERROR_INSUFFICIENT_BUFFER);
        return static_cast<int>(nUnits);
    });
}
