#include "Utf8.h"

#include <bit>
#include <cstddef>

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
