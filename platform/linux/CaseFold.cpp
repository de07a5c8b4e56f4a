#include "CaseFold.h"

#include <algorithm>
#include <climits>
#include <clocale>
#include <cwchar>
#include <cwctype>

namespace
{
// For the calling thread and a scope. Not the process's own locale: names must mean the same to all processes.
class UnicodeLocale
{
public:
    UnicodeLocale() : m_pBefore(uselocale(Unicode())) {}
    ~UnicodeLocale() { uselocale(m_pBefore); }
    UnicodeLocale(const UnicodeLocale&) = delete;
    UnicodeLocale& operator=(const UnicodeLocale&) = delete;

private:
    // Where the system has none, zero: what uselocale takes as no change.
    static locale_t Unicode()
    {
        static const locale_t s_pUnicode = newlocale(LC_CTYPE_MASK, "C.UTF-8", nullptr);
        return s_pUnicode;
    }

    locale_t m_pBefore;
};

bool IsAscii(char ch) noexcept
{
    return (ch & 0x80) == 0;
}

char FoldAscii(char ch) noexcept
{
    return ch >= 'a' && ch <= 'z' ? static_cast<char>(ch - 'a' + 'A') : ch;
}

// The next character and its length; of what is no character, a byte and zero.
std::size_t Decode(std::string_view strText, wchar_t& ch)
{
    std::mbstate_t oState{};
    const std::size_t nLength = std::mbrtowc(&ch, strText.data(), strText.size(), &oState);
    return nLength <= strText.size() ? nLength : 0;
}

std::string FoldUnicode(std::string_view strText)
{
    const UnicodeLocale oLocale;
    std::string strFolded;
    while (!strText.empty())
    {
        wchar_t ch = 0;
        char achBytes[MB_LEN_MAX] = {strText[0]};
        std::mbstate_t oState{};
        const std::size_t nLength = Decode(strText, ch);
        const auto chFolded = static_cast<wchar_t>(std::towupper(static_cast<std::wint_t>(ch)));
        strFolded.append(achBytes, nLength == 0 ? 1 : std::wcrtomb(achBytes, chFolded, &oState));
        strText.remove_prefix(std::max<std::size_t>(nLength, 1));
    }
    return strFolded;
}
}

std::string FoldCase(std::string_view strText)
{
    if (!std::all_of(strText.begin(), strText.end(), IsAscii))
        return FoldUnicode(strText);
    std::string strFolded(strText);
    std::transform(strFolded.begin(), strFolded.end(), strFolded.begin(), FoldAscii);
    return strFolded;
}
