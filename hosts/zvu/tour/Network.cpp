// The tour's stops at the lock, addresses and the DNS resolver.
#include "Families.h"

#include "Fendrel/Trace.h"
#include "ZevrinUtils/CritSection.h"
#include "ZevrinUtils/DNSResolver.h"
#include "ZevrinUtils/IPServices.h"

#include <atomic>
#include <thread>

namespace
{
constexpr int nEntries = 100'000;   // of each of the two threads
constexpr int nAsks = 10'000;
constexpr int nMostRounds = 500;
constexpr auto nBetweenTries = std::chrono::milliseconds(10);

constexpr auto pszLoopback = "127.0.0.1";
constexpr auto pszQuestion = "127.0.0.1:8080";

std::string Ask()
{
    return CSDNSResolver::Instance()->GetDNSName(pszQuestion);
}

Outcome CountUnderOneLock()
{
    CSCritSection oLock;
    int nCount = 0;
    const auto count = [&] {
        for (int nEntry = 0; nEntry < nEntries; ++nEntry)
        {
            oLock.enter();
            ++nCount;
            oLock.leave();
        }
    };
    std::thread oOther(count);
    count();
    oOther.join();
    return Judged(nCount == 2 * nEntries, Grouped(static_cast<unsigned>(nCount)));
}

Outcome AskUntilKnown()
{
    std::string strAnswer = Ask();
    for (int nRound = 0; nRound < nMostRounds && strAnswer == pszQuestion; ++nRound)
    {
        std::this_thread::sleep_for(nBetweenTries);
        strAnswer = Ask();
    }
    if (strAnswer == pszLoopback)   // without its port: the lookup found no name
        return LeftOut("this machine has no name for it");
    return Judged(strAnswer != pszQuestion, strAnswer);
}

Outcome AskWhatIsKnown()
{
    const std::string strFirst = Ask();
    for (int nAsk = 1; nAsk < nAsks; ++nAsk)
        if (Ask() != strFirst)
            return Judged(false, "the answers differ");
    return Judged(true, strFirst + ", each time");
}

// A host that asks for traces sees what goes on inside the library.
Outcome TraceSingleAsk()
{
    static std::atomic<int> nRecords;
    auto& oTrace = *CSTrace::instance();
    oTrace.SetThreshold(CSTrace::eDebug);
    oTrace.TraceToCallback([](const CSTrace::Record&, void*) { ++nRecords; }, nullptr);
    Ask();
    oTrace.TraceToNothing();
    oTrace.SetThreshold(CSTrace::eWarning);
    return Judged(nRecords > 0, Text(nRecords, " records"));
}
}

void ShowLock(Guide& oGuide, const Surroundings&)
{
    oGuide.Show(Text("two threads count to ", Grouped(nEntries), " each"), &CountUnderOneLock);
}

void ShowAddresses(Guide& oGuide, const Surroundings&)
{
    for (const auto& oCase : {std::pair("192.0.2.1", true), {"192.0.2.256", false}})
        oGuide.Show(Text("is ", oCase.first, " an address?"), [&] {
            const bool bAnswer = CSIPServices::IsValidIP(oCase.first);
            return Judged(bAnswer == oCase.second, bAnswer ? "yes" : "no");
        });
    oGuide.Show("is 192.0.2.1 one of this machine's?", [] {
        bool bIsLocal = true;
        if (!CSIPServices::IsLocalIP("192.0.2.1", bIsLocal))
            return LeftOut("this machine has no network adapter");
        return Judged(!bIsLocal, bIsLocal ? "yes" : "no");
    });
}

void ShowResolver(Guide& oGuide, const Surroundings&)
{
    oGuide.Show(Text("who is ", pszQuestion, "? (asked first)"), [] {
        const std::string strAnswer = Ask();
        return Judged(strAnswer == pszQuestion, strAnswer);
    });
    oGuide.Show("the same, until the name is known", &AskUntilKnown);
    oGuide.Show(Text("the same, ", Grouped(nAsks), " times more"), &AskWhatIsKnown);
    oGuide.Show("what does one ask trace?", &TraceSingleAsk);
}
