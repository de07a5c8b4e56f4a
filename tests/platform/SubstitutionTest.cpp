#include "support/Substitution.h"

#include "platform/Errors.h"

#include <type_traits>

#include <gtest/gtest.h>

static_assert(std::is_trivially_destructible_v<ErrorCalls>);   // so it serves load-time objects

TEST(Substitution, LastsForItsScopeAndNestsOnTopOfTheOneAroundIt)
{
    {
        const Substitution<ErrorCalls> oOuter(
            [](ErrorCalls& o) { o.GetLastError = []() WINAPI -> DWORD { return 1; }; });
        {
            const Substitution<ErrorCalls> oInner([](ErrorCalls& o) {
                EXPECT_EQ(o.GetLastError(), 1u);   // what it changes is the table in force
                o.GetLastError = []() WINAPI -> DWORD { return 2; };
            });
            EXPECT_EQ(Errors().GetLastError(), 2u);
        }
        EXPECT_EQ(Errors().GetLastError(), 1u);
        Errors().SetLastError(3);   // not replaced
    }
    EXPECT_EQ(Errors().GetLastError(), 3u);
    EXPECT_EQ(&Errors(), &PlatformService<ErrorCalls>::s_oNative);
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
