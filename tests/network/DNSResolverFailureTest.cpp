// What the resolver makes of platform calls that fail.
#include "ResolverFixture.h"

using testing::ElementsAre;
using testing::IsEmpty;

namespace
{
int s_nCalls = 0;
}

TEST_F(ResolverTest, ThreadThatCannotStartIsTriedAgainAtTheNextAsk)
{
    m_pResolver.reset();
    {
        const Substitution<ThreadCalls> oFake([](ThreadCalls& oCalls) {
            oCalls.CreateThread = [](LPSECURITY_ATTRIBUTES, SIZE_T, LPTHREAD_START_ROUTINE, LPVOID, DWORD, LPDWORD)
                                      WINAPI -> HANDLE { return nullptr; };
        });
        m_pResolver = CSDNSResolverPeer::Make();
        EXPECT_EQ(Ask("10.1.2.3:80"), "10.1.2.3:80");
        EXPECT_EQ(Ask("10.1.2.3:80"), "10.1.2.3:80");
    }
    EXPECT_THAT(m_oTrace.Messages(),
                ElementsAre("1 Can't create Resolution Thread", "1 Can't create Resolution Thread"));
    EXPECT_EQ(AnswerFor("10.1.2.3"), "name-1");
}

TEST_F(ResolverTest, ComThatIsAlreadyStartedOrRefusedIsReportedAndPassedOver)
{
    for (const HRESULT nResult : {S_FALSE, static_cast<HRESULT>(0x80010106)})
    {
        static HRESULT s_nResult;
        s_nResult = nResult;
        s_nCalls = 0;
        const Substitution<ThreadCalls> oFake([](ThreadCalls& oCalls) {
            oCalls.CoInitialize = [](LPVOID) WINAPI { return s_nResult; };
            oCalls.CoUninitialize = []() WINAPI { ++s_nCalls; };
        });
        m_pResolver = CSDNSResolverPeer::Make();
        EXPECT_THAT(AnswerFor("10.1.2.3"), testing::StartsWith("name-"));
        m_pResolver.reset();
        EXPECT_EQ(s_nCalls, 1);
    }
    EXPECT_EQ(m_oTrace.Count("1 ::CoInitialize(NULL) failed"), 2);
}

TEST_F(ResolverTest, FailedWaitEndsTheThreadForGood)
{
    const Substitution<ThreadCalls> oFake([](ThreadCalls& oCalls) {
        oCalls.WaitForMultipleObjects = [](DWORD, const HANDLE*, BOOL, DWORD) WINAPI { return DWORD{WAIT_FAILED}; };
    });
    m_pResolver = CSDNSResolverPeer::Make();
    EXPECT_EQ(Ask("10.1.2.3:80"), "10.1.2.3:80");
    EXPECT_TRUE(m_oTrace.WaitFor("1 Resolution Thread stopping due to wait error."));
    EXPECT_EQ(Ask("10.1.2.4:80"), "10.1.2.4:80");   // queued, and never answered
    m_pResolver.reset();
    EXPECT_THAT(m_oTrace.Messages(), ElementsAre("1 Resolution Thread stopping due to wait error."));
    EXPECT_THAT(m_oNames.Lookups(), IsEmpty());
}

TEST_F(ResolverTest, EventsThatCannotBeMadeEndInAFailedWait)
{
    const Substitution<ThreadCalls> oFake([](ThreadCalls& oCalls) {
        oCalls.CreateEventA = [](LPSECURITY_ATTRIBUTES, BOOL, BOOL, LPCSTR) WINAPI -> HANDLE { return nullptr; };
    });
    m_pResolver = CSDNSResolverPeer::Make();
    EXPECT_EQ(Ask("10.1.2.3:80"), "10.1.2.3:80");
    EXPECT_TRUE(m_oTrace.WaitFor("1 Resolution Thread stopping due to wait error."));
    m_pResolver.reset();   // ends
}

// The platform sees the stop event set, at every moment or from the time the lookup would begin.
TEST_F(ResolverTest, AStopRequestIsSeenBeforeQueueingAndBeforeALookup)
{
    static bool s_bStopAsked;
    s_bStopAsked = true;
    const Substitution<ThreadCalls> oFake([](ThreadCalls& oCalls) {
        oCalls.WaitForSingleObject = [](HANDLE hObject, DWORD nLimit) WINAPI {
            const auto& oNative = PlatformService<ThreadCalls>::s_oNative;
            return nLimit == 0 && s_bStopAsked ? DWORD{WAIT_OBJECT_0} : oNative.WaitForSingleObject(hObject, nLimit);
        };
        // The thread's first work comes through just as the stop is asked for.
        oCalls.WaitForMultipleObjects = [](DWORD nCount, const HANDLE* ph, BOOL bAll, DWORD nLimit) WINAPI {
            const DWORD n = PlatformService<ThreadCalls>::s_oNative.WaitForMultipleObjects(nCount, ph, bAll, nLimit);
            s_bStopAsked = true;
            return n;
        };
    });
    m_pResolver = CSDNSResolverPeer::Make();
    EXPECT_EQ(Ask("10.1.2.3:80"), "10.1.2.3:80");
    EXPECT_THAT(m_oTrace.Messages(), ElementsAre("4 QueueForResolution returning due to a stop request."));

    s_bStopAsked = false;
    EXPECT_EQ(Ask("10.1.2.4:80"), "10.1.2.4:80");
    EXPECT_TRUE(m_oTrace.WaitFor("3 QueueForResolution returning due to a stop request."));
    EXPECT_TRUE(WaitUntil([&] { return Ask("10.1.2.4:80") == "10.1.2.4"; }));   // filed as failed
    EXPECT_THAT(m_oNames.Lookups(), IsEmpty());
    m_pResolver.reset();
}
