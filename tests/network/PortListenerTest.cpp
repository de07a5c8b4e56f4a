// The listener answers real clients on its ports, whatever they do, and stops; when platform calls fail it leaves
// nothing behind.
#include "ListenerFixture.h"

#include "network/Reply.h"
#include "support/FaultSweep.h"

#include <algorithm>
#include <atomic>
#include <cstdlib>
#include <thread>
#include <utility>

using testing::ElementsAre;
using testing::IsEmpty;

TEST_F(PortListener, SendsTheReplyBareOrBehindTheHeaderAsItIsSwitched)
{
    const std::string strHeaderOf5 = "HTTP/1.0 200 OK\r\nServer: Zevrin Meridor 3.0\r\nPragma: no-cache\r\n"
                                     "Content-type: text/xml\r\nContent-length: 5\r\n\r\n";
    ASSERT_EQ(m_oListener.Start(m_nPort, &Handle), 1);
    EXPECT_EQ(Fetch("hello"), "hello");
    CSPortListener().UseHeader(1);   // class-wide
    EXPECT_EQ(Fetch("hello"), strHeaderOf5 + "hello");
    EXPECT_EQ(Fetch("12345" + std::string(1, '\0') + "678"),
              strHeaderOf5 + "12345");   // the request ends at its zero byte
    Answer([](const char*, ZVString& oReply) {
        oReply.Alloc(9);
        std::memcpy(oReply.GetBuffer(), "abcde\0fgh", 9);
    });
    EXPECT_EQ(Fetch("x"), strHeaderOf5 + "abcde");   // and so does the reply
    Answer([](const char*, ZVString&) {});
    EXPECT_EQ(Fetch("x"), "");   // not even the header
    Answer([this](const char* pszRequest, ZVString& oReply) {
        m_oListener.UseHeader(0);
        oReply.Assign(pszRequest);
    });
    EXPECT_EQ(Fetch("hello"), "hello");
    Answer([](const char*, ZVString& oReply) { oReply.Assign(std::string(3000000, 'r').c_str()); });
    EXPECT_EQ(Fetch("x").size(), 3000000u);
}

TEST_F(PortListener, TakesWhatOneReadBringsWhateverTheClientDoes)
{
    ASSERT_EQ(m_oListener.Start(m_nPort, &Handle), 1);
    {
        Client oSplit(m_nPort);
        oSplit.Send("one");
        EXPECT_TRUE(WaitUntil([&] { return Requests().size() == 1; }));
        oSplit.Send("two");
    }
    for (const bool bReset : {false, true})
    {
        Client oClosing(m_nPort);
        if (bReset)
            oClosing.Reset();
    }
    EXPECT_TRUE(WaitUntil([&] { return Requests().size() == 3; }));
    std::atomic<bool> bReset = false;
    Answer([&](const char*, ZVString& oReply) {
        EXPECT_TRUE(WaitUntil([&] { return bReset.load(); }));
        oReply.Assign(std::string(100000, 'r').c_str());   // to a peer that is gone
    });
    {
        Client oResetting(m_nPort);
        oResetting.Send("three");
        EXPECT_TRUE(WaitUntil([&] { return Requests().size() == 4; }));
        oResetting.Reset();
    }
    bReset = true;
    EXPECT_EQ(Fetch("four").size(), 100000u);
    EXPECT_THAT(Requests(), ElementsAre("0:one", "0:", "0:", "0:three", "0:four"));
}

