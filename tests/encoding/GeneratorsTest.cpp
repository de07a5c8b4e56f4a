// Passwords draw class after class without repeating, and identifiers are new and canonical.
#include "ZevrinUtils/Generators.h"

#include "platform/Identifiers.h"
#include "platform/Random.h"
#include "platform/System.h"
#include "support/FaultSweep.h"

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
    const Substitution<SystemCalls> m_oClock{&SystemCalls::time, [](time_t*) -> time_t { return s_nClock; }};
    const Substitution<RandomCalls> m_oSource{
        &RandomCalls::srand, [](unsigned n) { ++s_nSeeded, PlatformService<RandomCalls>::s_oNative.srand(n); }};
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

    const Substitution oSource(&RandomCalls::rand, [] { return s_nDraw += s_nStep; });
    s_nDraw = 32767;
    EXPECT_EQ(Password(1), "[{:");
    s_nDraw = 32766;
    EXPECT_EQ(Password(2), "Zz9");
    // Pass after pass. What is there already counts as drawn, and not for the length.
    s_nDraw = -(s_nStep = 1200);
    EXPECT_EQ(Password(9, "C"), "CAa0d1Fg2Ij4");
}

TEST(Guid, IsNewAndEmptyForTwoFailuresAlone)
{
    EXPECT_NE(CSGuid::CreateGUID(), CSGuid::CreateGUID());
    const auto watch = [](IdentifierCalls& o) {
        FaultSweep::Watch<&IdentifierCalls::UuidCreate>(o, "UuidCreate", RPC_S_UUID_NO_ADDRESS);
        FaultSweep::Watch<&IdentifierCalls::UuidToStringA>(o, "UuidToStringA", RPC_S_OUT_OF_MEMORY);
    };
    const auto make = [] { EXPECT_EQ(CSGuid::CreateGUID().size(), FaultSweep::s_nFirst ? 0u : 36u); };
    EXPECT_EQ(FaultSweep::Over<IdentifierCalls>(watch, make), 2);
    const Substitution oLocal(&IdentifierCalls::UuidCreate,
                              [](UUID* pId) WINAPI -> RPC_STATUS { return pId->Data1 = 7, RPC_S_UUID_LOCAL_ONLY; });
    EXPECT_EQ(CSGuid::CreateGUID(), "00000007-0000-0000-0000-000000000000");
}
