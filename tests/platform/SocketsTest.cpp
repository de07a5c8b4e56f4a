// The contract of the socket layer and of the reverse lookup, the same on every target.
#include "platform/Sockets.h"
#include "platform/Errors.h"

#include <string>

#include <gtest/gtest.h>

namespace
{
class SocketsContract : public testing::Test
{
protected:
    void SetUp() override { ASSERT_EQ(Sockets().WSAStartup(0x0101, &m_oData), 0); }
    void TearDown() override { EXPECT_EQ(Sockets().WSACleanup(), 0); }

    static hostent* Lookup(const char* pszAddress, int nLength = 4, int nFamily = AF_INET)
    {
        const auto nAddress = Sockets().inet_addr(pszAddress);
        return Sockets().gethostbyaddr(reinterpret_cast<const char*>(&nAddress), nLength, nFamily);
    }

    WSADATA m_oData{};
};
}

TEST_F(SocketsContract, TheStartGivesTheVersionThatWasAskedFor)
{
    EXPECT_EQ(m_oData.wVersion, 0x0101);
    EXPECT_EQ(m_oData.wHighVersion, 0x0202);
}

TEST_F(SocketsContract, DottedTextBecomesAnAddressInNetworkOrder)
{
    const auto bytes = [](const char* pszText) {
        const auto nAddress = Sockets().inet_addr(pszText);
        const auto* p = reinterpret_cast<const unsigned char*>(&nAddress);
        std::string strBytes;
        for (int n = 0; n < 4; ++n)
            strBytes += (n ? "." : "") + std::to_string(p[n]);
        return strBytes;
    };
    EXPECT_EQ(bytes("10.1.2.3"), "10.1.2.3");
    EXPECT_EQ(bytes("0.0.0.0"), "0.0.0.0");
    EXPECT_EQ(bytes("1.2"), "1.0.0.2");
    EXPECT_EQ(bytes("010.0x10.3.4"), "8.16.3.4");
    for (const char* pszBad : {"", "name", "1.2.3.4.5", "256.1.1.1", "1.2.3.", "1..2", "1.2.3.4x", "255.255.255.255"})
        EXPECT_EQ(Sockets().inet_addr(pszBad), INADDR_NONE) << '\'' << pszBad << '\'';
}

TEST_F(SocketsContract, TheLoopbackAddressHasAName)
{
    const auto* const pHost = Lookup("127.0.0.1");
    ASSERT_NE(pHost, nullptr);
    EXPECT_STREQ(pHost->h_name, "localhost");
    EXPECT_EQ(pHost->h_addrtype, AF_INET);
    EXPECT_EQ(pHost->h_length, 4);
}

TEST_F(SocketsContract, AskingForNoAddressGivesNothing)
{
    EXPECT_EQ(Lookup("127.0.0.1", 3), nullptr);
    EXPECT_NE(Errors().GetLastError(), DWORD{ERROR_SUCCESS});
    EXPECT_EQ(Sockets().gethostbyaddr(nullptr, 4, AF_INET), nullptr);
}
