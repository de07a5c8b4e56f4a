// Very many requests on one port: nothing may grow but what is promised to grow, a read buffer for each.
//     listener_soak REQUESTS
#include "Loopback.h"

#include "ZevrinUtils/PortListener.h"

#include <cstdlib>
#include <filesystem>
#include <iostream>
#include <iterator>
#include <random>
#include <thread>

#include <malloc.h>

namespace
{
// Below those that the system gives out by itself.
const auto nPort = static_cast<unsigned short>(10000 + std::random_device()() % 20000);
constexpr long nReadBuffer = 0x40000;

struct Usage
{
    long nDescriptors = Count("/proc/self/fd");
    long nThreads = Count("/proc/self/task");
    long nBytes = Allocated();

    static long Count(const char* pszFolder)
    {
        return static_cast<long>(std::distance(std::filesystem::directory_iterator(pszFolder), {}));
    }
    static long Allocated()
    {
        const auto oInfo = mallinfo2();
        return static_cast<long>(oInfo.uordblks + oInfo.hblkhd);
    }
};

unsigned long Reply(unsigned short, const char*, ZVString& oReply, void*)
{
    oReply.Assign("reply");
    return 0;
}

bool Within(const char* pszWhat, long nGrown, long nLeast, long nMost)
{
    std::cout << pszWhat << ": grown by " << nGrown << ", allowed " << nLeast << " to " << nMost << '\n';
    return nGrown >= nLeast && nGrown <= nMost;
}
}

int main(int nArguments, char** ppArguments)
{
    const int nRequests = nArguments > 1 ? std::atoi(ppArguments[1]) : 100000;
    CSPortListener oListener;
    if (!oListener.Start(nPort, &Reply) || !MakeRequests(nPort, 4, 100, "reply"))
        return 1;
    mallopt(M_MMAP_THRESHOLD, nReadBuffer / 2);   // fixed, and for as many blocks as there will be
    mallopt(M_MMAP_MAX, 1 << 24);
    const Usage oBefore;
    if (!MakeRequests(nPort, 4, nRequests, "reply"))
        return 1;

    // A client that has ended may be listed for a moment longer.
    for (int n = 0; n < 100 && Usage().nThreads > oBefore.nThreads; ++n)
        std::this_thread::sleep_for(std::chrono::milliseconds(10));
    const Usage oAfter;

    // A large block is a mapping of its own, rounded up to whole pages.
    const long nLeast = nRequests * (nReadBuffer + 4096);
    const long nMost = nLeast + (1 << 17);
    const bool bWell = Within("descriptors", oAfter.nDescriptors - oBefore.nDescriptors, 0, 0) &
                       Within("threads", oAfter.nThreads - oBefore.nThreads, 0, 0) &
                       Within("bytes", oAfter.nBytes - oBefore.nBytes, nLeast, nMost);
    oListener.Stop();
    return bWell ? 0 : 1;
}
