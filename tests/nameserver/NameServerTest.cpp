// The resolver through the system's own lookup, against the servers that with-nameserver sets up. All in one
// process, as a host would have it: the one resolver serves all tests.
#include "ZevrinUtils/DNSResolver.h"
#include "platform/Sockets.h"
#include "support/TraceCapture.h"

#include <gmock/gmock.h>

namespace
{
std::string Ask(const std::string& strAddress)
{
    return CSDNSResolver::Instance()->GetDNSName(strAddress.c_str());
}

class NameServer : public testing::Test
{
protected:
    static void SetUpTestSuite()
    {
        WSADATA oData{};
        ASSERT_EQ(Sockets().WSAStartup(0x0101, &oData), 0);
    }

    TraceCapture m_oTrace;
};
}

TEST_F(NameServer, GivesTheNameOrTheBareAddress)
{
    for (const auto& [pszAddress, pszAnswer] : {std::pair{"198.51.100.7", "seven.example.test"},
                                                {"198.51.100.8", "198.51.100.8"},
                                                {"192.0.2.1", "192.0.2.1"}})
    {
        const std::string strAsked = std::string(pszAddress) + ":8080";
        Ask(strAsked);
        EXPECT_TRUE(WaitUntil([&] { return Ask(strAsked) != strAsked; })) << strAsked;
        EXPECT_EQ(Ask(strAsked), pszAnswer);
    }
}

TEST_F(NameServer, DelaysNobodyWhileItStaysSilent)
{
    const std::string strHanging = "203.0.113.1";
    Ask(strHanging);
    ASSERT_TRUE(m_oTrace.WaitFor("4 Resolving DNS for " + strHanging));
    std::vector<std::thread> oThreads;
    for (int nThread = 0; nThread < 8; ++nThread)
        oThreads.emplace_back([nThread] {
            for (int n = 0; n < 50; ++n)
            {
                const std::string strAddress = "203.0.113." + std::to_string(nThread * 8 + n % 8 + 2) + ":1";
                EXPECT_EQ(Ask(strAddress), strAddress);
            }
        });
    for (auto& oThread : oThreads)
        oThread.join();
    CSDNSResolver::Instance()->ResetResultsMap();

    // All of that happened within the one lookup, which then gives up. Nobody waited for it.
    const std::string strGivenUp = "2 Can't resolve DNS for " + strHanging;
    EXPECT_EQ(m_oTrace.Count(strGivenUp), 0);
    EXPECT_TRUE(m_oTrace.WaitFor(strGivenUp));
}
