#include "Wide.h"

#include "Utf8.h"

namespace
{
bool IsLow(char32_t ch) noexcept
{
    return ch >= nFirstLow && ch < nFirstLow + 0x400;
}
}

std::u16string Widened(std::string_view strText)
{
    std::u16string strWide;
    while (!strText.empty())
    {
        char32_t ch = 0;
        const std::size_t nLength = Decode(strText, ch);
        if (nLength == 0)
            ch = nFirstLow + static_cast<unsigned char>(strText[0]);
        if (ch >= nFirstInTwo)
            strWide += static_cast<char16_t>(nFirstHigh + ((ch - nFirstInTwo) >> 10));
        strWide += static_cast<char16_t>(ch >= nFirstInTwo ? nFirstLow + ((ch - nFirstInTwo) & 0x3FF) : ch);
        strText.remove_prefix(nLength ? nLength : 1);
    }
    return strWide;
}

std::string Narrowed(const WCHAR* pszWide)
{
    std::string strText;
    for (; *pszWide; ++pszWide)
    {
        const char32_t ch = *pszWide;
        if (ch >= nFirstHigh && ch < nFirstLow && IsLow(pszWide[1]))
            Encode(nFirstInTwo + ((ch - nFirstHigh) << 10) + (*++pszWide - nFirstLow), strText);
        else if (IsLow(ch) && ch <= nFirstLow + 0xFF)
            strText += static_cast<char>(ch - nFirstLow);
        else
            Encode(ch, strText);
    }
    return strText;
}
