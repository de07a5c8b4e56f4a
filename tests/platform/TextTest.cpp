// The contract of comparing texts and of their UTF-16, the same on every target.
#include "platform/Text.h"
#include "support/ErrorOf.h"

#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace
{
int Compare(const char* pszLeft, const char* pszRight)
{
    return Text().CompareStringA(LOCALE_USER_DEFAULT, NORM_IGNORECASE, pszLeft, -1, pszRight, -1);
}
}

TEST(Texts, AreComparedWhateverTheirCase)
{
    for (const auto& [pszLess, pszGreater] : {std::pair{"", "a"}, {"a", "B"}, {"A", "b"}, {"read.me", "READ.ME2"}})
    {
        EXPECT_EQ(Compare(pszLess, pszGreater), CSTR_LESS_THAN) << pszLess;
        EXPECT_EQ(Compare(pszGreater, pszLess), CSTR_GREATER_THAN) << pszLess;
    }
    for (const auto& [pszLeft, pszRight] : {std::pair{"", ""}, {"Read.Me", "rEAD.mE"}, {"1 [\\", "1 [\\"}})
        EXPECT_EQ(Compare(pszLeft, pszRight), CSTR_EQUAL) << pszLeft;
    EXPECT_EQ(ErrorOf(Compare(nullptr, "a")), DWORD{ERROR_INVALID_PARAMETER});
    EXPECT_EQ(ErrorOf(Compare("a", nullptr)), DWORD{ERROR_INVALID_PARAMETER});
}

TEST(Texts, BecomeUtf16AsFarAsTheyFit)
{
    const std::vector<unsigned> anUnits{'t', 'e', 'x', 't', 0};
    for (const int nSize : {10, 5, 4, 2})
    {
        std::vector<WCHAR> aWide(11, WCHAR{'#'});
        const int nWritten = Text().MultiByteToWideChar(CP_ACP, MB_PRECOMPOSED, "text", -1, aWide.data(), nSize);
        EXPECT_EQ(nWritten, nSize >= 5 ? 5 : 0);
        EXPECT_TRUE(nWritten || Errors().GetLastError() == ERROR_INSUFFICIENT_BUFFER);
        const auto nFit = std::min(nSize, 5);
        EXPECT_TRUE(std::equal(aWide.begin(), aWide.begin() + nFit, anUnits.begin())) << nSize;
        EXPECT_EQ(aWide[static_cast<unsigned>(nFit)], WCHAR{'#'}) << nSize;
    }
    WCHAR aWide[4];
    EXPECT_EQ(Text().MultiByteToWideChar(CP_ACP, MB_PRECOMPOSED, "", -1, aWide, 4), 1);
    if (sizeof(wchar_t) == 2)
        GTEST_SKIP() << "the system's text is in a code page of the machine's here";
    EXPECT_EQ(Text().MultiByteToWideChar(CP_ACP, MB_PRECOMPOSED, "\xC3\x84\xFF", -1, aWide, 4), 3);
    EXPECT_TRUE(aWide[0] == 0xC4 && aWide[1] == 0xDCFF);
}
