// Mail hands over each field to the mail system, and gives each failure once.
#include "ZevrinUtils/SimpleMapi.h"

#include "MessageText.h"
#include "platform/Memory.h"
#include "platform/Modules.h"
#include "platform/Profile.h"
#include "support/Substitution.h"

#include <cstdlib>
#include <memory>
#include <utility>

#include <gtest/gtest.h>

struct CSIMapiPeer : CSIMapi
{
    using CSIMapi::m_bIsMailAvail;
    using CSIMapi::m_hInstMail;
};

namespace
{
std::string s_strLog;   // what the mail system has seen
ULONG s_nResult;        // what it answers
int s_nModule;          // how many times it was loaded; 0: there is none
bool s_bEntry, s_bMemory;
UINT s_nProfile;
DWORD s_nFound;

ULONG WINAPI TakeMessage(LHANDLE hSession, DWORD_PTR hParent, lpMapiMessage pMessage, FLAGS nFlags, ULONG nReserved)
{
    s_strLog += TextOf(hSession, hParent, *pMessage, nFlags, nReserved);
    return s_nResult;
}

// A mail system of the test's own, loaded at a new address each time.
class SimpleMapi : public testing::Test
{
protected:
    SimpleMapi()
    {
        s_strLog.clear();
        s_nResult = 0;
        s_nModule = 1;
        s_bEntry = s_bMemory = true;
    }

    static std::pair<unsigned, CString> FailureOf(CSIMapi& oMail)
    {
        unsigned nCode = 99;
        CString strText("before");
        oMail.GetLastError(nCode, strText);
        return {nCode, strText};
    }

    const Substitution<ModuleCalls> m_oModules{[](ModuleCalls& oCalls) {
        oCalls.LoadLibraryA = [](LPCSTR pszName) WINAPI {
            s_strLog += std::string("load ") + pszName + '\n';
            return s_nModule ? reinterpret_cast<HMODULE>(static_cast<std::uintptr_t>(s_nModule++)) : nullptr;
        };
        oCalls.FreeLibrary = [](HMODULE hModule) WINAPI -> BOOL {
            s_strLog += "free " + std::to_string(reinterpret_cast<std::uintptr_t>(hModule)) + '\n';
            return TRUE;
        };
        oCalls.GetProcAddress = [](HMODULE, LPCSTR pszName) WINAPI {
            EXPECT_STREQ(pszName, "MAPISendMail");
            return s_bEntry ? reinterpret_cast<FARPROC>(reinterpret_cast<void*>(&TakeMessage)) : FARPROC{};
        };
        oCalls.SearchPathA = [](LPCSTR pszPath, LPCSTR pszFile, LPCSTR pszExtension, DWORD, LPSTR, LPSTR*) WINAPI {
            s_strLog += std::string("search ") + pszFile + (pszPath || pszExtension ? " elsewhere" : "");
            return s_nFound;
        };
    }};
    // Without memory the block is lost; here freed for the sake of the check for leaks.
    const Substitution<MemoryCalls> m_oMemory{&MemoryCalls::realloc, [](void* p, std::size_t n) {
                                                  return s_bMemory ? std::realloc(p, n) : (std::free(p), nullptr);
                                              }};
};

using Failure = std::pair<unsigned, CString>;
}

TEST_F(SimpleMapi, Send_HandsOverEachFieldAndGrowsTheTextByABlankForEachAttachment)
{
    CSIMapi oMail;
    s_strLog.clear();
    EXPECT_EQ(oMail.Send(0), 1);
    EXPECT_EQ(std::exchange(s_strLog, ""), "flags 9 subject null text ''\nfrom 0 null\n");
    const std::string strPath = "p1";
    EXPECT_EQ(oMail.To("a"), 1);
    EXPECT_EQ(oMail.Attach(strPath.c_str(), "one"), 1);
    EXPECT_EQ(oMail.Cc("b"), 1);
    EXPECT_EQ(oMail.To("a"), 1);
    EXPECT_EQ(oMail.Attach(nullptr, "two"), 1);
    oMail.SetSubject("s");
    oMail.SetFrom("me");
    oMail.SetText("dropped");
    oMail.SetText(std::string("hello").c_str());
    EXPECT_EQ(oMail.Send(0x12), 1);
    EXPECT_EQ(oMail.Send(0x80000000), 1);
    const std::string strRecipients = "from 0 'me'\n1 'a'\n2 'b'\n1 'a'\n";
    EXPECT_EQ(s_strLog, "flags 27 subject 's' text 'hello  '\n" + strRecipients +
                            "at 5 'p1' as 'one'\nat 6 null as 'two'\nflags 2147483657 subject 's' text 'hello    '\n" +
                            strRecipients + "at 7 'p1' as 'one'\nat 8 null as 'two'\n");
}

