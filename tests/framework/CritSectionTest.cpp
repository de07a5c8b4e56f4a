#include "ZevrinUtils/CritSection.h"

#include "platform/Threads.h"
#include "support/Substitution.h"

#include <string>

#include <gtest/gtest.h>

namespace
{
std::string s_strCalls;

void Note(const char* pszCall, LPCRITICAL_SECTION pSection)
{
    s_strCalls += pszCall + std::to_string(*reinterpret_cast<const unsigned char*>(pSection)) + ' ';
}

// Notes the calls instead of making them, each with the number that the section got when it was made.
void NoteCalls(ThreadCalls& oCalls)
{
    s_strCalls.clear();
    oCalls.InitializeCriticalSection = [](LPCRITICAL_SECTION p) WINAPI {
        *reinterpret_cast<unsigned char*>(p) = static_cast<unsigned char>(1 + s_strCalls.size() / 6);
        Note("init-", p);
    };
    oCalls.EnterCriticalSection = [](LPCRITICAL_SECTION p) WINAPI { Note("enter-", p); };
    oCalls.LeaveCriticalSection = [](LPCRITICAL_SECTION p) WINAPI { Note("leave-", p); };
    oCalls.DeleteCriticalSection = [](LPCRITICAL_SECTION p) WINAPI { Note("delete-", p); };
}
}

TEST(CritSection, BothPairsActOnTheOneLockThatCopiesShareWordForWord)
{
    const Substitution<ThreadCalls> oFake(NoteCalls);
    {
        CSCritSection oSource, oTarget;
        CSLockable& oLockable = oSource;
        oSource.enter();
        EXPECT_TRUE(oLockable.Unlock());
        EXPECT_TRUE(oLockable.Lock());
        oSource.leave();
        const CSCritSection oCopy(oSource);
        oTarget = oSource;
    }
    EXPECT_EQ(s_strCalls, "init-1 init-2 enter-1 leave-1 enter-1 leave-1 delete-1 delete-1 delete-1 ");
}
