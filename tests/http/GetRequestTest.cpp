// The exchange of requests and retrievals over prepared answers.
#include "FakeInternet.h"

#include <sstream>
#include <thread>

#include <gtest/gtest.h>

namespace
{
// Of an exchange that goes no further; 0: no answer.
Answer Status(DWORD nStatus)
{
    return {nStatus, "HTTP/1.1 " + std::to_string(nStatus) + " Text\r\n\r\n", "", ~0u};
}
Answer Redirect(const std::string& strHeaders)
{
    return {302, "HTTP/1.1 302 Found\r\n" + strHeaders + "\r\n", "", ~0u};
}
std::string ErrorCode(DWORD nStatus)
{
    return "Failed to send Http Get request (Error Code " + std::to_string(nStatus) + ")";
}
std::string Open()
{
    return {FakeInternet::s_oOpen.begin(), FakeInternet::s_oOpen.end()};
}
}

TEST(GetRequest, MakesEachExchangeStepByStep)
{
    const std::string strPlain = "as ZEVRIN_UTILS 0;to :@h:80;GET /x?y 400000;send;";
    const std::string strSecure = "as ZEVRIN_UTILS 8388608;to u:p@h:444;GET / C03100;send;";
    const std::string strAsked = "dialog 7;", strAgain = "dialog 7;send;", strForgiven = "set 31=12544;send;";
    const std::string strClosed = "close r;close c;close s;", strThrown = "The request failed (error 12004)";
    const std::string strBoth = "dialog 1;dialog 0;";
    constexpr DWORD nGiven = ERROR_INTERNET_FORCE_RETRY, nCanceled = ERROR_CANCELLED;
    struct Row
    {
        const char* pszUrl;
        std::vector<DWORD> anStatuses;
        std::deque<DWORD> oDialogs;
        std::string strError, strLog, strHeard;
    };
    const Row aRows[] = {
        {"http://h/x?y", {200}, {}, "", strPlain, ""},
        {"http://h/x?y", {0}, {}, ErrorCode(0), strPlain, "dialog 0;"},
        {"http://h/x?y", {407, 200}, {nGiven}, "", strPlain + strAgain, strBoth},
        {"http://h/x?y", {407}, {nGiven}, ErrorCode(407), strPlain + strAgain, strBoth},
        {"http://h/x?y", {407}, {nCanceled}, ErrorCode(407), strPlain + strAsked, strBoth},
        {"http://h:9/", {0, 200}, {}, "", strSecure + strForgiven, "dialog 0;"},
        {"http://h/", {0}, {}, strThrown, strSecure + strForgiven + strClosed, "dialog 0;"},
        {"http://h/", {407, 407, 200}, {nGiven, nCanceled}, "", strSecure + strAgain + strAgain, strBoth + "dialog 1;"},
        {"http://h/", {407}, {nCanceled, nGiven}, ErrorCode(407), strSecure + strAsked + strAgain, strBoth + strBoth},
        {"https://h/", {200}, {}, "Failed to parse the given URL - https://h/", "", ""}};
    for (const Row& o : aRows)
    {
        SCOPED_TRACE(o.pszUrl + o.strLog);
        std::deque<Answer> oAnswers;
        for (const DWORD nStatus : o.anStatuses)
            oAnswers.push_back(Status(nStatus));
        FakeInternet oInternet(oAnswers, o.oDialogs);
        CHttpServicesPeer oClient;
        NotingObserver oObserver;
        oClient.m_pObserver = &oObserver;
        if (!o.strLog.starts_with(strPlain))
            oClient.SetAuthenticationDetails("u", "p", true, 444);
        CString strNewHost, strError;
        EXPECT_EQ(oClient.bOpenGetRequest(o.pszUrl, strNewHost, &strError, 0), o.strError.empty());
        EXPECT_EQ(strError, o.strError.c_str());
        EXPECT_EQ(FakeInternet::s_strLog, o.strLog);
        EXPECT_EQ(oObserver.strHeard, o.strHeard);
        EXPECT_EQ(Open(), o.strLog.empty() || o.strLog.ends_with(strClosed) ? "" : "crs");
        oClient.CloseGetRequest(1);
        EXPECT_EQ(Open(), "");
    }
}

