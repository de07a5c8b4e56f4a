// Both pairs of operations act on the one lock of the object.
#include "ZevrinUtils/CritSection.h"

#include "platform/Threads.h"
#include "support/Substitution.h"

#include <string>
#include <thread>

#include <gtest/gtest.h>

TEST(CritSection, BothPairsActOnTheOneLock)
{
    CSCritSection oSection;
    CSLockable& oLockable = oSection;
    int nCount = 0;
    const auto count = [&nCount](auto enter, auto leave) {
        for (int n = 0; n < 20000; ++n)
        {
            enter();
            const int nBefore = nCount;
            if (n % 100 == 0)
                std::this_thread::yield();   // others would count in between
            nCount = nBefore + 1;
            leave();
        }
    };
    std::thread oOther(
        count, [&] { oSection.enter(); }, [&] { oSection.leave(); });
    count([&] { EXPECT_TRUE(oLockable.Lock()); }, [&] { EXPECT_TRUE(oLockable.Unlock()); });
    oOther.join();
    EXPECT_EQ(nCount, 2 * 20000);
}

// Over a platform that numbers its locks: real ones do not outlive the end of a copy everywhere.
TEST(CritSection, CopiesAreTheLockWordForWord)
{
    static std::string s_strEntered;
    const Substitution<ThreadCalls> oNumbered([](ThreadCalls& o) {
        o.InitializeCriticalSection = [](LPCRITICAL_SECTION p) WINAPI {
            static char s_chLast = '0';
            *reinterpret_cast<char*>(p) = ++s_chLast;
        };
        o.EnterCriticalSection = [](LPCRITICAL_SECTION p) WINAPI { s_strEntered += *reinterpret_cast<const char*>(p); };
        o.DeleteCriticalSection = [](LPCRITICAL_SECTION) WINAPI {};
    });
    CSCritSection oSource, oTarget, oCopy(oSource);
    oTarget.enter();
    oTarget = oSource;
    for (CSCritSection* p : {&oTarget, &oCopy})
        p->enter();
    EXPECT_EQ(s_strEntered, "211");
}
