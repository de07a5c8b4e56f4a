#include "ZevrinUtils/CritSection.h"

#include "platform/Threads.h"
#include "support/Substitution.h"

#include <string>
#include <thread>
#include <vector>

#include <gtest/gtest.h>

namespace
{
std::string s_strCalls;

// Notes the calls instead of making them: what is locked here is a copy that the platform need not know.
void NoteCalls(ThreadCalls& oCalls)
{
    s_strCalls.clear();
    oCalls.InitializeCriticalSection = [](LPCRITICAL_SECTION p) WINAPI { *p = {}, s_strCalls += "init "; };
    oCalls.EnterCriticalSection = [](LPCRITICAL_SECTION) WINAPI { s_strCalls += "enter "; };
    oCalls.LeaveCriticalSection = [](LPCRITICAL_SECTION) WINAPI { s_strCalls += "leave "; };
    oCalls.DeleteCriticalSection = [](LPCRITICAL_SECTION) WINAPI { s_strCalls += "delete "; };
}
}

TEST(CritSection, BothPairsActOnTheOneLock)
{
    const Substitution<ThreadCalls> oFake(NoteCalls);
    {
        CSCritSection oSection;
        oSection.enter();
        EXPECT_TRUE(oSection.Unlock());
        CSLockable& oLockable = oSection;
        EXPECT_TRUE(oLockable.Lock());
        EXPECT_TRUE(oLockable.Unlock());
        EXPECT_TRUE(oSection.Lock());
        oSection.leave();
    }
    EXPECT_EQ(s_strCalls, "init enter leave enter leave enter leave delete ");
}

TEST(CritSection, ACopyIsNoNewLock)
{
    const Substitution<ThreadCalls> oFake(NoteCalls);
    {
        CSCritSection oSource, oTarget;
        const CSCritSection oCopy(oSource);
        oTarget = oSource;
        EXPECT_EQ(s_strCalls, "init init ");
    }
    EXPECT_EQ(s_strCalls, "init init delete delete delete ");
}

TEST(CritSection, LetsOneThreadInAtATime)
{
    CSCritSection oSection;
    int nCount = 0;
    std::vector<std::thread> oThreads;
    for (int nThread = 0; nThread < 4; ++nThread)
        oThreads.emplace_back([&] {
            for (int n = 0; n < 5000; ++n)
            {
                oSection.enter();
                oSection.Lock();
                ++nCount;
                oSection.leave();
                oSection.Unlock();
            }
        });
    for (auto& oThread : oThreads)
        oThread.join();
    EXPECT_EQ(nCount, 20000);
}
