// The resolver answers at once, looks up in order on one thread, and stops with it.
#include "ResolverFixture.h"

#include <set>

using testing::ElementsAre;
using testing::IsEmpty;

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
    std::vector<std::thread> oThreads;
    for (int nThread = 0; nThread < 8; ++nThread)
        oThreads.emplace_back([this, nThread] {
            for (int n = 0; n < 50; ++n)
            {
                const std::string strAddress = "10.1.2." + std::to_string(nThread * 8 + n % 8) + ":1";
                EXPECT_EQ(Ask(strAddress), strAddress);
            }
        });
    for (auto& oThread : oThreads)
        oThread.join();
    m_pResolver->ResetResultsMap();
    EXPECT_EQ(m_oNames.Lookups(1).size(), 1u);
    m_oNames.Release();
}

TEST_F(DNSResolver, SleepsWhileTheQueueIsEmpty)
{
    static std::atomic<int> s_nWaits;
    const auto count = [](DWORD nCount, const HANDLE* ph, BOOL bAll, DWORD nLimit) WINAPI {
        ++s_nWaits;
        return PlatformService<ThreadCalls>::s_oNative.WaitForMultipleObjects(nCount, ph, bAll, nLimit);
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
