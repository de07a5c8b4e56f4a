#include "support/Substitution.h"

#include "platform/Errors.h"

#include <type_traits>

#include <gtest/gtest.h>

static_assert(std::is_trivially_destructible_v<ErrorCalls>);   // so it serves load-time objects

namespace
{
void Answer(ErrorCalls& oCalls, decltype(ErrorCalls::GetLastError) pGetLastError)
{
    oCalls.GetLastError = pGetLastError;
}
}

TEST(Substitution, LastsForItsScopeAndLeavesTheOtherCallsAlone)
{
    Errors().SetLastError(1);
    {
        const Substitution<ErrorCalls> oFake([](ErrorCalls& o) { Answer(o, []() WINAPI -> DWORD { return 1234; }); });
        EXPECT_EQ(Errors().GetLastError(), 1234u);
        Errors().SetLastError(2);
    }
    EXPECT_EQ(Errors().GetLastError(), 2u);
    EXPECT_EQ(&Errors(), &PlatformService<ErrorCalls>::s_oNative);
}

TEST(Substitution, NestsOnTopOfTheOneAroundIt)
{
    const Substitution<ErrorCalls> oOuter([](ErrorCalls& o) { Answer(o, []() WINAPI -> DWORD { return 1; }); });
    {
        const Substitution<ErrorCalls> oInner([](ErrorCalls& o) {
            EXPECT_EQ(o.GetLastError(), 1u);
            Answer(o, []() WINAPI -> DWORD { return 2; });
        });
        EXPECT_EQ(Errors().GetLastError(), 2u);
    }
    EXPECT_EQ(Errors().GetLastError(), 1u);
}

TEST(Substitution, EndsTheProgramWhenScopesCross)
{
    const auto cross = [] {
        const auto change = [](ErrorCalls&) {};
        auto* const pOuter = new Substitution<ErrorCalls>(change);
        const Substitution<ErrorCalls> oInner(change);
        delete pOuter;
    };
    EXPECT_DEATH(cross(), "");
}
