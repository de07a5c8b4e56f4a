// The exchange of requests and retrievals over prepared answers.
#include "FakeInternet.h"

#include <sstream>

#include <gtest/gtest.h>

namespace
{
const Answer oNone{0, "", "", ~0u};
const Answer oOk{200, "HTTP/1.1 200 OK\r\n\r\n", "", ~0u};
const Answer oNotFound{404, "HTTP/1.1 404 No\r\n\r\n", "", ~0u};
const Answer oAsks{407, "HTTP/1.1 407 Ask\r\n\r\n", "", ~0u};

Answer Redirect(const std::string& strHeaders)
{
    return {302, "HTTP/1.1 302 Found\r\n" + strHeaders + "\r\n", "", ~0u};
}
constexpr DWORD nGiven = ERROR_INTERNET_FORCE_RETRY;
}

TEST(GetRequest, MakesEachExchangeStepByStep)
{
    const std::string strPlain = "as ZEVRIN_UTILS 0;to :@h:80;GET /x?y 400000;send;";
    const std::string strSecure = "as ZEVRIN_UTILS 8388608;to u:p@h:444;GET / C03100;send;";
    struct Row
    {
        const char* pszUrl;
        bool bSecure;
        std::deque<Answer> oAnswers;
        std::deque<DWORD> oDialogs;
        int nResult;
        std::string strError, strLog, strHeard;
        const char* pszOpen;
    };
    const std::string strDialog = "dialog 7;";
    const char* const pszAll = "crs";
    for (const Row& o : std::initializer_list<Row>{
             {"http://h/x?y", false, {oOk}, {}, 1, "", strPlain, "", pszAll},
             {"http://h/x?y",
              false,
              {oNone},
              {},
              0,
              "Failed to send Http Get request (Error Code 0)",
              strPlain,
              "dialog 0;",
              pszAll},
             {"http://h/x?y",
              false,
              {oAsks, oOk},
              {nGiven},
              1,
              "",
              strPlain + strDialog + "send;",
              "dialog 1;dialog 0;",
              pszAll},
             {"http://h/x?y",
              false,
              {oAsks},
              {nGiven},
              0,
              "Failed to send Http Get request (Error Code 407)",
              strPlain + strDialog + "send;",
              "dialog 1;dialog 0;",
              pszAll},
             {"http://h/x?y",
              false,
              {oAsks},
              {ERROR_CANCELLED},
              0,
              "Failed to send Http Get request (Error Code 407)",
              strPlain + strDialog,
              "dialog 1;dialog 0;",
              pszAll},
             {"http://h:9/", true, {oNone, oOk}, {}, 1, "", strSecure + "set 31=12544;send;", "dialog 0;", pszAll},
             {"http://h/",
              true,
              {oNone, oNone},
              {},
              0,
              "The request failed (error 12004)",
              strSecure + "set 31=12544;send;close r;close c;close s;",
              "dialog 0;",
              ""},
             {"http://h/",
              true,
              {oAsks, oAsks, oOk},
              {nGiven, ERROR_CANCELLED},
              1,
              "",
              strSecure + strDialog + "send;" + strDialog + "send;",
              "dialog 1;dialog 0;dialog 1;",
              pszAll},
             {"http://h/",
              true,
              {oAsks},
              {ERROR_CANCELLED, nGiven},
              0,
              "Failed to send Http Get request (Error Code 407)",
              strSecure + strDialog + strDialog + "send;",
              "dialog 1;dialog 0;dialog 1;dialog 0;",
              pszAll},
             {"https://h/", true, {oOk}, {}, 0, "Failed to parse the given URL - https://h/", "", "", ""},
         })
    {
        SCOPED_TRACE(o.pszUrl + o.strLog);
        FakeInternet oInternet(o.oAnswers, o.oDialogs);
        CHttpServicesPeer oClient;
        NotingObserver oObserver;
        oClient.m_pObserver = &oObserver;
        if (o.bSecure)
            oClient.SetAuthenticationDetails("u", "p", true, 444);
        CString strNewHost, strError;
        EXPECT_EQ(oClient.bOpenGetRequest(o.pszUrl, strNewHost, &strError, 0), o.nResult);
        EXPECT_EQ(strError, o.strError.c_str());
        EXPECT_EQ(FakeInternet::s_strLog, o.strLog);
        EXPECT_EQ(oObserver.strHeard, o.strHeard);
        EXPECT_EQ(std::string(FakeInternet::s_oOpen.begin(), FakeInternet::s_oOpen.end()), o.pszOpen);
        oClient.CloseGetRequest(1);
        EXPECT_TRUE(FakeInternet::s_oOpen.empty());
    }
}

