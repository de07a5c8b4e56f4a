#include "ResolverFixture.h"

#include <atomic>

using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::IsSubsetOf;
using testing::Not;

namespace
{
const char szDuplicate[] = "4 QueueForResolution: found IP 10.1.2.4 in the queue. not adding it again";
const char szStopped[] = "3 Resolution Thread stopping due to stop request.";
}

TEST_F(ResolverTest, TextWithoutAnAddressComesBackAndStartsNothing)
{
    EXPECT_EQ(m_pResolver->GetDNSName(nullptr), "");
    for (const char* pszText : {"", ":80", ":", "::1"})
        EXPECT_EQ(Ask(pszText), pszText);
    m_pResolver.reset();
    EXPECT_THAT(m_oTrace.Messages(), IsEmpty());   // no thread that could have reported its stop
}

TEST_F(ResolverTest, AnswersItsQuestionUntilTheNameIsKnown)
{
    m_oNames.Hold();
    EXPECT_EQ(Ask("10.1.2.3:8080"), "10.1.2.3:8080");
    EXPECT_EQ(Ask("10.1.2.3"), "10.1.2.3");
    m_oNames.Release();
    EXPECT_THAT(AnswerFor("10.1.2.3"), testing::StartsWith("name-"));
    EXPECT_EQ(Ask("10.1.2.3:99:7"), Ask("10.1.2.3"));   // cut at the first colon
}

TEST_F(ResolverTest, KeepsAFailureAsTheAddressWithoutItsPort)
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

TEST_F(ResolverTest, QueuesAnAddressOnceAndLooksUpInOrder)
{
    m_oNames.Hold();
    Ask("10.1.2.3");
    m_oNames.WaitForLookups(1);
    Ask("10.1.2.4");
    Ask("10.1.2.5");
    EXPECT_EQ(Ask("10.1.2.4:80"), "10.1.2.4:80");
    EXPECT_EQ(m_oTrace.Count(szDuplicate), 1);
    m_oNames.Release();
    WaitForAnswers();
    EXPECT_EQ(Ask("10.1.2.5"), "name-3");
    EXPECT_THAT(m_oNames.Lookups(), ElementsAre("10.1.2.3", "10.1.2.4", "10.1.2.5"));
    EXPECT_EQ(m_oTrace.Count("3 ResolveDNS - IP: 10.1.2.4 DNS: name-2"), 1);
}

TEST_F(ResolverTest, LooksUpAgainWhatIsAskedForDuringItsLookup)
{
    m_oNames.Hold();
    Ask("10.1.2.3");
    m_oNames.WaitForLookups(1);
    Ask("10.1.2.3");
    m_oNames.Release();
    WaitForAnswers();
    EXPECT_EQ(Ask("10.1.2.3"), "name-2");   // the later answer overwrites
}

TEST_F(ResolverTest, ResetDuringALookupKeepsItsAnswerAlone)
{
    AnswerFor("10.1.2.3");
    m_oNames.Hold();
    Ask("10.1.2.4");
    m_oNames.WaitForLookups(2);
    Ask("10.1.2.5");
    m_pResolver->ResetResultsMap();
    m_oNames.Release();
    m_oNames.WaitForLookups(3);   // so the answer before it is filed
    EXPECT_EQ(Ask("10.1.2.4:1"), "name-2");
    EXPECT_EQ(Ask("10.1.2.3:1"), "10.1.2.3:1");   // forgotten
}

TEST_F(ResolverTest, SleepsWhenTheQueueIsEmptyAndWakesForTheNextAddress)
{
    for (const char* pszAddress : {"10.1.0.1", "10.1.0.2", "10.1.0.3"})
    {
        AnswerFor(pszAddress);
        std::this_thread::sleep_for(std::chrono::milliseconds(20));
    }
    EXPECT_EQ(m_oNames.Lookups().size(), 3u);
}

