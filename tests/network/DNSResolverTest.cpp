// The resolver answers at once, looks up in order on one thread, and stops with it; platform calls that fail it
// reports, and goes on or ends as promised.
#include "ZevrinUtils/DNSResolver.h"
#include "platform/Modules.h"
#include "platform/Sockets.h"
#include "platform/Threads.h"
#include "support/Substitution.h"
#include "support/TraceCapture.h"

#include <atomic>
#include <memory>
#include <set>

#include <gmock/gmock.h>

using testing::Each;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;
using testing::StartsWith;

namespace
{
const auto& s_oNative = PlatformService<ThreadCalls>::s_oNative;
}

struct CSDNSResolverPeer
{
    static std::unique_ptr<CSDNSResolver> Make() { return std::unique_ptr<CSDNSResolver>(new CSDNSResolver); }
    static void Stop(CSDNSResolver& oResolver) { oResolver.Stop(); }
};

// Knows every address but 10.9.x.x (no entry) and 10.8.x.x (an entry without a name). The name counts the
// lookups: "name-1" for the first. Lookups can be held back, as by a silent server.
class NameService
{
public:
    void Hold() { s_bHeld = true; }
    void Release() { s_bHeld = false; }

    // The addresses looked up so far, the one under way included, once there are so many.
    std::vector<std::string> Lookups(std::size_t nAtLeast = 0) const
    {
        WaitUntil([&] { return Noted().size() >= nAtLeast; });
        return Noted();
    }

private:
    static std::vector<std::string> Noted(const std::string& strMore = "")
    {
        const std::lock_guard oHold(s_oLock);
        if (!strMore.empty())
            s_oLookups.push_back(strMore);
        return s_oLookups;
    }

    static hostent* Answer(const char* pAddress)
    {
        const auto* const p = reinterpret_cast<const unsigned char*>(pAddress);
        static std::string s_strName;
        s_strName = "name-" + std::to_string(Noted(std::to_string(p[0]) + '.' + std::to_string(p[1]) + '.' +
                                                   std::to_string(p[2]) + '.' + std::to_string(p[3]))
                                                 .size());
        EXPECT_TRUE(WaitUntil([] { return !s_bHeld; }));
        static hostent s_oHost;
        s_oHost.h_name = p[1] == 8 ? nullptr : s_strName.data();
        return p[1] == 9 ? nullptr : &s_oHost;
    }

    static inline std::mutex s_oLock;
    static inline std::vector<std::string> s_oLookups;
    static inline std::atomic<bool> s_bHeld = false;
    const Substitution<SocketCalls> m_oSubstitution{
        &SocketCalls::gethostbyaddr, [](const char* pAddress, int, int) WINAPI { return Answer(pAddress); }};
};

class DNSResolver : public testing::Test
{
protected:
    std::string Ask(const std::string& strAddress) { return m_pResolver->GetDNSName(strAddress.c_str()); }

    // Waits until all that was asked for before is answered. Asking for it again would not do: what is asked
    // for during its lookup is looked up once more.
    void WaitForAnswers()
    {
        const std::string strLast = "last-" + std::to_string(++m_nWaits);   // no address: needs no lookup
        Ask(strLast);
        EXPECT_TRUE(m_oTrace.WaitFor("4 Resolving DNS for " + strLast));
    }

    std::string AnswerFor(const std::string& strAddress)
    {
        Ask(strAddress);
        WaitForAnswers();
        return Ask(strAddress + ":0");
    }

    int m_nWaits = 0;
    TraceCapture m_oTrace;
    NameService m_oNames;
    std::unique_ptr<CSDNSResolver> m_pResolver = CSDNSResolverPeer::Make();
};

TEST_F(DNSResolver, TextWithoutAnAddressComesBackAndStartsNothing)
{
    EXPECT_EQ(m_pResolver->GetDNSName(nullptr), "");
    for (const char* pszText : {"", ":80", ":", "::1"})
        EXPECT_EQ(Ask(pszText), pszText);
    m_pResolver.reset();
    EXPECT_THAT(m_oTrace.Messages(), IsEmpty());   // no thread that could have reported its stop
}

