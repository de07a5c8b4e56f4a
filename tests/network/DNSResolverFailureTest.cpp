// The resolver reports platform calls that fail, and goes on or ends as promised.
#include "platform/Modules.h"

#include "ResolverFixture.h"

using testing::Each;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;
using testing::StartsWith;

namespace
{
const auto& s_oNative = PlatformService<ThreadCalls>::s_oNative;

class DNSResolverFailures : public DNSResolver
{
protected:
    DNSResolverFailures() { m_pResolver.reset(); }   // each makes its own, with the calls replaced
};
}

TEST_F(DNSResolverFailures, ThreadThatCannotStartIsTriedAgainAtTheNextAsk)
{
    m_pResolver = CSDNSResolverPeer::Make();
    {
        const Substitution oFake(&ThreadCalls::CreateThread,
                                 [](LPSECURITY_ATTRIBUTES, SIZE_T, LPTHREAD_START_ROUTINE, LPVOID, DWORD, LPDWORD)
                                     WINAPI -> HANDLE { return nullptr; });
        EXPECT_EQ(Ask("10.1.2.3:80"), "10.1.2.3:80");
    }
    {
        const Substitution oFake(&ModuleCalls::GetModuleHandleExA,
                                 [](DWORD, LPCSTR, HMODULE*) WINAPI -> BOOL { return FALSE; });
        EXPECT_EQ(Ask("10.1.2.3:80"), "10.1.2.3:80");   // a module that cannot be kept gets no thread
    }
    EXPECT_THAT(m_oTrace.Messages(), testing::AllOf(SizeIs(2), Each("1 Can't create Resolution Thread")));
    EXPECT_EQ(AnswerFor("10.1.2.3"), "name-1");
}

TEST_F(DNSResolverFailures, ComThatIsStartedAlreadyOrRefusedIsReportedAndPassedOver)
{
    static HRESULT s_nResult;
    static int s_nStopped = 0;
    const Substitution<ThreadCalls> oFake([](ThreadCalls& oCalls) {
        oCalls.CoInitialize = [](LPVOID) WINAPI { return s_nResult; };
        oCalls.CoUninitialize = []() WINAPI { ++s_nStopped; };
    });
    for (const HRESULT nResult : {S_FALSE, static_cast<HRESULT>(0x80010106)})
    {
        s_nResult = nResult;
        m_pResolver = CSDNSResolverPeer::Make();
        EXPECT_THAT(AnswerFor("10.1.2.3"), StartsWith("name-"));
        m_pResolver.reset();
    }
    EXPECT_EQ(s_nStopped, 2);
    EXPECT_EQ(m_oTrace.Count("1 ::CoInitialize(NULL) failed"), 2);
}

TEST_F(DNSResolverFailures, FailedWaitEndsTheThreadForGoodAndLeavesTheAnswers)
{
    static std::atomic<bool> s_bFail = false;
    const auto fail = [](DWORD nCount, const HANDLE* ph, BOOL bAll, DWORD nLimit) WINAPI {
        const DWORD nResult = s_oNative.WaitForMultipleObjects(nCount, ph, bAll, nLimit);
        return s_bFail ? DWORD{WAIT_FAILED} : nResult;
    };
    const Substitution oFake(&ThreadCalls::WaitForMultipleObjects, fail);
    m_pResolver = CSDNSResolverPeer::Make();
    EXPECT_EQ(AnswerFor("10.1.2.3"), "name-1");
    s_bFail = true;
    for (const char* pszAsked : {"10.1.2.4:80", "10.1.2.5:80"})
        EXPECT_EQ(Ask(pszAsked), pszAsked);
    EXPECT_TRUE(m_oTrace.WaitFor("1 Resolution Thread stopping due to wait error."));
    EXPECT_EQ(Ask("10.1.2.6:80"), "10.1.2.6:80");   // queued, and never answered
    EXPECT_EQ(Ask("10.1.2.3"), "name-1");
    m_pResolver.reset();
    EXPECT_THAT(m_oNames.Lookups(), ElementsAre("10.1.2.3"));
}

// The platform sees the stop event set: at every moment, or from the time on at which a lookup would begin.
TEST_F(DNSResolverFailures, AStopRequestIsSeenBeforeQueueingAndBeforeALookup)
{
    static std::atomic<bool> s_bStopAsked = true;
    const Substitution<ThreadCalls> oFake([](ThreadCalls& oCalls) {
        oCalls.WaitForSingleObject = [](HANDLE hObject, DWORD nLimit) WINAPI {
            return nLimit == 0 && s_bStopAsked ? DWORD{WAIT_OBJECT_0} : s_oNative.WaitForSingleObject(hObject, nLimit);
        };
        oCalls.WaitForMultipleObjects = [](DWORD nCount, const HANDLE* ph, BOOL bAll, DWORD nLimit) WINAPI {
            const DWORD nResult = s_oNative.WaitForMultipleObjects(nCount, ph, bAll, nLimit);
            s_bStopAsked = true;
            return nResult;
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

TEST_F(DNSResolverFailures, InstanceIsBuiltAnewAfterAConstructorThatThrew)
{
    {
        const Substitution oFake(&ThreadCalls::CreateEventA,
                                 [](LPSECURITY_ATTRIBUTES, BOOL, BOOL, LPCSTR) WINAPI -> HANDLE { throw 1; });
        EXPECT_THROW(CSDNSResolver::Instance(), int);
    }
    EXPECT_EQ(CSDNSResolver::Instance()->GetDNSName(":80"), ":80");
    EXPECT_EQ(m_oTrace.Records().back().strMethod, "CSDNSResolver::GetDNSName");
}
