// A resolver of the test's own over a name service of the test's own.
#pragma once

#include "ZevrinUtils/DNSResolver.h"
#include "platform/Sockets.h"
#include "platform/Threads.h"
#include "support/Substitution.h"
#include "support/TraceCapture.h"

#include <atomic>
#include <memory>

#include <gmock/gmock.h>

struct CSDNSResolverPeer
{
    static std::unique_ptr<CSDNSResolver> Make() { return std::unique_ptr<CSDNSResolver>(new CSDNSResolver); }
    static void Stop(CSDNSResolver& oResolver) { oResolver.Stop(); }
};

// Knows every address but 10.9.x.x (no entry) and 10.8.x.x (an entry without a name). The name counts the
// lookups: "name-1" for the first. Lookups can be held back, as by a silent server.
class NameService
{
public:
    void Hold() { s_bHeld = true; }
    void Release() { s_bHeld = false; }

    // The addresses looked up so far, the one under way included, once there are so many.
    std::vector<std::string> Lookups(std::size_t nAtLeast = 0) const
    {
        WaitUntil([&] { return Noted().size() >= nAtLeast; });
        return Noted();
    }

private:
    static std::vector<std::string> Noted(const std::string& strMore = "")
    {
        const std::lock_guard oHold(s_oLock);
        if (!strMore.empty())
            s_oLookups.push_back(strMore);
        return s_oLookups;
    }

    static hostent* Answer(const char* pAddress)
    {
        const auto* const p = reinterpret_cast<const unsigned char*>(pAddress);
        static std::string s_strName;
        s_strName = "name-" + std::to_string(Noted(std::to_string(p[0]) + '.' + std::to_string(p[1]) + '.' +
                                                   std::to_string(p[2]) + '.' + std::to_string(p[3]))
                                                 .size());
        WaitUntil([] { return !s_bHeld; });
        static hostent s_oHost;
        s_oHost.h_name = p[1] == 8 ? nullptr : s_strName.data();
        return p[1] == 9 ? nullptr : &s_oHost;
    }

    static inline std::mutex s_oLock;
    static inline std::vector<std::string> s_oLookups;
    static inline std::atomic<bool> s_bHeld = false;
    const Substitution<SocketCalls> m_oSubstitution{
        &SocketCalls::gethostbyaddr, [](const char* pAddress, int, int) WINAPI { return Answer(pAddress); }};
};

class DNSResolver : public testing::Test
{
protected:
    std::string Ask(const std::string& strAddress) { return m_pResolver->GetDNSName(strAddress.c_str()); }

    // Waits until all that was asked for before is answered. Asking for it again would not do: what is asked
    // for during its lookup is looked up once more.
    void WaitForAnswers()
    {
        const std::string strLast = "last-" + std::to_string(++m_nWaits);   // no address: needs no lookup
        Ask(strLast);
        EXPECT_TRUE(m_oTrace.WaitFor("4 Resolving DNS for " + strLast));
    }

    std::string AnswerFor(const std::string& strAddress)
    {
        Ask(strAddress);
        WaitForAnswers();
        return Ask(strAddress + ":0");
    }

    int m_nWaits = 0;
    TraceCapture m_oTrace;
    NameService m_oNames;
    std::unique_ptr<CSDNSResolver> m_pResolver = CSDNSResolverPeer::Make();
};
