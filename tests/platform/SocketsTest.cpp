// The contract of the socket layer and of the reverse lookup, the same on every target.
#include "platform/Sockets.h"

#include <chrono>
#include <cstring>
#include <random>
#include <string>
#include <thread>

#include <gtest/gtest.h>

namespace
{
std::string BytesOf(const char* pszText)
{
    const auto nAddress = Sockets().inet_addr(pszText);
    const auto* const p = reinterpret_cast<const unsigned char*>(&nAddress);
    return std::to_string(p[0]) + '.' + std::to_string(p[1]) + '.' + std::to_string(p[2]) + '.' + std::to_string(p[3]);
}

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

    for (const auto& [pszText, pszBytes] :
         {std::pair{"10.1.2.3", "10.1.2.3"}, {"0.0.0.0", "0.0.0.0"}, {"1.2", "1.0.0.2"}, {"010.0x10.3.4", "8.16.3.4"}})
        EXPECT_EQ(BytesOf(pszText), pszBytes);
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

TEST(ListeningSockets, WakeTheirWaiterWhenClosedAndFreeTheirPort)
{
    WSADATA oData{};
    ASSERT_EQ(Sockets().WSAStartup(0x0101, &oData), 0);
    sockaddr_in oAddress{};
    oAddress.sin_family = AF_INET;
    // One that the system does not give out by itself, and another for each run.
    const unsigned char anPort[] = {static_cast<unsigned char>(0x60 + std::random_device()() % 0x18),
                                    static_cast<unsigned char>(std::random_device()())};
    std::memcpy(&oAddress.sin_port, anPort, sizeof anPort);
    const auto listenThere = [&] {
        const SOCKET hSocket = Sockets().socket(AF_INET, SOCK_STREAM, IPPROTO_TCP);
        EXPECT_NE(hSocket, INVALID_SOCKET);
        const bool bOpen =
            Sockets().bind(hSocket, reinterpret_cast<const sockaddr*>(&oAddress), sizeof oAddress) == 0 &&
            Sockets().listen(hSocket, 0x7fffffff) == 0;
        return bOpen ? hSocket : (Sockets().closesocket(hSocket), INVALID_SOCKET);
    };
    for (int n = 0; n < 3; ++n)
    {
        const SOCKET hListening = listenThere();
        ASSERT_NE(hListening, INVALID_SOCKET);
        EXPECT_EQ(listenThere(), INVALID_SOCKET);
        std::thread oWaiter([&] { EXPECT_EQ(Sockets().accept(hListening, nullptr, nullptr), INVALID_SOCKET); });
        std::this_thread::sleep_for(std::chrono::milliseconds(30));
        EXPECT_EQ(Sockets().closesocket(hListening), 0);
        oWaiter.join();
        EXPECT_EQ(Sockets().closesocket(hListening), SOCKET_ERROR);
        const SOCKET hOther = listenThere();   // must not be taken for the old one; Windows gives no such promise
        EXPECT_TRUE(hOther != hListening || sizeof(void*) == 4);
        Sockets().closesocket(hOther);
    }
}
