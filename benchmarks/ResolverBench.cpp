// The time that an ask of the resolver costs its caller. Run where a name server stays silent about 203.0.x.x.
#include "Bench.h"

#include "ZevrinUtils/DNSResolver.h"

#include <algorithm>
#include <chrono>
#include <list>
#include <mutex>
#include <thread>

namespace
{
using Clock = std::chrono::steady_clock;
constexpr int nOtherNames = 1000;   // that the map holds beside the one that is asked for
constexpr int nUnknownAsks = 10000;
constexpr auto nPatience = std::chrono::seconds(30);
const char szKnown[] = "127.0.0.1";

// The resolver that a host would write for itself: one lock, one map, one queue.
class Peer
{
public:
    std::string GetName(const char* pszAddress)
    {
        const std::string strAddress(pszAddress);
        const std::lock_guard oHold(m_oLock);
        const auto it = m_oNames.find(strAddress);
        if (it != m_oNames.end())
            return it->second;
        if (std::find(m_oQueue.begin(), m_oQueue.end(), strAddress) == m_oQueue.end())
            m_oQueue.push_back(strAddress);
        return strAddress;
    }

    void Add(const std::string& strAddress, const std::string& strName) { m_oNames[strAddress] = strName; }

private:
    std::mutex m_oLock;
    std::map<std::string, std::string> m_oNames;
    std::list<std::string> m_oQueue;
};

Peer s_oPeer;

std::string AskLibrary(const char* pszAddress)
{
    return CSDNSResolver::Instance()->GetDNSName(pszAddress);
}

std::string AskPeer(const char* pszAddress)
{
    return s_oPeer.GetName(pszAddress);
}

// Texts that are no addresses are answered without a lookup, and kept like any other answer.
std::string OtherName(int nIndex)
{
    return "other-" + std::to_string(nIndex);
}

void LearnNames()
{
    for (int n = 0; n < nOtherNames; ++n)
    {
        AskLibrary(OtherName(n).c_str());
        s_oPeer.Add(OtherName(n), OtherName(n));
    }
    const std::string strAsked = std::string(szKnown) + ":0";
    const auto nEnd = Clock::now() + nPatience;
    while (AskLibrary(strAsked.c_str()) == strAsked)
    {
        Require(Clock::now() < nEnd, "the resolver does not answer");
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }
    s_oPeer.Add(szKnown, AskLibrary(szKnown));
}

template <class Ask>
void AskForKnown(benchmark::State& oState, Ask ask)
{
    for (auto _ : oState)
        benchmark::DoNotOptimize(ask(szKnown));
}

// The 99.9th percentile of a call, in nanoseconds, over addresses that nobody knows yet.
template <class Ask>
double SlowestOfUnknown(Ask ask)
{
    std::vector<double> oTook;
    for (int n = 0; n < nUnknownAsks; ++n)
    {
        const std::string strAddress = "203.0." + std::to_string(n / 250) + '.' + std::to_string(n % 250 + 1);
        const auto nStart = Clock::now();
        benchmark::DoNotOptimize(ask(strAddress.c_str()));
        oTook.push_back(std::chrono::duration<double, std::nano>(Clock::now() - nStart).count());
    }
    const auto it = oTook.begin() + nUnknownAsks * 999 / 1000;
    std::nth_element(oTook.begin(), it, oTook.end());
    return *it;
}

void Register(const std::string& strCase, int nThreads)
{
    benchmark::RegisterBenchmark((strCase + "/library").c_str(), AskForKnown<decltype(&AskLibrary)>, &AskLibrary)
        ->Threads(nThreads)
        ->UseRealTime();
    benchmark::RegisterBenchmark((strCase + "/peer").c_str(), AskForKnown<decltype(&AskPeer)>, &AskPeer)
        ->Threads(nThreads)
        ->UseRealTime();
}
}

void Measure(RatioTable& oTable, const std::vector<std::string>&)
{
    LearnNames();
    Register("known name", 1);
    oTable.SetGoal("known name", "at most 1.5");
    Register("known name, 8 threads at once", 8);
    benchmark::RunSpecifiedBenchmarks(&oTable);

    const std::string strUnknown = "10000 unknown, silent server: 99.9th percentile";
    oTable.Add(strUnknown, "library", SlowestOfUnknown(&AskLibrary));
    oTable.Add(strUnknown, "peer", SlowestOfUnknown(&AskPeer));
}
