// The listener answers real clients on its ports, whatever they do, and stops.
#include "ListenerFixture.h"

#include <atomic>
#include <thread>

using testing::ElementsAre;
using testing::IsEmpty;

namespace
{
const std::string strHeaderOf5 = "HTTP/1.0 200 OK\r\nServer: Zevrin Meridor 3.0\r\nPragma: no-cache\r\n"
                                 "Content-type: text/xml\r\nContent-length: 5\r\n\r\n";
}

TEST_F(PortListener, SendsTheReplyBareOrBehindTheHeaderAsItIsSwitched)
{
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