TEST_F(PortListener, ServesTwoPortsAtOnceAndOpensAStoppedOneAgain)
{
    const unsigned short nOther = FreePort();
    std::atomic<int> nInside = 0;
    Answer([&](const char* pszRequest, ZVString& oReply) {
        ++nInside;
        EXPECT_TRUE(WaitUntil([&] { return nInside >= 2; }));   // both handlers at the same time
        oReply.Assign(pszRequest);
    });
    ASSERT_EQ(m_oListener.Start(m_nPort, &Handle), 1);
    ASSERT_EQ(m_oListener.Start(nOther, &Handle), 1);
    EXPECT_EQ(m_oListener.Start(m_nPort, &Handle), 0);   // in use, by this very object
    {
        Client oFirst(m_nPort);
        Client oSecond(nOther);
        oFirst.Send("first");
        oSecond.Send("second");
        EXPECT_EQ(oSecond.Receive(), "second");
        EXPECT_EQ(oFirst.Receive(), "first");
    }
    EXPECT_THAT(Requests(), testing::UnorderedElementsAre("0:first", std::to_string(nOther - m_nPort) + ":second"));
    EXPECT_EQ(m_oListener.Stop(nOther), 1);
    EXPECT_EQ(m_oListener.Stop(nOther), 1);   // also when there is none
    EXPECT_EQ(m_oListener.m_oListeners.size(), 1u);
    EXPECT_EQ(Fetch("still there"), "still there");
    ASSERT_EQ(m_oListener.Start(nOther, &Handle), 1);
    EXPECT_EQ(m_oListener.Stop(), 1);
    EXPECT_THAT(m_oListener.m_oListeners, IsEmpty());
}

TEST_F(PortListener, StopEndsAnIdleThreadWithOneAndAServingOneWithNoughtAndItsReply)
{
    ASSERT_EQ(m_oListener.Start(m_nPort, &Handle), 1);
    EXPECT_EQ(m_oListener.StopListener(1), 0);
    EXPECT_EQ(m_oListener.StopListener(-1), 0);
    EXPECT_TRUE(WaitUntil([] { return s_nAccepts == 1; }));
    const HANDLE hThread = m_oListener.m_oListeners[0]->m_hThread;
    EXPECT_EQ(m_oListener.StopListener(0), 1);
    EXPECT_EQ(Threads().WaitForSingleObject(hThread, 0), WAIT_OBJECT_0);   // the handle stays open

    ASSERT_EQ(m_oListener.Start(m_nPort, &Handle), 1);
    Answer([&](const char*, ZVString& oReply) {
        EXPECT_TRUE(WaitUntil([&] { return std::atomic_ref(m_oListener.m_oListeners[0]->m_hSocket) == ~0u; }));
        oReply.Assign("served to its end");
    });
    Client oClient(m_nPort);
    oClient.Send("x");
    EXPECT_TRUE(WaitUntil([&] { return Requests().size() == 1; }));
    EXPECT_EQ(m_oListener.StopListener(0), 0);
    EXPECT_EQ(oClient.Receive(), "served to its end");
}

TEST_F(PortListener, AStartThatFailsLeavesNothingBehind)
{
    static int s_nClosed, s_nStarted;
    const auto watch = [](SocketCalls& o) {
        FaultSweep::Watch<&SocketCalls::WSAStartup>(o, "WSAStartup", 10091);
        FaultSweep::Watch<&SocketCalls::socket>(o, "socket", INVALID_SOCKET);
        FaultSweep::Watch<&SocketCalls::bind>(o, "bind", SOCKET_ERROR);
        FaultSweep::Watch<&SocketCalls::listen>(o, "listen", SOCKET_ERROR);
        o.closesocket = [](SOCKET hSocket) WINAPI { return ++s_nClosed, s_oNative.closesocket(hSocket); };
    };
    {
        const Substitution<ThreadCalls> oThreads(
            [](ThreadCalls& o) { FaultSweep::Watch<&ThreadCalls::CreateThread>(o, "CreateThread", nullptr); });
        const int nCalls = FaultSweep::Over<SocketCalls>(watch, [&] {
            TestListener oListener;
            EXPECT_EQ(oListener.Start(m_nPort, &Handle), FaultSweep::s_nFirst == 0) << FaultSweep::s_strStruck;
            EXPECT_EQ(oListener.m_oListeners.size(), FaultSweep::s_nFirst == 0);
            oListener.Stop();
            EXPECT_EQ(std::exchange(s_nClosed, 0), FaultSweep::s_oDone["socket"]) << FaultSweep::s_strStruck;
        });
        EXPECT_EQ(nCalls, 5);
    }
    // The layer is started once for each object and stays, but for one of another version.
    static WORD s_nVersion = 0x0202;
    const Substitution<SocketCalls> oLayer([](SocketCalls& o) {
        o.WSAStartup = [](WORD nVersion, LPWSADATA pData) WINAPI {
            const int nResult = s_oNative.WSAStartup(nVersion, pData);
            return pData->wVersion = s_nVersion, ++s_nStarted, nResult;
        };
        o.WSACleanup = []() WINAPI { return --s_nStarted, s_oNative.WSACleanup(); };
    });
    EXPECT_EQ(m_oListener.Start(m_nPort, &Handle) + s_nStarted, 0);
    s_nVersion = 0x0101;
    for (int nStart = 0; nStart < 2; ++nStart)
    {
        ASSERT_EQ(m_oListener.Start(m_nPort, &Handle), 1);
        EXPECT_EQ(Fetch("works"), "works");
        m_oListener.Stop();
        EXPECT_EQ(s_nStarted, 1);
    }
}

