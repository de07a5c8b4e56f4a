// The contract of the socket layer, the reverse lookup and the list of adapters, the same on every target.
#include "network/ListenerFixture.h"
#include "platform/Adapters.h"

#include "Native.h"

#include <thread>

namespace
{
const hostent* Lookup(const char* pszAddress, int nLength)
{
    const auto nAddress = Sockets().inet_addr(pszAddress);
    return Sockets().gethostbyaddr(reinterpret_cast<const char*>(&nAddress), nLength, AF_INET);
}
}

TEST(SocketLayer, TakesDottedTextAndLooksUpItsName)
{
    WSADATA oData{};
    ASSERT_EQ(Sockets().WSAStartup(0x0101, &oData), 0);
    EXPECT_EQ(oData.wVersion, 0x0101);
    EXPECT_EQ(oData.wHighVersion, 0x0202);

    for (const auto& [pszText, nAddress] :
         {std::pair{"10.1.2.3", 0x0A010203u}, {"0.0.0.0", 0u}, {"1.2", 0x01000002u}, {"010.0x10.3.4", 0x08100304u}})
        EXPECT_EQ(Sockets().inet_addr(pszText), htonl(nAddress)) << pszText;
    for (const char* pszBad : {"", "name", "1.2.3.4.5", "256.1.1.1", "1.2.3.", "1..2", "1.2.3.4x", "255.255.255.255"})
        EXPECT_EQ(Sockets().inet_addr(pszBad), INADDR_NONE) << '\'' << pszBad << '\'';

    const auto* const pHost = Lookup("127.0.0.1", 4);
    ASSERT_NE(pHost, nullptr);
    std::thread([pHost] { EXPECT_NE(Lookup("127.0.0.1", 4), pHost); }).join();   // a result is its thread's own
    EXPECT_STREQ(pHost->h_name, "localhost");
    EXPECT_EQ(Lookup("127.0.0.1", 3), nullptr);
    EXPECT_EQ(Sockets().gethostbyaddr(nullptr, 4, AF_INET), nullptr);
    EXPECT_EQ(Sockets().WSACleanup(), 0);
}

// Beside the servers of with-nameserver.
TEST(NameServer, GivesNothingForAnAddressWithoutAName)
{
    WSADATA oData{};
    ASSERT_EQ(Sockets().WSAStartup(0x0101, &oData), 0);
    for (const char* pszNameless : {"198.51.100.8", "192.0.2.1"})
        EXPECT_EQ(Lookup(pszNameless, 4), nullptr);
}

TEST(Adapters, FillABufferOfTheSizeThatTheyTellAndLeaveTheLoopbackOut)
{
    ULONG nSize = 0;
    const ULONG nError = Adapters().GetAdaptersInfo(nullptr, &nSize);
    if (nError == ERROR_NO_DATA)
        GTEST_SKIP() << "no network adapter but the loopback";
    ASSERT_EQ(nError, ULONG{ERROR_BUFFER_OVERFLOW});
    const Malloced<IP_ADAPTER_INFO> pFirst(static_cast<PIP_ADAPTER_INFO>(std::malloc(nSize)));
    ULONG nLess = nSize - 1;
    EXPECT_EQ(Adapters().GetAdaptersInfo(pFirst.get(), &nLess), ULONG{ERROR_BUFFER_OVERFLOW});
    EXPECT_EQ(nLess, nSize);
    ASSERT_EQ(Adapters().GetAdaptersInfo(pFirst.get(), &nSize), ULONG{ERROR_SUCCESS});
    for (const auto* pAdapter = pFirst.get(); pAdapter; pAdapter = pAdapter->Next)
        for (const auto* pAddress = &pAdapter->IpAddressList; pAddress; pAddress = pAddress->Next)
        {
            const std::string strText = pAddress->IpAddress.String;
            EXPECT_NE(Sockets().inet_addr(strText.c_str()), INADDR_NONE) << strText;
            EXPECT_FALSE(strText.starts_with("127.")) << strText;
        }
}

class ListeningSockets : public testing::Test
{
protected:
    SOCKET Listen() const
    {
        const SOCKET hSocket = Sockets().socket(AF_INET, SOCK_STREAM, IPPROTO_TCP);
        EXPECT_NE(hSocket, INVALID_SOCKET);
        const auto* const pAddress = reinterpret_cast<const sockaddr*>(&m_oAddress);
        const bool bOpen =
            Sockets().bind(hSocket, pAddress, sizeof m_oAddress) == 0 && Sockets().listen(hSocket, 0x7fffffff) == 0;
        return bOpen ? hSocket : (Sockets().closesocket(hSocket), INVALID_SOCKET);
    }
    const unsigned short m_nPort = FreePort();
    const sockaddr_in m_oAddress = Loopback(m_nPort);
};

// The waiter may be in its wait by then or not: it ends all the same.
TEST_F(ListeningSockets, WakeTheirWaiterWhenClosedAndFreeTheirPort)
{
    for (int n = 0; n < 20; ++n)
    {
        const SOCKET hListening = Listen();
        ASSERT_NE(hListening, INVALID_SOCKET);
        EXPECT_EQ(Listen(), INVALID_SOCKET);
        std::atomic<bool> bWaits = false;
        std::thread oWaiter([&] {
            bWaits = true;
            EXPECT_EQ(Sockets().accept(hListening, nullptr, nullptr), INVALID_SOCKET);
        });
        EXPECT_TRUE(n % 2 == 0 || WaitUntil([&] { return bWaits.load(); }));
        EXPECT_EQ(Sockets().closesocket(hListening), 0);
        oWaiter.join();
        EXPECT_EQ(Sockets().closesocket(hListening), SOCKET_ERROR);
        const SOCKET hOther = Listen();
        EXPECT_TRUE(hOther != hListening || bWindows);   // where numbers come again
        Sockets().closesocket(hOther);
    }
}

TEST_F(ListeningSockets, ReceiveUntilThePeerHasClosedOrBrokenOffAndThenSendInVain)
{
    const SOCKET hListening = Listen();
    for (const bool bReset : {false, true})
    {
        auto pClient = std::make_unique<Client>(m_nPort);
        const SOCKET hConnection = Sockets().accept(hListening, nullptr, nullptr);
        char achRead[] = "###";
        pClient->Send("byte");
        for (int nRead = 0; nRead < 4;)
            nRead += Sockets().recv(hConnection, achRead, 1 + nRead % 2, 0);
        EXPECT_EQ(achRead[2], '#');
        if (bReset)
            pClient->Reset();
        pClient.reset();
        EXPECT_EQ(Sockets().recv(hConnection, achRead, 2, 0),
                  bReset && !UnderWine() ? SOCKET_ERROR : 0);   // there an end like any other
        // On a thread that takes signals: threads of the library would not get the one that Linux has for it.
        EXPECT_TRUE(WaitUntil([&] { return Sockets().send(hConnection, "x", 1, 0) == SOCKET_ERROR; }));
        EXPECT_EQ(Sockets().closesocket(hConnection), 0);
        EXPECT_EQ(Sockets().recv(hConnection, achRead, 2, 0) + Sockets().send(hConnection, achRead, 2, 0), -2);
    }
    Sockets().closesocket(hListening);
}