TEST(GetRequest, LearnsHostsFromRedirectsOfTheirRoot)
{
    struct Row
    {
        std::string strHost, strObject;
        Answer oProbe;
        DWORD nStatus;
        const char *pszNewHost, *pszTarget;
    };
    const std::string strTo = "Location: http://new:81/ignored\r\n";
    const Row aRows[] = {
        {"a", "/x?a", Redirect(strTo), 200, "new:81", "new:81;GET /x?new:81"},
        {"b:9", "/x", Redirect(strTo), 200, "new:81", "new:81;GET /x"},
        {"c", "/x:y", Redirect(strTo), 200, "new:81", "c:80;GET /x:y"},
        {"d", "/x", Redirect(strTo), 404, "", "new:81;GET /x"},
        {"e", "/x", Status(200), 200, "", "e:80;GET /x"},
        {"f", "/x", Status(404), 200, "", "f:80;GET /x"},
        {"g", "/x", Redirect("Location: http://new\r\n"), 0, "", ""},
        {"i", "/x", Redirect("Location: https://new/\r\n"), 0, "", ""},
        {"j", "/x", Redirect("Location: http://j/y\r\n"), 200, "", "j:80;GET /x"},
        {"k", "/x", Redirect("Content-Location: http://first/\r\n" + strTo), 200, "first", "first:80;GET /x"},
        {"l", "/x", Redirect("Server: /s\r\n"), 0, "", ""}};   // a host of two lines
    for (const Row& o : aRows)
    {
        SCOPED_TRACE(o.strHost);
        FakeInternet oInternet({o.oProbe, Status(o.nStatus)});
        CHttpServicesPeer oClient;
        CString strNewHost("old"), strStored;
        EXPECT_EQ(oClient.bOpenGetRequest(("http://" + o.strHost + o.strObject).c_str(), strNewHost, nullptr, 1),
                  o.nStatus == 200);
        EXPECT_EQ(strNewHost, o.pszNewHost);
        const std::string strProbed = o.strHost + (o.strHost.size() == 1 ? ":80" : "");
        const std::string strRoot =
            "as ZEVRIN_UTILS 0;to :@" + strProbed + ";GET  600000;send;close r;close c;close s;";
        EXPECT_EQ(FakeInternet::s_strLog,
                  strRoot +
                      (*o.pszTarget ? "as ZEVRIN_UTILS 0;to :@" + (o.pszTarget + std::string(" 400000;send;")) : ""));
        CHttpServicesPeer::m_oHostNameToIp.Lookup(
            (o.strObject.find(':') == std::string::npos ? o.strHost : strProbed).c_str(), strStored);
        EXPECT_EQ(strStored, o.pszNewHost);
    }
    // A known host is asked at once, by a request that does not use the table too, and a port of it wins.
    FakeInternet oInternet({Status(200)});
    CHttpServicesPeer oClient;
    CString strNewHost;
    for (const int bUseHostCache : {0, 1})
    {
        FakeInternet::s_strLog.clear();
        oClient.CloseGetRequest(1);
        EXPECT_TRUE(oClient.bOpenGetRequest("http://a:7/a", strNewHost, nullptr, bUseHostCache));
        EXPECT_EQ(strNewHost, "new:81");
        EXPECT_NE(FakeInternet::s_strLog.find("to :@new:81;GET /a"), std::string::npos) << FakeInternet::s_strLog;
    }
}

TEST(Retrieval, TellsTheObserverBlockByBlockAndLetsTheStrongerEventWin)
{
    struct Row
    {
        std::size_t nBody;
        bool bGoOn, bRunning, bAbort;
        std::ios::iostate nState;
        CHttpServices::eHttpReqRTC eResult;
        const char *pszError, *pszHeard;
    };
    using C = CHttpServices;
    const char* const pszTermination = "Failed because of user request for application termination";
    const Row aRows[] = {
        {0, true, true, true, {}, C::eHttpReqOK, "", "length 9;poll;end 1;"},
        {2000, true, true, false, {}, C::eHttpReqOK, "", "length 9;block 1024;poll;block 976;poll;poll;end 1;"},
        {2000, false, true, false, {}, C::eHttpReqCanceled, "", "length 9;block 1024;poll;"},
        {2000, false, false, false, {}, C::eHttpReqFailed, pszTermination, "length 9;block 1024;poll;end 0;"},
        {2000, false, false, true, {}, C::eHttpReqCanceled, "Request canceled by user.", "length 9;block 1024;"},
        {1, true, true, false, std::ios::failbit, C::eHttpReqFailed, "Falied to write - FAIL", "length 9;end 0;"},
        {1, true, true, false, std::ios::badbit, C::eHttpReqFailed, "Falied to write - BAD", "length 9;end 0;"},
        {1, true, true, false, std::ios::eofbit, C::eHttpReqFailed, "Falied to write - ", "length 9;end 0;"}};
    for (const Row& o : aRows)
    {
        SCOPED_TRACE(o.pszHeard);
        std::string strBody(o.nBody, '\0');
        FakeInternet oInternet({{200, "HTTP/1.1 200 OK\r\n\r\n", strBody, 9}});
        CHttpServicesPeer oClient;
        NotingObserver oObserver;
        oObserver.bGoOn = o.bGoOn;
        oObserver.bRunning = o.bRunning;
        oClient.Abort(o.bAbort);
        std::ostringstream oOutput;
        oOutput.setstate(o.nState);
        CString strNewHost, strError;
        EXPECT_EQ(oClient.eCopyURLFile("http://h/", oOutput, strNewHost, &oObserver, 1, 0, &strError, 0), o.eResult);
        EXPECT_EQ(strError, o.pszError);
        EXPECT_EQ(oObserver.strHeard, o.pszHeard);
        EXPECT_EQ(Open(), "");
        EXPECT_TRUE(o.eResult != C::eHttpReqOK || oOutput.str() == strBody);
    }
}