TEST_F(PortListener, OnlyAReadThatDoesNotFillTheBufferEndsARequest)
{
    static constexpr int nFull = 0x3ffff;
    static std::vector<int> s_anReads;   // what recv is to answer, last first
    static char s_achBuffer[1 + 0x40000];
    const auto serve = [](SOCKET, char* pBuffer, int nMost, int) WINAPI {
        EXPECT_EQ(nMost, nFull);
        const int nRead = s_anReads.back();
        s_anReads.pop_back();
        std::fill_n(pBuffer, std::max(nRead, 0), 'x');
        return nRead;
    };
    const Substitution oReads(&SocketCalls::recv, serve);
    const Substitution oMemory(&MemoryCalls::malloc, [](std::size_t nSize) -> void* {
        return nSize == sizeof s_achBuffer - 1 ? s_achBuffer + 1 : nullptr;
    });
    for (const auto& [anReads, nExpected] : {std::pair<std::vector<int>, int>{{5}, 5},
                                             {{-1}, 0},
                                             {{0, nFull}, nFull},
                                             {{7, nFull, nFull}, 2 * nFull + 7},
                                             {{-1, nFull}, 2 * nFull}})   // what the full read left is taken once more
    {
        s_anReads = anReads;
        std::fill(std::begin(s_achBuffer), std::end(s_achBuffer), 'g');
        ZVString oMessage(nullptr);
        EXPECT_EQ(TestListener::ReceiveMsg(0, oMessage), 1);
        EXPECT_EQ(oMessage.GetString(), std::string(static_cast<std::size_t>(nExpected), 'x'));
        EXPECT_THAT(s_anReads, IsEmpty());
        EXPECT_EQ(s_achBuffer[0], 'g');   // a failed read writes nothing in front of the buffer
    }
}

TEST_F(PortListener, WantOfMemoryClosesTheConnectionAndTheListenerGoesOn)
{
    static std::atomic<int> s_nWanting;   // how many more answers of malloc are null
    {
        const Substitution oMemory(&MemoryCalls::malloc,
                                   [](std::size_t nSize) { return s_nWanting-- > 0 ? nullptr : std::malloc(nSize); });
        ASSERT_EQ(m_oListener.Start(m_nPort, &Handle), 1);
        s_nWanting = 1;
        EXPECT_EQ(Fetch("lost"), "");
        EXPECT_EQ(Fetch("answered"), "answered");
        Answer([](const char*, ZVString& oReply) {
            oReply.Assign("no buffer for it");
            s_nWanting = 1;
        });
        EXPECT_EQ(Fetch("asked"), "");
        m_oListener.Stop();
    }
    EXPECT_THAT(Requests(), ElementsAre("0:answered", "0:asked"));
}

// Of a reply that does not go out, or not whole, nothing is noticed.
TEST_F(PortListener, SendsAReplyInOnePieceAndOverlooksItsFailure)
{
    static std::vector<int> s_anSent;
    const Substitution oShort(&SocketCalls::send, [](SOCKET, const char*, int nLength, int nFlags) WINAPI {
        s_anSent.push_back(nLength + nFlags);
        return s_anSent.size() == 1 ? 1 : -1;
    });
    ASSERT_EQ(m_oListener.Start(m_nPort, &Handle), 1);
    for (const int bHeader : {0, 1})
    {
        m_oListener.UseHeader(bHeader);
        EXPECT_EQ(Fetch("hello"), "");
    }
    m_oListener.Stop();
    // Turned on between its two looks at the switch, the header goes out as well.
    static int s_nLooks = 0;
    SendReply(0, "hello", [] { return ++s_nLooks == 2; });
    EXPECT_THAT(s_anSent, ElementsAre(5, 108 + 5, 108 + 5));
}

