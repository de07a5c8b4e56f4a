// Both pairs of operations, and copies, act on the one lock of an object.
#include "ZevrinUtils/CritSection.h"

#include "platform/Threads.h"
#include "support/Substitution.h"

#include <string>

#include <gtest/gtest.h>

// Over a platform that numbers its locks: real ones do not outlive the end of a copy everywhere.
TEST(CritSection, ActsOnTheOneLockThatCopiesShareWordForWord)
{
    static std::string s_strHeld;
    const Substitution<ThreadCalls> oNumbered([](ThreadCalls& o) {
        o.InitializeCriticalSection = [](LPCRITICAL_SECTION p) WINAPI {
            static char s_chLast = '0';
            *reinterpret_cast<char*>(p) = ++s_chLast;
        };
        o.EnterCriticalSection = [](LPCRITICAL_SECTION p) WINAPI { s_strHeld += *reinterpret_cast<const char*>(p); };
        o.LeaveCriticalSection = [](LPCRITICAL_SECTION p)
                                     WINAPI { s_strHeld.erase(s_strHeld.find(*reinterpret_cast<const char*>(p)), 1); };
        o.DeleteCriticalSection = [](LPCRITICAL_SECTION) WINAPI {};
    });
    CSCritSection oSource, oTarget, oCopy(oSource);
    CSLockable& oLockable = oTarget;
    oTarget.enter();
    EXPECT_TRUE(oLockable.Lock());
    EXPECT_EQ(s_strHeld, "22");
    EXPECT_TRUE(oLockable.Unlock());
    oTarget.leave();
    EXPECT_EQ(s_strHeld, "");
    oTarget = oSource;
    oTarget.enter();
    oCopy.enter();
    EXPECT_EQ(s_strHeld, "11");
}