TEST(Retrieval, AbortFromAnotherThreadHoldsUntilItIsCleared)
{
    using C = CHttpServices;
    FakeInternet oInternet({{200, "HTTP/1.1 200 OK\r\n\r\n", "body"}});
    static CHttpServicesPeer s_oClient;
    struct Aborting : NotingObserver
    {
        bool bOnDataBlock(unsigned long) override
        {
            return std::thread([] { s_oClient.Abort(1); }).join(), true;
        }
    } oAborting;
    CString strContent, strNewHost;
    const auto get = [&](CHTTPRequestObserver* p) {
        return s_oClient.eGetURLFile("http://h/", strContent, strNewHost, p, 0, 0, nullptr, 0);
    };
    EXPECT_EQ(get(&oAborting), C::eHttpReqCanceled);
    EXPECT_EQ(get(nullptr), C::eHttpReqCanceled);
    s_oClient.Abort(0);
    EXPECT_EQ(get(nullptr), C::eHttpReqOK);
}

// Every call of a retrieval fails in turn, once and for good.
TEST(Retrieval, FailsAsPromisedWhateverCallFails)
{
    struct Row
    {
        const char *pszError, *pszHeard, *pszOpen;
    };
    const Row oException{"The request failed (error 12004)", "end 0;", ""};
    const Row oNoAnswer{"Failed to send Http Get request (Error Code 0)", "end 0;", "crs"};
    const Row oFine{"", "length 4;block 4;poll;poll;end 1;", ""};
    const Row oBroken{nullptr, "length 4;", "crs"};   // an exception leaves the retrieval
    const Row oCut{nullptr, "length 4;block 4;poll;", "crs"};
    const Row oUnsent{oNoAnswer.pszError, "dialog 0;end 0;", "crs"};
    // Three that open, the send, the status twice, what has arrived and the length, two reads, three that close.
    const Row aOnce[] = {oException, oException, oException, oUnsent, oFine, oNoAnswer, oFine,
                         oFine,      oBroken,    oCut,       oFine,   oFine, oFine};
    const auto retrieve = [&] {
        const int nFailing = FaultSweep::s_nFirst;
        Row oExpected = nFailing == 0 ? oFine : aOnce[nFailing - 1];
        if (FaultSweep::s_bForGood && nFailing == 5)
            oExpected = oNoAnswer;   // no status at all
        if (FaultSweep::s_bForGood && (nFailing == 7 || nFailing == 8))
            oExpected = {nullptr, nFailing == 7 ? "length 0;" : "length 4;", "crs"};
        SCOPED_TRACE(std::to_string(nFailing) + (FaultSweep::s_bForGood ? " for good" : " once"));
        FakeInternet oInternet({{200, "HTTP/1.1 200 OK\r\n\r\n", "body", 4}});
        CHttpServicesPeer oClient;
        NotingObserver oObserver;
        CString strContent("as it was"), strNewHost, strError;
        try
        {
            const auto eResult =
                oClient.eGetURLFile("http://h/", strContent, strNewHost, &oObserver, 1, 0, &strError, 0);
            ASSERT_NE(oExpected.pszError, nullptr);
            EXPECT_EQ(strError, oExpected.pszError);
            EXPECT_EQ(eResult == CHttpServices::eHttpReqOK, strError.IsEmpty());
            EXPECT_EQ(strContent, strError.IsEmpty() ? "body" : "");
        }
        catch (CInternetException* pError)
        {
            EXPECT_EQ(oExpected.pszError, nullptr);
            EXPECT_EQ(strContent, "as it was");
            pError->Delete();
        }
        EXPECT_EQ(oObserver.strHeard, oExpected.pszHeard);
        EXPECT_EQ(Open(), oExpected.pszOpen);
        oClient.CloseGetRequest(1);
    };
    EXPECT_EQ(FaultSweep::Over(retrieve), static_cast<int>(std::size(aOnce)));
}

TEST(Retrieval, TellsTheSystemTheUrlOrNothingWhenAskedForReachability)
{
    static std::string s_strAsked;
    const auto check = [](LPCSTR pszUrl, DWORD nFlags, DWORD)
                           WINAPI -> BOOL { return s_strAsked = pszUrl, 6 + nFlags; };
    const Substitution oCheck(&InternetCalls::InternetCheckConnectionA, check);
    for (const std::size_t nLength : {0U, 259U, 260U})
    {
        CString strUrl(std::string(nLength, 'u'));
        EXPECT_EQ(CHttpServicesPeer().IsOnline(strUrl), 7);
        EXPECT_EQ(s_strAsked, std::string(nLength % 260, 'u'));
    }
}
