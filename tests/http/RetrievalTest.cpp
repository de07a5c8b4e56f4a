// The HTTP client against the servers that with-servers sets up.
#include "ZevrinUtils/HttpServices.h"
#include "ZevrinUtils/framework/Exception.h"
#include "support/Wine.h"

#include <array>
#include <cstdlib>
#include <sstream>
#include <thread>

#include <gmock/gmock.h>

namespace
{
using testing::EndsWith;

struct Client : CHttpServices
{
    using CHttpServices::m_oHostNameToIp;
};

// Writes down what it hears.
struct Observer : CHTTPRequestObserver
{
    void OnContentLength(unsigned long nBytes) override { strHeard += " length=" + std::to_string(nBytes); }
    bool bOnDataBlock(unsigned long nBytes) override
    {
        strHeard += " " + std::to_string(nBytes);
        return true;
    }
    bool bKeepRunning() override { return true; }
    void OnRequestEnd(bool bSuccess) override { strHeard += bSuccess ? " good" : " bad"; }
    void OnDialogShown(bool bShown) override { strHeard += bShown ? " shown" : " gone"; }

    std::string strHeard;
};

// One retrieval into a stream, by its client.
struct Result
{
    explicit Result(const std::string& strUrl, bool bHostCache = false, CHttpServices&& oClient = CHttpServices())
    {
        Observer oObserver;
        oClient.eCopyURLFile(strUrl.c_str(), oOutput, strNewHost, &oObserver, 0, 0, &strError, bHostCache);
        strContent = oOutput.str();
        strHeard = oObserver.strHeard;
    }

    std::ostringstream oOutput;
    CString strNewHost, strError;
    std::string strContent, strHeard;
};

std::string Server(const char* pszName)
{
    return "127.0.0.1:" + std::string(std::getenv(pszName));
}

std::string Url(const std::string& strPath, const char* pszServer = "ZV_HTTP")
{
    return "http://" + Server(pszServer) + strPath;
}

std::string Numbers(int nCount)
{
    std::string strText;
    for (int n = 1; n <= nCount; ++n)
        strText += std::to_string(10000000000 + n).substr(1);
    return strText;
}

CString ErrorCode(int nStatus)
{
    return ("Failed to send Http Get request (Error Code " + std::to_string(nStatus) + ")").c_str();
}
}

TEST(Retrieval, GivesTheWholeAnswer)
{
    for (const auto& [strPath, strContent, strHeard] : std::initializer_list<std::array<std::string, 3>>{
             {"/plain", Numbers(300), " length=3000 1024 1024 952 good"},
             {"/empty", "", " length=0 good"},
             {"/zeros", {"a\0b\0\0c", 6}, " length=6 6 good"},
             {"/chunked", Numbers(300), " 1024 1024 952 good"},
             {"/no-length", Numbers(300), " 1024 1024 952 good"},
             {"/slow", "late but whole", " good"},
             {"/redirect/301", Numbers(300), " length=3000 1024 1024 952 good"},
             {"/redirect/302", Numbers(300), " length=3000 1024 1024 952 good"},
             {"/redirect/303", Numbers(300), " length=3000 1024 1024 952 good"},
             {"/redirect/chain", Numbers(300), " length=3000 1024 1024 952 good"},
         })
    {
        const Result oResult(Url(strPath));
        EXPECT_EQ(oResult.strContent, strContent) << strPath;
        EXPECT_THAT(oResult.strHeard, EndsWith(strHeard)) << strPath;
        EXPECT_EQ(oResult.strError, "") << strPath;
    }
}

TEST(Retrieval, TellsWhyItFailed)
{
    const int nRefused = UnderWine() ? 302 : 0;   // Wine keeps the status of the redirect
    for (const auto& [strUrl, strError, pszHeard] :
         std::initializer_list<std::tuple<std::string, CString, const char*>>{
             {Url("/status/404"), ErrorCode(404), " bad"},
             {Url("/status/204"), ErrorCode(204), " bad"},
             {Url("/locked"), ErrorCode(401), " bad"},
             {Url("/nothing"), ErrorCode(0), UnderWine() ? " bad" : " gone bad"},
             {Url("/", "ZV_REFUSED"), ErrorCode(0), " gone bad"},
             {"http://no-such-name.invalid/", ErrorCode(0), " gone bad"},
             {Url("/redirect/expired"), ErrorCode(nRefused), " gone bad"},
             {Url("/redirect/unknown"), ErrorCode(nRefused), " gone bad"},
         })
    {
        const Result oResult(strUrl);
        EXPECT_EQ(oResult.strError, strError) << strUrl;
        EXPECT_EQ(oResult.strHeard, pszHeard) << strUrl;
        EXPECT_EQ(oResult.strContent, "") << strUrl;
    }
}

TEST(Retrieval, RedirectsWithoutEndFail)
{
    if (UnderWine())
        GTEST_SKIP() << "Wine follows them for ever";
    EXPECT_EQ(Result(Url("/redirect/loop")).strError, ErrorCode(0));
}

