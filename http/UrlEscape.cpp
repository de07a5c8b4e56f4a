// Percent escapes. Escaping and unescaping are no inverses of each other, and hosts rely on each as it is.
#include "ZevrinUtils/HttpServices.h"

#include "platform/Memory.h"

#include <algorithm>
#include <cstring>
#include <string_view>

namespace
{
constexpr std::string_view strHexDigits = "0123456789ABCDEF";
constexpr std::size_t nEscapeGrowth = 2;   // an escape stands for one byte and takes three

// Length 0: up to the first zero byte.
std::string_view InputText(const char* pszText, int nLength)
{
    if (!pszText || nLength < 0)
        return {};
    return {pszText, nLength == 0 ? std::strlen(pszText) : static_cast<std::size_t>(nLength)};
}

constexpr bool IsLetterOrDigit(char ch)
{
    return (ch >= 'a' && ch <= 'z') || (ch >= 'A' && ch <= 'Z') || (ch >= '0' && ch <= '9');
}

constexpr int HexValue(char ch)
{
    if (ch >= '0' && ch <= '9')
        return ch - '0';
    const char chLower = static_cast<char>(ch | 0x20);
    return chLower >= 'a' && chLower <= 'f' ? chLower - 'a' + 10 : -1;
}

constexpr bool IsWhiteSpace(char ch)
{
    return ch == ' ' || (ch >= '\t' && ch <= '\r');
}

enum eScanned
{
    eNumber,
    eNoNumber,
    eEndOfText
};

// Reads a number as sscanf does with "%02X": white space, then at most two characters, of which the first may be a
// sign. Sees no more of the text than a zero byte would let sscanf see.
eScanned ScanNumber(std::string_view strText, unsigned& nValue)
{
    while (!strText.empty() && IsWhiteSpace(strText.front()))
        strText.remove_prefix(1);
    if (strText.empty() || strText.front() == 0)
        return eEndOfText;

    strText = strText.substr(0, 2);
    const bool bNegative = strText.front() == '-';
    if (bNegative || strText.front() == '+')
        strText.remove_prefix(1);

    if (strText.empty() || HexValue(strText.front()) < 0)
        return eNoNumber;
    unsigned nRead = 0;
    for (const char ch : strText)
    {
        if (HexValue(ch) < 0)
            break;
        nRead = nRead * 16 + static_cast<unsigned>(HexValue(ch));
    }
    nValue = bNegative ? 0 - nRead : nRead;
    return eNumber;
}
}

// The buffer doubles, once, for an escape that does not fit. That is always enough: an escape needs two bytes more.
char* CHttpServices::URL_Escape(const char* pszText, int nLength)
{
    const std::string_view strText = InputText(pszText, nLength);
    std::size_t nAllocated = strText.size() + 1;
    std::size_t nNeeded = nAllocated;
    auto* pszEscaped = static_cast<char*>(Memory().malloc(nAllocated));
    if (!pszEscaped)
        return nullptr;

    std::size_t nAt = 0;
    for (const char ch : strText)
    {
        if (ch == ' ' || IsLetterOrDigit(ch))
        {
            pszEscaped[nAt++] = ch == ' ' ? '+' : ch;
            continue;
        }
        nNeeded += nEscapeGrowth;
        if (nNeeded > nAllocated)
        {
            nAllocated *= 2;
            pszEscaped = static_cast<char*>(Memory().realloc(pszEscaped, nAllocated));
            if (!pszEscaped)
                return nullptr;   // and the block is lost
        }
        const auto nByte = static_cast<unsigned char>(ch);
        pszEscaped[nAt++] = '%';
        pszEscaped[nAt++] = strHexDigits[nByte >> 4];
        pszEscaped[nAt++] = strHexDigits[nByte & 0x0f];
    }
    pszEscaped[nAt] = 0;
    return pszEscaped;
}

char* CHttpServices::URL_UnEscape(const char* pszText, int nLength, int& nOutLength)
{
    std::string_view strText = InputText(pszText, nLength);
    auto* const pszPlain = static_cast<char*>(Memory().malloc(strText.size() + 1));
    if (!pszPlain)
        return nullptr;

    std::size_t nAt = 0;
    bool bQuestionSeen = false;   // a plain one: what comes out of an escape has no effect
    unsigned nValue = 0;          // stays, for an escape that the text ends in
    while (!strText.empty())
    {
        char ch = strText.front();
        strText.remove_prefix(1);
        if (bQuestionSeen && ch == '+')
            ch = ' ';
        else if (!bQuestionSeen && ch == '?')
            bQuestionSeen = true;
        else if (ch == '%' && ScanNumber(strText, nValue) != eNoNumber)
        {
            ch = static_cast<char>(nValue & 0xff);
            strText.remove_prefix(std::min(strText.size(), nEscapeGrowth));   // whatever they were
        }
        pszPlain[nAt++] = ch;
    }
    pszPlain[nAt++] = 0;
    nOutLength = static_cast<int>(nAt);
    return pszPlain;
}