TEST(GetRequest, LearnsHostsFromRedirectsOfTheirRoot)
{
    struct Row
    {
        const char* pszUrl;
        std::deque<Answer> oAnswers;
        int nResult;
        const char *pszNewHost, *pszProbe, *pszTarget, *pszStored;   // under the key
    };
    const std::string strTo = "Location: http://new:81/ignored\r\n";
    for (const Row& o : std::initializer_list<Row>{
             {"http://a/x?a", {Redirect(strTo), oOk}, 1, "new:81", "a:80", "new:81;GET /x?new:81", "new:81"},
             {"http://b:9/x", {Redirect(strTo), oOk}, 1, "new:81", "b:9", "new:81;GET /x", "new:81"},
             {"http://c/x:y", {Redirect(strTo), oOk}, 1, "new:81", "c:80", "c:80;GET /x:y", "new:81"},
             {"http://d/x", {Redirect(strTo), oNotFound}, 0, "", "d:80", "new:81;GET /x", ""},
             {"http://e/x", {oOk, oOk}, 1, "", "e:80", "e:80;GET /x", ""},
             {"http://f/x", {oNotFound, oOk}, 1, "", "f:80", "f:80;GET /x", ""},
             {"http://g/x", {Redirect("Location: http://new\r\n"), oOk}, 0, "", "g:80", "", ""},
             {"http://i/x", {Redirect("Location: https://new/\r\n"), oOk}, 0, "", "i:80", "", ""},
             {"http://j/x", {Redirect("Location: http://j/y\r\n"), oOk}, 1, "", "j:80", "j:80;GET /x", ""},
             {"http://k/x",
              {Redirect("Content-Location: http://first/\r\n" + strTo), oOk},
              1,
              "first",
              "k:80",
              "first:80;GET /x",
              "first"},
             {"http://l/x", {Redirect("Server: /s\r\n"), oOk}, 0, "", "l:80", "", ""},   // a host of two lines
         })
    {
        SCOPED_TRACE(o.pszUrl);
        FakeInternet oInternet(o.oAnswers);
        CHttpServicesPeer oClient;
        CString strNewHost("old"), strStored;
        EXPECT_EQ(oClient.bOpenGetRequest(o.pszUrl, strNewHost, nullptr, 1), o.nResult);
        EXPECT_EQ(strNewHost, o.pszNewHost);
        std::string strExpected = std::string("as ZEVRIN_UTILS 0;to :@") + o.pszProbe +
                                  ";GET  600000;send;close r;close "
                                  "c;close s;";
        if (*o.pszTarget)
            strExpected += std::string("as ZEVRIN_UTILS 0;to :@") + o.pszTarget + " 400000;send;";
        EXPECT_EQ(FakeInternet::s_strLog, strExpected);
        const std::string strHost(1, o.pszUrl[7]);
        const bool bPort = strchr(o.pszUrl + 5, ':') != nullptr;
        CHttpServicesPeer::m_oHostNameToIp.Lookup((bPort ? o.pszProbe : strHost).c_str(), strStored);
        EXPECT_EQ(strStored, o.pszStored);
    }
    // What is known is asked at once, by a request that does not use the table too, and a port of it wins.
    FakeInternet oInternet({oOk});
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
    for (const Row& o : std::initializer_list<Row>{
             {0, true, true, true, {}, C::eHttpReqOK, "", "length 9;poll;end 1;"},
             {2000, true, true, false, {}, C::eHttpReqOK, "", "length 9;block 1024;poll;block 976;poll;poll;end 1;"},
             {2000, false, true, false, {}, C::eHttpReqCanceled, "", "length 9;block 1024;poll;"},
             {2000, false, false, false, {}, C::eHttpReqFailed, pszTermination, "length 9;block 1024;poll;end 0;"},
             {2000, false, false, true, {}, C::eHttpReqCanceled, "Request canceled by user.", "length 9;block 1024;"},
             {1, true, true, false, std::ios::failbit, C::eHttpReqFailed, "Falied to write - FAIL", "length 9;end 0;"},
             {1, true, true, false, std::ios::badbit, C::eHttpReqFailed, "Falied to write - BAD", "length 9;end 0;"},
             {1, true, true, false, std::ios::eofbit, C::eHttpReqFailed, "Falied to write - ", "length 9;end 0;"},
         })
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
        EXPECT_TRUE(FakeInternet::s_oOpen.empty());
        EXPECT_TRUE(o.eResult != C::eHttpReqOK || oOutput.str() == strBody);
    }
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
    const Row aOnce[] = {oException,
                         oException,
                         oException,
                         {oNoAnswer.pszError, "dialog 0;end 0;", "crs"},   // the send
                         oFine,
                         oNoAnswer,                                       // the status, twice
                         {"", "length 4;block 4;poll;poll;end 1;", ""},   // what has arrived: the header tells
                         oFine,
                         oBroken,
                         {nullptr, "length 4;block 4;poll;", "crs"},
                         oFine,
                         oFine,
                         oFine};
    for (const bool bForGood : {false, true})
        for (int nFailing = 1; nFailing <= static_cast<int>(std::size(aOnce)); ++nFailing)
        {
            Row oExpected = aOnce[nFailing - 1];
            if (bForGood && nFailing == 5)
                oExpected = oNoAnswer;   // no status at all
            if (bForGood && (nFailing == 7 || nFailing == 8))
                oExpected = {nullptr, nFailing == 7 ? "length 0;" : "length 4;", "crs"};
            SCOPED_TRACE(std::to_string(nFailing) + (bForGood ? " for good" : " once"));
            FakeInternet oInternet({{200, "HTTP/1.1 200 OK\r\n\r\n", "body", 4}});
            FakeInternet::s_nFailing = nFailing;
            FakeInternet::s_bForGood = bForGood;
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
            EXPECT_EQ(std::string(FakeInternet::s_oOpen.begin(), FakeInternet::s_oOpen.end()), oExpected.pszOpen);
            oClient.CloseGetRequest(1);
        }
}

TEST(Retrieval, TellsTheSystemTheUrlOrNothingWhenAskedForReachability)
{
    FakeInternet oInternet({oOk});
    CHttpServicesPeer oClient;
    for (const std::size_t nLength : {0, 1, 259, 260})
    {
        CString strUrl(std::string(nLength, 'u'));
        FakeInternet::s_strLog.clear();
        EXPECT_EQ(oClient.IsOnline(strUrl), 7);
        EXPECT_EQ(FakeInternet::s_strLog, "check " + (nLength < 260 ? std::string(nLength, 'u') : "") + " 1;");
    }
}
