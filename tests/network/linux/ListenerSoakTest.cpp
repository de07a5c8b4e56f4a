// Very many requests on one port, three thousand or as many as ZEVRIN_SOAK says: nothing may grow but what is promised
// to, a read buffer for each.
#include "network/ListenerFixture.h"

#include <cstdlib>
#include <filesystem>

#include <malloc.h>

namespace
{
std::ptrdiff_t Count(const char* pszFolder)
{
    return std::distance(std::filesystem::directory_iterator(pszFolder), {});
}

std::ptrdiff_t Allocated()
{
    const auto oInfo = mallinfo2();
    return static_cast<std::ptrdiff_t>(oInfo.uordblks + oInfo.hblkhd);
}
}

TEST_F(PortListener, ASoakLeavesTheReadBufferOfEachRequestAndNothingElse)
{
    constexpr std::ptrdiff_t nReadBuffer = 0x40000 + 4096;   // a large block is a mapping of its own, of whole pages
    mallopt(M_MMAP_THRESHOLD, 0x20000);                      // fixed, and for as many blocks as there will be
    mallopt(M_MMAP_MAX, 1 << 24);
    const char* const pszRequests = std::getenv("ZEVRIN_SOAK");
    const int nRequests = pszRequests ? std::atoi(pszRequests) : 3000;
    const auto reply = [](unsigned short, const char*, ZVString& oReply, void*) { return oReply.Assign("reply"), 0ul; };
    ASSERT_EQ(m_oListener.Start(m_nPort, reply), 1);
    ASSERT_EQ(Fetch("x"), "reply");
    const auto nFiles = Count("/proc/self/fd"), nThreads = Count("/proc/self/task"), nBytes = Allocated();
    for (int n = 0; n < nRequests; ++n)
        ASSERT_EQ(Fetch("x"), "reply");
    EXPECT_EQ(Count("/proc/self/fd"), nFiles);
    EXPECT_EQ(Count("/proc/self/task"), nThreads);
    const auto nGrown = Allocated() - nBytes - nRequests * nReadBuffer;
    EXPECT_TRUE(nGrown >= 0 && nGrown < 1 << 17) << nGrown;
}