TEST_F(PortListener, AFailedAcceptEndsTheThreadAndLeavesTheRecordUntilTheStop)
{
    ASSERT_EQ(m_oListener.Start(m_nPort, &Handle), 1);
    s_bFailAccept = true;
    const Client oClient(m_nPort);
    EXPECT_EQ(Threads().WaitForSingleObject(m_oListener.m_oListeners[0]->m_hThread, 10000), WAIT_OBJECT_0);
    const Substitution oFake(&ThreadCalls::GetExitCodeThread, [](HANDLE, LPDWORD) WINAPI -> BOOL { return FALSE; });
    EXPECT_EQ(m_oListener.StopListener(0), 1);   // also when the exit code cannot be had
}

// A thread that does not end in time is ended by force where there is such a thing, and left behind otherwise: it
// must then do no harm, whatever comes.
TEST_F(PortListener, AThreadThatDoesNotEndInTimeIsGivenUpAndCallsNoHandler)
{
    static constexpr const auto& s_oNativeThreads = PlatformService<ThreadCalls>::s_oNative;
    static std::atomic<bool> s_bEnded;
    ASSERT_EQ(m_oListener.Start(m_nPort, &Handle), 1);
    auto pSilent = std::make_unique<Client>(m_nPort);
    EXPECT_TRUE(WaitUntil([] { return s_nReads == 1; }));
    {
        const Substitution<ThreadCalls> oFake([](ThreadCalls& oCalls) {
            oCalls.WaitForSingleObject = [](HANDLE hThread, DWORD nLimit) WINAPI {
                EXPECT_TRUE(nLimit == 20000 || nLimit == 5000);   // for it to end, and to be gone by force
                return nLimit == 20000 ? DWORD{WAIT_TIMEOUT} : s_oNativeThreads.WaitForSingleObject(hThread, nLimit);
            };
            oCalls.TerminateThread = [](HANDLE hThread, DWORD nCode) WINAPI {
                const BOOL bEnded = s_oNativeThreads.TerminateThread(hThread, nCode);
                s_bEnded = bEnded != FALSE;
                return bEnded;
            };
        });
        EXPECT_EQ(m_oListener.StopListener(0), 0);
    }
    EXPECT_THAT(m_oListener.m_oListeners, IsEmpty());
    ASSERT_EQ(m_oListener.Start(m_nPort, &Handle), 1);   // the port is free
    EXPECT_EQ(Fetch("new"), "new");
    pSilent->Send("late");
    EXPECT_EQ(s_bEnded ? "" : pSilent->Receive(), "");   // closed by the thread, which then ends
    std::this_thread::sleep_for(std::chrono::milliseconds(50));
    EXPECT_THAT(Requests(), ElementsAre("0:new"));
}

TEST(ZVString, OwnsItsBufferAndLeavesAllocatingToItsMaker)
{
    static std::string s_strFreed;
    struct WatchedText : ZVString
    {
        using ZVString::ZVString;
        void Alloc(unsigned int nSize) override
        {
            s_strFreed += GetBuffer() ? GetBuffer() : "none;";
            ZVString::Alloc(nSize);
        }
    } oText(nullptr);
    oText.Assign("a text;");
    oText.Assign(oText.GetString() + 2);   // from the buffer that it replaces
    EXPECT_EQ(s_strFreed, "none;a text;");
    char* const pszOwn = oText.Detach();
    EXPECT_EQ(oText.GetString(), nullptr);
    oText.Attach(pszOwn);
    oText.Attach(pszOwn);
    EXPECT_STREQ(oText.GetBuffer(), "text;");
    oText.Alloc(3);
    EXPECT_EQ(std::string(oText.GetString(), 3), std::string(3, '\0'));
}