TEST_F(DNSResolver, QueuesAnAddressOnceAndLooksUpInOrder)
{
    m_oNames.Hold();
    EXPECT_EQ(Ask("10.1.2.3:8080"), "10.1.2.3:8080");
    m_oNames.Lookups(1);
    EXPECT_EQ(Ask("10.1.2.4"), "10.1.2.4");
    Ask("10.1.2.5");
    EXPECT_EQ(Ask("10.1.2.4:80"), "10.1.2.4:80");
    EXPECT_EQ(m_oTrace.Count("4 QueueForResolution: found IP 10.1.2.4 in the queue. not adding it again"), 1);
    m_oNames.Release();
    WaitForAnswers();
    EXPECT_EQ(Ask("10.1.2.3"), "name-1");
    EXPECT_EQ(Ask("10.1.2.4"), "name-2");
    EXPECT_EQ(Ask("10.1.2.5:99:7"), "name-3");   // cut at the first colon
    EXPECT_THAT(m_oNames.Lookups(), ElementsAre("10.1.2.3", "10.1.2.4", "10.1.2.5"));
    EXPECT_EQ(m_oTrace.Count("3 ResolveDNS - IP: 10.1.2.4 DNS: name-2"), 1);
}

TEST_F(DNSResolver, KeepsAFailureAsTheAddressWithoutItsPortUntilTheReset)
{
    for (const char* pszFailing : {"10.9.0.1", "10.8.0.1", "no address", "255.255.255.255"})
    {
        EXPECT_EQ(AnswerFor(pszFailing), pszFailing);
        EXPECT_EQ(m_oTrace.Count(std::string("4 Resolving DNS for ") + pszFailing), 1);
        EXPECT_EQ(m_oTrace.Count(std::string("2 Can't resolve DNS for ") + pszFailing), 1);
    }
    EXPECT_THAT(m_oNames.Lookups(), ElementsAre("10.9.0.1", "10.8.0.1"));
    m_pResolver->ResetResultsMap();
    AnswerFor("10.9.0.1");
    EXPECT_THAT(m_oNames.Lookups(), ElementsAre("10.9.0.1", "10.8.0.1", "10.9.0.1"));
}

TEST_F(DNSResolver, LooksUpAgainWhatIsAskedForDuringItsLookupAndKeepsItsAnswerAfterAReset)
{
    EXPECT_EQ(AnswerFor("10.1.2.3"), "name-1");
    m_oNames.Hold();
    Ask("10.1.2.4");
    m_oNames.Lookups(2);
    m_pResolver->ResetResultsMap();
    m_oNames.Release();
    WaitForAnswers();
    EXPECT_EQ(Ask("10.1.2.4:1"), "name-2");
    EXPECT_EQ(Ask("10.1.2.3:1"), "10.1.2.3:1");   // forgotten
    m_oNames.Lookups(3);
    m_oNames.Hold();
    Ask("10.1.2.5");
    m_oNames.Lookups(4);
    Ask("10.1.2.5");
    m_oNames.Release();
    WaitForAnswers();
    EXPECT_EQ(Ask("10.1.2.5"), "name-5");   // the later answer overwrites
}

TEST_F(DNSResolver, DelaysNobodyHoweverManyAskDuringALookup)
{
    m_oNames.Hold();
    std::vector<std::jthread> oThreads;
    for (int nThread = 0; nThread < 8; ++nThread)
        oThreads.emplace_back([this, nThread] {
            for (int n = 0; n < 50; ++n)
            {
                const std::string strAddress = "10.1.2." + std::to_string(nThread * 8 + n % 8) + ":1";
                EXPECT_EQ(Ask(strAddress), strAddress);
            }
        });
    oThreads.clear();   // waits
    m_pResolver->ResetResultsMap();
    EXPECT_EQ(m_oNames.Lookups(1).size(), 1u);
    m_oNames.Release();
}

TEST_F(DNSResolver, SleepsWhileTheQueueIsEmpty)
{
    static std::atomic<int> s_nWaits;
    const auto count = [](DWORD nCount, const HANDLE* ph, BOOL bAll, DWORD nLimit) WINAPI {
        ++s_nWaits;
        return s_oNative.WaitForMultipleObjects(nCount, ph, bAll, nLimit);
    };
    const Substitution oCounted(&ThreadCalls::WaitForMultipleObjects, count);
    for (int n = 1; n <= 3; ++n)
    {
        Ask("10.1.0." + std::to_string(n));   // a wait that finds it, one that finds the queue empty, and a sleep
        EXPECT_TRUE(WaitUntil([&] { return s_nWaits == 2 * n + 1; }));
        std::this_thread::sleep_for(std::chrono::milliseconds(20));
        EXPECT_EQ(s_nWaits, 2 * n + 1);
    }
    m_pResolver.reset();
}

