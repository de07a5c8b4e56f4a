// Passwords draw class after class without repeating, and identifiers are new and canonical.
#include "ZevrinUtils/Generators.h"

#include "platform/Identifiers.h"
#include "platform/Random.h"
#include "platform/System.h"
#include "support/Substitution.h"

#include <algorithm>
#include <set>

#include <gtest/gtest.h>

namespace
{
time_t s_nClock = 1000;
int s_nSeeded = 0, s_nDraw = 0, s_nStep = 0;

// A clock that stands still until it is told.
class PasswordUtils : public testing::Test
{
    const Substitution<SystemCalls> m_oClock{
        [](SystemCalls& o) { o.time = [](time_t*) -> time_t { return s_nClock; }; }};
    const Substitution<RandomCalls> m_oSource{[](RandomCalls& o) {
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
}

TEST_F(PasswordUtils, DrawsNewCharactersClassAfterClass)
{
    for (int nLength = 1; nLength <= 62; ++nLength)
    {
        const std::string strText = Password(nLength);
        EXPECT_EQ(std::set<char>(strText.begin(), strText.end()).size(), strText.size());
        EXPECT_GE(strText.size(), std::max(3U, unsigned(nLength)));
        EXPECT_LE(strText.size(), nLength <= 3 ? 3U : unsigned(nLength) + 2);
    }

    const Substitution<RandomCalls> oSource([](RandomCalls& o) { o.rand = [] { return s_nDraw += s_nStep; }; });
    s_nDraw = 32767;
    EXPECT_EQ(Password(1), "[{:");
    s_nDraw = 32766;
    EXPECT_EQ(Password(2), "Zz9");
    // Pass after pass. What is there already counts as drawn, and not for the length.
    s_nDraw = -(s_nStep = 1200);
    EXPECT_EQ(Password(9, "C"), "CAa0d1Fg2Ij4");
}

namespace
{
RPC_STATUS s_nTold;

// Of a const identifier or not, as the system's header has it.
template <class Id>
RPC_STATUS WINAPI Tell(Id* pId, RPC_CSTR* ppszText)
{
    return s_nTold ? s_nTold : PlatformService<IdentifierCalls>::s_oNative.UuidToStringA(pId, ppszText);
}
}

TEST(Guid, IsNewAndInCanonicalTextAndEmptyForTwoFailures)
{
    EXPECT_NE(CSGuid::CreateGUID(), CSGuid::CreateGUID());
    static RPC_STATUS s_nCreated;
    const Substitution<IdentifierCalls> oFake([](IdentifierCalls& o) {
        o.UuidCreate = [](UUID* pId) WINAPI -> RPC_STATUS {
            *pId = {0x01020304, 0x0506, 0x0708, {9, 10, 11, 12, 13, 14, 15, 16}};
            return s_nCreated;
        };
        o.UuidToStringA = &Tell;
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