TEST(Retrieval, AbortFromAnotherThreadHoldsUntilItIsCleared)
{
    CHttpServices oClient;
    CString strError;
    const auto get = [&](const char* pszPath) {
        std::ostringstream oOutput;
        CString strHost;
        return oClient.eCopyURLFile(Url(pszPath).c_str(), oOutput, strHost, nullptr, 0, 0, &strError, 0);
    };
    std::thread oOther([&oClient] {
        std::this_thread::sleep_for(std::chrono::milliseconds(300));
        oClient.Abort(1);
    });
    EXPECT_EQ(get("/trickle"), CHttpServices::eHttpReqCanceled);   // would last for a day
    oOther.join();
    EXPECT_EQ(strError, "Request canceled by user.");
    EXPECT_EQ(get("/plain"), CHttpServices::eHttpReqCanceled);
    oClient.Abort(0);
    EXPECT_EQ(get("/plain"), CHttpServices::eHttpReqOK);
}

TEST(Retrieval, AnAnswerThatBreaksOffThrows)
{
    if (UnderWine())
        GTEST_SKIP() << "Wine takes an answer that breaks off for a whole one";
    for (const auto& [pszPath, strArrived] :
         {std::pair{"/cut/length", Numbers(300)}, {"/cut/chunks", std::string("hello")}})
    {
        std::ostringstream oOutput;
        CString strHost;
        Observer oObserver;
        CHttpServices oClient;
        try
        {
            oClient.eCopyURLFile(Url(pszPath).c_str(), oOutput, strHost, &oObserver, 0, 0, nullptr, 0);
            ADD_FAILURE() << pszPath << ": nothing was thrown";
        }
        catch (CException* pError)
        {
            pError->Delete();
        }
        EXPECT_EQ(oOutput.str(), strArrived);
        EXPECT_THAT(oObserver.strHeard, EndsWith(std::to_string(strArrived.size() % 1024)));   // and no end
    }
}

TEST(Retrieval, AsksAHostWhereItHasMovedTo)
{
    for (int n = 0; n < 2; ++n)   // a host with a port is asked each time
    {
        const Result oResult(Url("/plain", "ZV_MOVED"), true);
        EXPECT_EQ(oResult.strContent, Numbers(300));
        EXPECT_EQ(oResult.strNewHost, Server("ZV_HTTP").c_str());
        EXPECT_EQ(oResult.strError, ErrorCode(302));
    }
    EXPECT_EQ(Result(Url("/plain", "ZV_MOVED")).strError, ErrorCode(404));   // and not remembered
    Client::m_oHostNameToIp["moved.invalid"] = Server("ZV_HTTP").c_str();
    EXPECT_EQ(Result("http://moved.invalid:1/plain").strContent, Numbers(300));
}

namespace
{
Result GetSecurely(const char* pszPort)
{
    CHttpServices oClient;
    oClient.SetAuthenticationDetails("", "", true, static_cast<unsigned short>(std::atoi(std::getenv(pszPort))));
    return Result("http://localhost:1/", false, std::move(oClient));
}
}

TEST(Secure, ForgivesNameAndDateAtOnce)
{
    if (UnderWine())
        GTEST_SKIP() << "no authority can be made known to Wine for a test";
    for (const char* const pszPort : {"ZV_TLS_GOOD", "ZV_TLS_EXPIRED", "ZV_TLS_OTHER_NAME"})
        EXPECT_EQ(GetSecurely(pszPort).strHeard, " length=22 22 good") << pszPort;
}

TEST(Secure, ForgivesTheAuthorityOnASecondTryAndNothingElse)
{
    for (const char* const pszPort : {"ZV_TLS_SELF_SIGNED", "ZV_TLS_UNKNOWN"})
    {
        const Result oResult = GetSecurely(pszPort);
        EXPECT_EQ(oResult.strContent, "secure pragma=no-cache") << pszPort;
        EXPECT_EQ(oResult.strHeard, " gone length=22 22 good") << pszPort;
    }
    EXPECT_EQ(GetSecurely("ZV_TLS_FOR_CLIENTS").strHeard, " gone bad");
}

// With a proxy for anybody in force.
TEST(Proxied, AHostThatHasMovedIsRememberedByItsName)
{
    const Result oFirst("http://old.test/request", true);
    EXPECT_THAT(oFirst.strContent, testing::HasSubstr("GET /request host=new.test agent=ZEVRIN_UTILS\nvia=1.1 "));
    EXPECT_EQ(oFirst.strNewHost, "new.test");
    EXPECT_EQ(oFirst.strError, ErrorCode(302));
    const Result oLater("http://old.test/request", true);
    EXPECT_EQ(oLater.strContent, oFirst.strContent);
    EXPECT_EQ(oLater.strNewHost, "new.test");
    EXPECT_EQ(oLater.strError, "");   // no probe
}