TEST_F(DNSResolver, StopWaitsForTheLookupForgetsTheAnswersAndLeavesTheQueue)
{
    m_oNames.Hold();
    Ask("10.1.2.3");
    m_oNames.Lookups(1);
    Ask("10.1.2.4");
    std::atomic<bool> bStopped = false;
    std::thread oStopper([&] {
        CSDNSResolverPeer::Stop(*m_pResolver);
        bStopped = true;
    });
    EXPECT_TRUE(WaitUntil([&] { return m_oTrace.Records().back().strMethod == "CSDNSResolver::Stop"; }));
    std::this_thread::sleep_for(std::chrono::milliseconds(30));
    EXPECT_FALSE(bStopped);
    m_oNames.Release();
    oStopper.join();
    EXPECT_THAT(m_oTrace.Messages(),
                ElementsAre("4 Resolving DNS for 10.1.2.3", "3 ResolveDNS - IP: 10.1.2.3 DNS: name-1",
                            "3 Resolution Thread stopping due to stop request."));

    EXPECT_EQ(Ask("10.1.2.3:1"), "10.1.2.3:1");   // forgotten, and a new thread starts
    WaitForAnswers();
    EXPECT_THAT(m_oNames.Lookups(), ElementsAre("10.1.2.3", "10.1.2.4", "10.1.2.3"));
}

TEST_F(DNSResolver, TracesEachMethodInAndOutAndEachMessageWithItsLine)
{
    AnswerFor("10.1.2.3");
    m_pResolver->ResetResultsMap();   // not traced
    m_pResolver.reset();
    std::set<std::string> oMethods;
    std::string strExits;
    for (const auto& oRecord : m_oTrace.Records())
    {
        const bool bExit = oRecord.strText == "Exited Method";
        EXPECT_TRUE(oRecord.strFile == ".\\DNSResolver" && oRecord.strClass == (bExit ? "" : "CSDNSResolver"));
        EXPECT_EQ(oRecord.nLine == 0, bExit);
        oMethods.insert(oRecord.strMethod);
        strExits += bExit ? oRecord.strMethod + ' ' : "";
    }
    EXPECT_EQ(oMethods.size(), 7u);
    // The thread is over before Stop is, and Stop before the destructor.
    EXPECT_TRUE(
        strExits.ends_with("CSDNSResolver::ResolutionThreadFunc CSDNSResolver::Stop CSDNSResolver::~CSDNSResolver "));
}

TEST_F(DNSResolver, ThreadThatCannotStartIsTriedAgainAtTheNextAsk)
{
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

TEST_F(DNSResolver, ComThatIsStartedAlreadyOrRefusedIsReportedAndPassedOver)
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

TEST_F(DNSResolver, FailedWaitEndsTheThreadForGoodAndLeavesTheAnswers)
{
    static std::atomic<bool> s_bFail = false;
    const auto fail = [](DWORD nCount, const HANDLE* ph, BOOL bAll, DWORD nLimit) WINAPI {
        const DWORD nResult = s_oNative.WaitForMultipleObjects(nCount, ph, bAll, nLimit);
        return s_bFail ? DWORD{WAIT_FAILED} : nResult;
    };
    const Substitution oFake(&ThreadCalls::WaitForMultipleObjects, fail);
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
TEST_F(DNSResolver, AStopRequestIsSeenBeforeQueueingAndBeforeALookup)
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
    EXPECT_EQ(Ask("10.1.2.3:80"), "10.1.2.3:80");
    EXPECT_THAT(m_oTrace.Messages(), ElementsAre("4 QueueForResolution returning due to a stop request."));

    s_bStopAsked = false;
    EXPECT_EQ(Ask("10.1.2.4:80"), "10.1.2.4:80");
    EXPECT_TRUE(m_oTrace.WaitFor("3 QueueForResolution returning due to a stop request."));
    EXPECT_TRUE(WaitUntil([&] { return Ask("10.1.2.4:80") == "10.1.2.4"; }));   // filed as failed
    EXPECT_THAT(m_oNames.Lookups(), IsEmpty());
    m_pResolver.reset();
}

TEST_F(DNSResolver, InstanceIsBuiltAnewAfterAConstructorThatThrew)
{
    {
        const Substitution oFake(&ThreadCalls::CreateEventA,
                                 [](LPSECURITY_ATTRIBUTES, BOOL, BOOL, LPCSTR) WINAPI -> HANDLE { throw 1; });
        EXPECT_THROW(CSDNSResolver::Instance(), int);
    }
    EXPECT_EQ(CSDNSResolver::Instance()->GetDNSName(":80"), ":80");
    EXPECT_EQ(m_oTrace.Records().back().strMethod, "CSDNSResolver::GetDNSName");
}