TEST_F(SimpleMapi, GetLastError_GivesEachFailureOnceAndNoSuccessClearsIt)
{
    CSIMapi oMail;
    EXPECT_EQ(FailureOf(oMail), (Failure{0, ""}));
    for (const auto& [nResult, pszText] :
         {std::pair{1ul, "The user canceled one of the dialog boxes. No message was sent."},
          {25, "One or more recipients were invalid or did not resolve to any address."},
          {26, "Unknown error."}})
    {
        s_nResult = static_cast<ULONG>(nResult);
        EXPECT_EQ(oMail.Send(0), 0);
        s_nResult = 0;
        EXPECT_EQ(oMail.Send(0), 1);
        EXPECT_EQ(FailureOf(oMail), (Failure{6, pszText}));
        EXPECT_EQ(FailureOf(oMail), (Failure{0, ""}));
    }
    // Without memory what was added before is lost as well.
    oMail.To("lost");
    s_bMemory = false;
    EXPECT_EQ(oMail.To("refused"), 0);
    EXPECT_EQ(FailureOf(oMail), (Failure{3, "Failed to add a recipient to the TO section"}));
    EXPECT_EQ(oMail.Attach("refused", "refused"), 0);
    EXPECT_EQ(FailureOf(oMail), (Failure{5, "Failed to attach a file to the Email"}));
    s_bMemory = true;
    oMail.Cc("kept");
    s_strLog.clear();
    oMail.Send(0);
    EXPECT_EQ(s_strLog, "flags 9 subject null text ''\nfrom 0 null\n0 null\n2 'kept'\n");
    s_bMemory = false;
    EXPECT_EQ(oMail.Cc("refused"), 0);
    EXPECT_EQ(FailureOf(oMail), (Failure{4, "Failed to add a recipient to the CC section"}));
}

TEST_F(SimpleMapi, TheFirstObjectToGoUnloadsTheLibraryForAll)
{
    auto pFirst = std::make_unique<CSIMapi>();
    auto pSecond = std::make_unique<CSIMapi>();
    pFirst.reset();
    EXPECT_EQ(CSIMapiPeer::m_hInstMail, nullptr);
    pSecond.reset();
    s_bEntry = false;
    auto pNoEntry = std::make_unique<CSIMapi>();
    const auto [nCode, strText] = FailureOf(*pNoEntry);
    EXPECT_TRUE(nCode == 2 && !strText.IsEmpty());
    pNoEntry.reset();
    EXPECT_EQ(s_strLog, "load MAPI32.DLL\nfree 1\nload MAPI32.DLL\nfree 2\n");
    s_nModule = 0;
    CSIMapi oNoLibrary;
    const auto [nMissing, strMissing] = FailureOf(oNoLibrary);
    EXPECT_TRUE(nMissing == 1 && !strMissing.IsEmpty() && strMissing != strText);
    EXPECT_EQ(oNoLibrary.To("a"), 1);
}

TEST_F(SimpleMapi, HasEmail_AsksProfileAndSearchPathOnceForTheProcess)
{
    const auto answer = [](LPCSTR pszSection, LPCSTR pszKey, int nDefault) WINAPI -> UINT {
        s_strLog += std::string(pszSection) + pszKey + std::to_string(nDefault) + ' ';
        return s_nProfile;
    };
    const Substitution oProfile(&ProfileCalls::GetProfileIntA, answer);
    for (const auto& [nProfile, nFound, nAnswer, pszLog] : {std::tuple{0u, 9u, 0, "MAILMAPI0 "},
                                                            {1, 0, 0, "MAILMAPI0 search MAPI32.DLL"},
                                                            {7, 9, 1, "MAILMAPI0 search MAPI32.DLL"}})
    {
        s_strLog.clear();
        std::tie(s_nProfile, s_nFound) = std::pair(nProfile, nFound);
        CSIMapiPeer::m_bIsMailAvail = -1;
        EXPECT_EQ(CSIMapi::HasEmail(), nAnswer);
        EXPECT_EQ(CSIMapi::HasEmail(), nAnswer);
        EXPECT_EQ(s_strLog, pszLog);
    }
}
