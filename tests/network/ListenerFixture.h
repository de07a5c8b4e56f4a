// A port listener, a handler that notes what it is asked, and real clients.
#pragma once

#include "Native.h"
#include "ZevrinUtils/PortListener.h"
#include "platform/Memory.h"
#include "platform/Sockets.h"
#include "platform/Threads.h"
#include "support/Substitution.h"
#include "support/WaitUntil.h"

#include <atomic>
#include <functional>
#include <mutex>
#include <random>
#include <string>

#include <gmock/gmock.h>

// Opens what is protected.
class TestListener : public CSPortListener
{
public:
    using CSPortListener::m_oListeners;
    using CSPortListener::ReceiveMsg;
    using CSPortListener::StopListener;
};

inline sockaddr_in Loopback(unsigned short nPort)
{
    sockaddr_in oAddress{};
    oAddress.sin_family = AF_INET;
    oAddress.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    oAddress.sin_port = htons(nPort);
    return oAddress;
}

// A port that nobody listens on, below those that the system gives out by itself.
inline unsigned short FreePort()
{
    WSADATA oData{};
    EXPECT_EQ(Sockets().WSAStartup(0x0202, &oData), 0);   // the test's own, for its clients
    static auto s_nNext = static_cast<unsigned short>(10000 + std::random_device()() % 20000);
    for (;;)
    {
        const sockaddr_in oAddress = Loopback(++s_nNext);
        const NativeSocket nSocket = ::socket(AF_INET, SOCK_STREAM, 0);
        const bool bFree = ::bind(nSocket, reinterpret_cast<const sockaddr*>(&oAddress), sizeof oAddress) == 0;
        CloseNative(nSocket);
        if (bFree)
            return s_nNext;
    }
}

class Client
{
public:
    explicit Client(unsigned short nPort) : m_nSocket(::socket(AF_INET, SOCK_STREAM, 0))
    {
        const sockaddr_in oAddress = Loopback(nPort);
        EXPECT_EQ(::connect(m_nSocket, reinterpret_cast<const sockaddr*>(&oAddress), sizeof oAddress), 0);
    }
    ~Client() { CloseNative(m_nSocket); }
    Client(const Client&) = delete;
    Client& operator=(const Client&) = delete;

    void Send(const std::string& strText) { ::send(m_nSocket, strText.data(), static_cast<int>(strText.size()), 0); }

    // The next close sends a reset.
    void Reset()
    {
        const linger oLinger{1, 0};
        ::setsockopt(m_nSocket, SOL_SOCKET, SO_LINGER, reinterpret_cast<const char*>(&oLinger), sizeof oLinger);
    }

    // All that comes until the listener closes.
    std::string Receive()
    {
        std::string strText;
        char achPiece[4096];
        for (;;)
        {
            const auto nRead = ::recv(m_nSocket, achPiece, sizeof achPiece, 0);
            if (nRead <= 0)
                return strText;
            strText.append(achPiece, static_cast<std::size_t>(nRead));
        }
    }

private:
    const NativeSocket m_nSocket;
};

class PortListener : public testing::Test
{
protected:
    PortListener()
    {
        // For the whole process: a thread that is left behind still comes through it.
        static const auto* const pCounting = new Substitution<SocketCalls>([](SocketCalls& oCalls) {
            oCalls.accept = [](SOCKET hSocket, sockaddr* pAddress, int* pnLength) WINAPI {
                ++s_nAccepts;
                const SOCKET hConnection = s_oNative.accept(hSocket, pAddress, pnLength);
                return s_bFailAccept ? INVALID_SOCKET : hConnection;
            };
            oCalls.recv = [](SOCKET hSocket, char* pBuffer, int nMost, int nFlags)
                              WINAPI { return ++s_nReads, s_oNative.recv(hSocket, pBuffer, nMost, nFlags); };
        });
        static_cast<void>(pCounting);
        CSPortListener().SetContext(this);   // class-wide
    }

    static constexpr const SocketCalls& s_oNative = PlatformService<SocketCalls>::s_oNative;
    static inline std::atomic<int> s_nAccepts = 0;   // begun
    static inline std::atomic<int> s_nReads = 0;
    static inline std::atomic<bool> s_bFailAccept = false;

    static unsigned long Handle(unsigned short nPort, const char* pszRequest, ZVString& oReply, void* pTest)
    {
        auto& oThis = *static_cast<PortListener*>(pTest);
        const auto answer = [&] {
            const std::lock_guard oHold(oThis.m_oLock);
            oThis.m_oRequests.push_back(std::to_string(nPort - oThis.m_nPort) + ':' + pszRequest);
            return oThis.m_answer;
        }();
        answer(pszRequest, oReply);
        return 500;   // of no consequence
    }

    // The requests so far, each with its port as a distance from the first.
    std::vector<std::string> Requests()
    {
        const std::lock_guard oHold(m_oLock);
        return m_oRequests;
    }

    // To be done by the handler from the next request on.
    void Answer(std::function<void(const char*, ZVString&)> answer)
    {
        const std::lock_guard oHold(m_oLock);
        m_answer = std::move(answer);
    }

    std::string Fetch(const std::string& strRequest)
    {
        Client oClient(m_nPort);
        oClient.Send(strRequest);
        return oClient.Receive();
    }

    std::mutex m_oLock;
    std::vector<std::string> m_oRequests;
    std::function<void(const char*, ZVString&)> m_answer = [](const char* psz, ZVString& o) { o.Assign(psz); };
    const unsigned short m_nPort = FreePort();
    TestListener m_oListener;
};
