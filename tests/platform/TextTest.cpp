// The contract of comparing texts and of their UTF-16, the same on every target.
#include "platform/Text.h"
#include "support/ErrorOf.h"

#include <string>

#include <gtest/gtest.h>

TEST(Texts, AreComparedWhateverTheirCase)
{
    const auto compare = [](const char* pszLeft, const char* pszRight) {
        return Text().CompareStringA(LOCALE_USER_DEFAULT, NORM_IGNORECASE, pszLeft, -1, pszRight, -1);
    };
    for (const auto& [pszLeft, pszRight, nOrder] : {std::tuple{"", "a", CSTR_LESS_THAN},
                                                    {"a", "B", CSTR_LESS_THAN},
                                                    {"A", "b", CSTR_LESS_THAN},
                                                    {"read.me", "READ.ME2", CSTR_LESS_THAN},
                                                    {"", "", CSTR_EQUAL},
                                                    {"Read.Me", "rEAD.mE", CSTR_EQUAL}})
    {
        EXPECT_EQ(compare(pszLeft, pszRight), nOrder) << pszLeft;
        EXPECT_EQ(compare(pszRight, pszLeft), 2 * CSTR_EQUAL - nOrder) << pszLeft;
    }
    EXPECT_EQ(ErrorOf(compare(nullptr, "a")), DWORD{ERROR_INVALID_PARAMETER});
    EXPECT_EQ(ErrorOf(compare("a", nullptr)), DWORD{ERROR_INVALID_PARAMETER});
}

namespace
{
// The units that are written to a buffer of so many, and the first behind it.
std::u16string Widened(const char* pszText, int nSize, int nResult)
{
    WCHAR aWide[] = {'#', '#', '#', '#', '#', '#', '#', '#'};
    EXPECT_EQ(Text().MultiByteToWideChar(CP_ACP, MB_PRECOMPOSED, pszText, -1, aWide, nSize), nResult);
    return {aWide, aWide + nSize + 1};
}
}

TEST(Texts, BecomeUtf16AsFarAsTheyFit)
{
    EXPECT_EQ(Widened("text", 6, 5), std::u16string(u"text\0##", 7));
    EXPECT_EQ(Widened("text", 5, 5), std::u16string(u"text\0#", 6));
    EXPECT_EQ(Widened("text", 4, 0), u"text#");
    EXPECT_EQ(Errors().GetLastError(), DWORD{ERROR_INSUFFICIENT_BUFFER});
    EXPECT_EQ(Widened("", 1, 1), std::u16string(u"\0#", 2));
}

TEST(Texts, ThatAreNoUtf8BecomeSurrogatesThatStandAlone)
{
    if (sizeof(wchar_t) == 2)
        GTEST_SKIP() << "the system's text is in a code page of the machine's here";
    EXPECT_EQ(Widened("\xC3\x84\xFF", 3, 3), std::u16string({0xC4, 0xDCFF, 0, '#'}));
}
