// By hand where the C library would go by the process's locale, which is the host's and need not be UTF-8.
#include "Unicode.h"

#include <algorithm>
#include <bit>
#include <clocale>
#include <cstddef>
#include <cwctype>

namespace
{
constexpr char32_t nFirstHigh = 0xD800;   // of two surrogates, which stand for no characters
constexpr char32_t nFirstLow = 0xDC00;
constexpr char32_t nFirstInTwo = 0x10000;   // of those that take two units of UTF-16, and four bytes here

// The character that a text of at least one byte begins with, and its length; length 0 if there is none.
std::size_t Decode(std::string_view strText, char32_t& ch)
{
    constexpr char32_t aFirstOfLength[] = {0, 0, 0x80, 0x800, nFirstInTwo};
    constexpr char32_t nLastOfAll = 0x10FFFF;
    const auto nLead = static_cast<unsigned char>(strText[0]);
    const auto nLength = nLead < 0x80 ? std::size_t{1} : static_cast<std::size_t>(std::countl_one(nLead));
    if (nLead < 0x80)
        return ch = nLead, 1;
    if (nLength < 2 || nLength > 4 || nLength > strText.size())
        return 0;
    ch = nLead & (0x7FU >> nLength);
    for (const char chNext : strText.substr(1, nLength - 1))
    {
        if ((chNext & 0xC0) != 0x80)
            return 0;
        ch = ch << 6 | (static_cast<unsigned char>(chNext) & 0x3FU);
    }
    // Longer forms than need be are refused too: they would make two names of one that looks like both.
    const bool bSurrogate = ch >= nFirstHigh && ch < nFirstLow + 0x400;
    return ch < aFirstOfLength[nLength] || ch > nLastOfAll || bSurrogate ? 0 : nLength;
}

void Encode(char32_t ch, std::string& strText)
{
    const std::size_t nMore = ch < 0x80 ? 0 : ch < 0x800 ? 1 : ch < nFirstInTwo ? 2 : 3;
    constexpr unsigned aLead[] = {0, 0xC0, 0xE0, 0xF0};
    strText += static_cast<char>(aLead[nMore] | ch >> (6 * nMore));
    for (std::size_t n = nMore; n-- > 0;)
        strText += static_cast<char>(0x80 | (ch >> (6 * n) & 0x3F));
}

bool IsLow(char32_t ch) noexcept
{
    return ch >= nFirstLow && ch < nFirstLow + 0x400;
}

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
