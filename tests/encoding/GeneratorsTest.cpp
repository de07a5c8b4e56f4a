#include "ZevrinUtils/Generators.h"

#include "platform/Identifiers.h"
#include "platform/Random.h"
#include "support/Substitution.h"

#include <algorithm>
#include <cctype>
#include <cstring>
#include <set>

#include <gtest/gtest.h>

namespace
{
time_t s_nClock = 1000;
int s_nSeeded = 0;
int s_nDraw = 0;

// A clock that stands still until it is told.
class PasswordUtils : public testing::Test
{
    const Substitution<RandomCalls> m_oSource{[](RandomCalls& o) {
        o.time = [](time_t*) -> time_t { return s_nClock; };
        o.srand = [](unsigned nSeed) {
            ++s_nSeeded;
            PlatformService<RandomCalls>::s_oNative.srand(nSeed);
        };
    }};
};

std::string Password(int nLength, std::string strText = "")
{
    CSPasswordUtils().GeneratePassword(strText, nLength);
    return strText;
}
}

TEST_F(PasswordUtils, SeedsAtEachCallButForALengthOfZero)
{
    std::string strText = "kept";
    EXPECT_FALSE(CSPasswordUtils().GeneratePassword(strText, 0));
    EXPECT_EQ(s_nSeeded, 0);
    EXPECT_TRUE(CSPasswordUtils().GeneratePassword(strText, -1));
    EXPECT_EQ(s_nSeeded, 1);
    EXPECT_EQ(strText, "kept");
    const std::string strPassword = Password(20);
    EXPECT_EQ(Password(20), strPassword);   // within one second
    ++s_nClock;
    EXPECT_NE(Password(20), strPassword);
    int nLargest = 0;
    for (int n = 0; n < 10000; ++n)
        nLargest = std::max(nLargest, Random().rand());
    EXPECT_GT(nLargest, 32000);
    EXPECT_LE(nLargest, 32767);
}

TEST_F(PasswordUtils, DrawsNewCharactersClassAfterClass)
{
    const auto classOf = [](unsigned char ch) { return std::isupper(ch) ? 0 : std::islower(ch) ? 1 : 2; };
    for (int nLength = 1; nLength <= 62; ++nLength)
    {
        const std::string strText = Password(nLength);
        EXPECT_EQ(std::set<char>(strText.begin(), strText.end()).size(), strText.size());
        EXPECT_GE(strText.size(), std::max(3U, unsigned(nLength)));
        EXPECT_LE(strText.size(), nLength <= 3 ? 3U : unsigned(nLength) + 2);
        for (int n = 0; n < 3; ++n)
            EXPECT_EQ(classOf(static_cast<unsigned char>(strText[unsigned(n)])), n);
    }
    // What is there already counts as drawn and not for the length.
    EXPECT_EQ(Password(4, "ABCDEFGHIJKLMNOPQRSTUVWXYZ").find_first_of("ABCDEFGHIJKLMNOPQRSTUVWXYZ", 26),
              std::string::npos);
}

TEST_F(PasswordUtils, LargestDrawGivesTheCharacterBehindTheRange)
{
    const Substitution<RandomCalls> oSource([](RandomCalls& o) { o.rand = [] { return s_nDraw; }; });
    s_nDraw = 32767;
    EXPECT_EQ(Password(1), "[{:");
    s_nDraw = 32766;
    EXPECT_EQ(Password(2), "Zz9");
    s_nDraw = 0;
    EXPECT_EQ(Password(3), "Aa0");
}

TEST(Guid, IsNewAndOfTheCanonicalForm)
{
    std::string strGuid = CSGuid::CreateGUID();
    EXPECT_NE(CSGuid::CreateGUID(), strGuid);
    std::ranges::replace_if(
        strGuid, [](char ch) { return std::strchr("0123456789abcdef", ch); }, 'x');
    EXPECT_EQ(strGuid, "xxxxxxxx-xxxx-xxxx-xxxx-xxxxxxxxxxxx");
}

TEST(Guid, IsEmptyForTwoFailuresAndStandsForAllOtherStates)
{
    static RPC_STATUS s_nCreated, s_nTold;
    const Substitution<IdentifierCalls> oFake([](IdentifierCalls& o) {
        o.UuidCreate = [](UUID* pId) WINAPI -> RPC_STATUS {
            *pId = {0x01020304, 0x0506, 0x0708, {9, 10, 11, 12, 13, 14, 15, 16}};
            return s_nCreated;
        };
        o.UuidToStringA = [](UUID* pId, RPC_CSTR* ppszText) WINAPI -> RPC_STATUS {
            return s_nTold ? s_nTold : PlatformService<IdentifierCalls>::s_oNative.UuidToStringA(pId, ppszText);
        };
    });
    const std::string strText = "01020304-0506-0708-090a-0b0c0d0e0f10";
    for (const auto& [nCreated, nTold, strExpected] :
         {std::tuple(0, 0, strText), {1824, 0, strText}, {1739, 0, ""}, {0, 14, ""}})
    {
        s_nCreated = nCreated;
        s_nTold = nTold;
        EXPECT_EQ(CSGuid::CreateGUID(), strExpected);
    }
}