TEST_F(ResolverTest, StopWaitsForTheLookupAndDropsTheQueue)
{
    m_oNames.Hold();
    Ask("10.1.2.3");
    m_oNames.WaitForLookups(1);
    Ask("10.1.2.4");
    std::atomic<bool> bDestroyed = false;
    std::thread oDestroyer([&] {
        m_pResolver.reset();
        bDestroyed = true;
    });
    std::this_thread::sleep_for(std::chrono::milliseconds(50));
    EXPECT_FALSE(bDestroyed);
    m_oNames.Release();
    oDestroyer.join();
    EXPECT_THAT(m_oNames.Lookups(), ElementsAre("10.1.2.3"));
    EXPECT_THAT(m_oTrace.Messages(),
                ElementsAre("4 Resolving DNS for 10.1.2.3", "3 ResolveDNS - IP: 10.1.2.3 DNS: name-1", szStopped));
}

TEST_F(ResolverTest, TracesEveryMethodInAndOutUnderItsName)
{
    AnswerFor("10.1.2.3");
    m_pResolver.reset();
    for (const char* pszMethod : {"CSDNSResolver", "GetDNSName", "QueueForResolution", "ResolutionThreadFunc",
                                  "ResolveDNS", "~CSDNSResolver", "Stop"})
    {
        const std::string strMethod = std::string("CSDNSResolver::") + pszMethod;
        int nEntries = 0;
        int nExits = 0;
        for (const auto& oRecord : m_oTrace.Records())
        {
            EXPECT_EQ(oRecord.strFile, ".\\DNSResolver");
            nEntries += oRecord.strMethod == strMethod && oRecord.strText == "Entered Method" && oRecord.nLine > 0 &&
                        oRecord.strClass == "CSDNSResolver";
            nExits += oRecord.strMethod == strMethod && oRecord.strText == "Exited Method" && oRecord.nLine == 0 &&
                      oRecord.strClass.empty();
        }
        EXPECT_GE(nEntries, 1) << strMethod;
        EXPECT_EQ(nEntries, nExits) << strMethod;
    }
    // The last of all is the destructor's exit, and the thread's loop is over before Stop is.
    const auto oRecords = m_oTrace.Records();
    EXPECT_EQ(oRecords.back().strMethod, "CSDNSResolver::~CSDNSResolver");
    EXPECT_EQ(oRecords[oRecords.size() - 2].strMethod, "CSDNSResolver::Stop");
    EXPECT_EQ(oRecords[oRecords.size() - 3].strMethod, "CSDNSResolver::ResolutionThreadFunc");
}

TEST_F(ResolverTest, ServesManyThreadsWhileLookupsHang)
{
    m_oNames.Hold();
    std::vector<std::thread> oThreads;
    for (int nThread = 0; nThread < 8; ++nThread)
        oThreads.emplace_back([this, nThread] {
            for (int n = 0; n < 100; ++n)
            {
                const std::string strAddress = "10.1." + std::to_string(n % 7) + '.' + std::to_string(nThread) + ":1";
                EXPECT_EQ(Ask(strAddress), strAddress);
                if (n % 50 == 0)
                    m_pResolver->ResetResultsMap();
            }
        });
    for (auto& oThread : oThreads)
        oThread.join();
    m_oNames.WaitForLookups(1);
    EXPECT_EQ(m_oNames.Lookups().size(), 1u);   // all of them were served within the first lookup
    m_oNames.Release();
    EXPECT_THAT(AnswerFor("10.1.6.7"), testing::StartsWith("name-"));
    const auto oLookups = m_oNames.Lookups();
    EXPECT_GE(oLookups.size(), 56u);   // each address once; the first one, and what is asked for anew, again
}

TEST(Resolver, IsOneForTheProcess)
{
    const NameService oNames;
    EXPECT_EQ(CSDNSResolver::Instance(), CSDNSResolver::Instance());
}
