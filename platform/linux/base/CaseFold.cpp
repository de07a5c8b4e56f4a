#include "CaseFold.h"

#include "Utf8.h"

#include <algorithm>
#include <clocale>
#include <cwctype>

namespace
{
char FoldAscii(char ch) noexcept
{
    return ch >= 'a' && ch <= 'z' ? static_cast<char>(ch - 'a' + 'A') : ch;
}

// Not by the process's own locale: names must mean the same to all processes. A system without this one folds ASCII
// alone.
char32_t FoldUnicode(char32_t ch)
{
    static const locale_t s_pUnicode = newlocale(LC_CTYPE_MASK, "C.UTF-8", nullptr);
    return s_pUnicode ? towupper_l(static_cast<std::wint_t>(ch), s_pUnicode) : ch;
}
}

std::string FoldCase(std::string_view strText)
{
    std::string strFolded;
    strFolded.reserve(strText.size());
    while (!strText.empty())
    {
        char32_t ch = 0;
        const bool bAscii = (strText[0] & 0x80) == 0;
        const std::size_t nLength = bAscii ? 0 : Decode(strText, ch);
        if (nLength == 0)
            strFolded += FoldAscii(strText[0]);
        else
            Encode(FoldUnicode(ch), strFolded);
        strText.remove_prefix(std::max<std::size_t>(nLength, 1));
    }
    return strFolded;
}
