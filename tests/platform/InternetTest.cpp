// The contract of the HTTP client, the same on every target, with a listener of the library as its server.
#include "platform/Internet.h"
#include "network/ListenerFixture.h"
#include "support/ErrorOf.h"
#include "support/Wine.h"

#include "Environment.h"

#include <map>

namespace
{
constexpr DWORD nStatusCode = HTTP_QUERY_STATUS_CODE | HTTP_QUERY_FLAG_NUMBER;
constexpr DWORD nContentLength = HTTP_QUERY_CONTENT_LENGTH | HTTP_QUERY_FLAG_NUMBER;

const std::string strOk = "HTTP/1.1 200 OK\r\nContent-Type: text/plain\r\n";
const std::map<std::string, std::string> s_oReplies{
    {"/sized", strOk + "Content-Length: 11\r\nConnection: close\r\n\r\nhello world"},
    {"/a%20b", strOk + "Connection: close\r\n\r\nto the end"},
    {"/long", strOk + "Content-Length: 3000000\r\nConnection: close\r\n\r\n" + std::string(3000000, 'l')},
    {"/moved", "HTTP/1.1 302 Found\r\nLocation: /sized\r\nContent-Length: 0\r\nConnection: close\r\n\r\n"},
    {"/missing", "HTTP/1.1 404 Not Found\r\nContent-Length: 0\r\nConnection: close\r\n\r\n"}};

class HttpCalls : public PortListener
{
protected:
    HttpCalls()
    {
        for (const char* pszProxy : {"http_proxy", "HTTP_PROXY", "all_proxy", "ALL_PROXY"})
            Unset(pszProxy);
        Answer([](const char* pszRequest, ZVString& oReply) {
            for (const auto& [strPath, strReply] : s_oReplies)
                if (std::string(pszRequest).starts_with("GET " + strPath + ' '))
                    oReply.Assign(strReply.c_str());
        });
        EXPECT_EQ(m_oListener.Start(m_nPort, &Handle), 1);
        m_hSession = Internet().InternetOpenA("AGENT", INTERNET_OPEN_TYPE_PRECONFIG, nullptr, nullptr, 0);
        m_hConnection = Connect(m_hSession, m_nPort);
    }
    ~HttpCalls() override
    {
        for (const HINTERNET h : {m_hRequest, m_hConnection, m_hSession})
            Internet().InternetCloseHandle(h);
    }

    static HINTERNET Connect(HINTERNET hSession, unsigned short nPort)
    {
        return Internet().InternetConnectA(hSession, "127.0.0.1", nPort, "", "", INTERNET_SERVICE_HTTP, 0, 1);
    }
    HINTERNET Open(HINTERNET hConnection, const char* pszObject, DWORD nFlags = INTERNET_FLAG_KEEP_CONNECTION)
    {
        return m_hRequest =
                   Internet().HttpOpenRequestA(hConnection, "GET", pszObject, nullptr, nullptr, nullptr, nFlags, 1);
    }
    DWORD Send() const { return ErrorOf(Internet().HttpSendRequestA(m_hRequest, nullptr, 0, nullptr, 0)); }

    DWORD Query(DWORD nLevel, DWORD& nValue) const
    {
        DWORD nSize = sizeof nValue;
        return ErrorOf(Internet().HttpQueryInfoA(m_hRequest, nLevel, &nValue, &nSize, nullptr));
    }
    DWORD Status() const
    {
        DWORD nValue = 0;
        EXPECT_EQ(Query(nStatusCode, nValue), 0u);
        return nValue;
    }
    std::string Read(DWORD nMost) const
    {
        std::string strBlock(nMost, '\0');
        DWORD nRead = ~0u;
        EXPECT_TRUE(Internet().InternetReadFile(m_hRequest, strBlock.data(), nMost, &nRead));
        return strBlock.substr(0, nRead);
    }
    DWORD Available() const
    {
        DWORD nAvailable = ~0u;
        EXPECT_TRUE(Internet().InternetQueryDataAvailable(m_hRequest, &nAvailable, 0, 0));
        return nAvailable;
    }

    HINTERNET m_hSession, m_hConnection, m_hRequest = nullptr;
};
}

TEST_F(HttpCalls, GiveTheStatusTheHeadersAndTheBody)
{
    ASSERT_NE(Open(m_hConnection, "/sized"), nullptr);
    for (int nSend = 0; nSend < 2; ++nSend)   // the answer before is dropped
    {
        ASSERT_EQ(Send(), 0u);
        EXPECT_EQ(Status(), 200u);
        DWORD nLength = 0;
        EXPECT_EQ(Query(nContentLength, nLength), 0u);
        EXPECT_EQ(nLength, 11u);
        EXPECT_EQ(Available(), 11u);
        EXPECT_EQ(Read(5), "hello");
    }
    EXPECT_EQ(Available(), 6u);
    EXPECT_EQ(Read(100) + Read(100), " world");
    EXPECT_EQ(Available(), 0u);

    const auto headers = [&](DWORD nSize, char* pBuffer) {
        const DWORD nError =
            ErrorOf(Internet().HttpQueryInfoA(m_hRequest, HTTP_QUERY_RAW_HEADERS_CRLF, pBuffer, &nSize, nullptr));
        return std::pair(nError, nSize);
    };
    const auto [nError, nSize] = headers(0, nullptr);
    EXPECT_EQ(nError, DWORD{ERROR_INSUFFICIENT_BUFFER});
    std::string strHeaders(nSize, '#');
    EXPECT_EQ(headers(nSize - 1, strHeaders.data()), std::pair(nError, nSize));
    EXPECT_EQ(headers(nSize, strHeaders.data()), std::pair(DWORD{0}, nSize - 1));   // without the zero byte
    EXPECT_TRUE(strHeaders.starts_with(strOk) && strHeaders.ends_with(std::string("\r\n\r\n\0", 5))) << strHeaders;
}

TEST_F(HttpCalls, EscapeFollowAndReadToTheEnd)
{
    const struct
    {
        const char *pszObject, *pszAsked;
        DWORD nFlags, nStatus, nLength;
        std::string strBody;
    } aRows[] = {{"/a b", "/a%20b", 0, 200, ~0u, "to the end"},
                 {"/long", "/long", INTERNET_FLAG_PRAGMA_NOCACHE, 200, 3000000, std::string(3000000, 'l')},
                 {"/moved", "/sized", 0, 200, 11, "hello world"},
                 {"/moved", "/moved", INTERNET_FLAG_NO_AUTO_REDIRECT, 302, 0, ""},
                 {"/missing", "/missing", 0, 404, 0, ""}};
    for (const auto& o : aRows)
    {
        SCOPED_TRACE(o.pszObject);
        ASSERT_NE(Open(m_hConnection, o.pszObject, o.nFlags), nullptr);
        ASSERT_EQ(Send(), 0u);
        EXPECT_EQ(Status(), o.nStatus);
        DWORD nLength = 0;
        EXPECT_EQ(Query(nContentLength, nLength), o.nLength == ~0u ? ERROR_HTTP_HEADER_NOT_FOUND : 0u);
        EXPECT_TRUE(o.nLength == ~0u || nLength == o.nLength) << nLength;
        EXPECT_EQ(Read(4000000), o.strBody);
        EXPECT_EQ(Read(1), "");
        const std::string strRequest = Requests().back();
        EXPECT_TRUE(strRequest.starts_with("0:GET " + std::string(o.pszAsked) + " HTTP/1.1\r\n")) << strRequest;
        EXPECT_NE(strRequest.find("\r\nUser-Agent: AGENT\r\n"), std::string::npos) << strRequest;
        EXPECT_TRUE(Internet().InternetCloseHandle(std::exchange(m_hRequest, nullptr)));
    }
}

TEST_F(HttpCalls, KeepTheSecurityFlagsOfARequest)
{
    Open(m_hConnection, "/sized", INTERNET_FLAG_SECURE | INTERNET_FLAG_IGNORE_CERT_CN_INVALID);
    DWORD nFlags = 0, nSize = sizeof nFlags;
    const auto query = [&] {
        return ErrorOf(Internet().InternetQueryOptionA(m_hRequest, INTERNET_OPTION_SECURITY_FLAGS, &nFlags, &nSize));
    };
    const DWORD nAll =
        SECURITY_FLAG_IGNORE_UNKNOWN_CA | SECURITY_FLAG_IGNORE_CERT_CN_INVALID | SECURITY_FLAG_IGNORE_CERT_DATE_INVALID;
    EXPECT_EQ(query(), 0u);
    EXPECT_EQ(nFlags & nAll, SECURITY_FLAG_IGNORE_CERT_CN_INVALID);
    nFlags |= nAll;
    EXPECT_TRUE(Internet().InternetSetOptionA(m_hRequest, INTERNET_OPTION_SECURITY_FLAGS, &nFlags, sizeof nFlags));
    nFlags = 0;
    EXPECT_EQ(query(), 0u);
    EXPECT_EQ(nFlags & nAll, nAll);
    nSize = 1;
    EXPECT_EQ(query(), DWORD{ERROR_INSUFFICIENT_BUFFER});
}

TEST_F(HttpCalls, SayWhyAServerIsNotReached)
{
    const unsigned short nFree = FreePort();
    const HINTERNET hNobody = Connect(m_hSession, nFree);
    Open(hNobody, "/");
    EXPECT_EQ(Send(), DWORD{ERROR_INTERNET_CANNOT_CONNECT});
    EXPECT_TRUE(Internet().InternetCloseHandle(hNobody));
    const auto check = [](const char* pszUrl) {
        return ErrorOf(Internet().InternetCheckConnectionA(pszUrl, FLAG_ICC_FORCE_CONNECTION, 0));
    };
    EXPECT_EQ(check(("http://127.0.0.1:" + std::to_string(m_nPort) + "/").c_str()), 0u);
    EXPECT_NE(check(("http://127.0.0.1:" + std::to_string(nFree) + "/").c_str()), 0u);
    EXPECT_EQ(check(nullptr), 0u);
}

TEST_F(HttpCalls, CheckTheirHandlesAndTheirOrder)
{
    char chByte = 0;
    DWORD nValue = 0, nSize = sizeof nValue;
    // The errors of what needs an answer.
    const auto readAndQuery = [&] {
        return std::vector{Query(nStatusCode, nValue),
                           ErrorOf(Internet().InternetReadFile(m_hRequest, &chByte, 1, &nValue)),
                           ErrorOf(Internet().InternetQueryDataAvailable(m_hRequest, &nValue, 0, 0))};
    };
    Open(m_hConnection, "/sized");
    const DWORD nTooEarly = UnderWine() ? 0 : DWORD{ERROR_INTERNET_INCORRECT_HANDLE_STATE};
    EXPECT_THAT(readAndQuery(), testing::Each(nTooEarly));
    ASSERT_EQ(Send(), 0u);
    EXPECT_EQ(Internet().InternetErrorDlg(nullptr, m_hRequest, ERROR_SUCCESS, 7, nullptr),
              UnderWine() ? DWORD{ERROR_INVALID_HANDLE}
                          : DWORD{ERROR_SUCCESS});   // which asks for a window all the same
    const HINTERNET hClosed = m_hRequest;
    EXPECT_TRUE(Internet().InternetCloseHandle(hClosed));
    for (const HINTERNET hBad : {hClosed, HINTERNET{}, m_hSession, m_hConnection})
    {
        m_hRequest = hBad;
        auto anErrors = readAndQuery();
        anErrors.push_back(Send());
        if (!UnderWine())   // which takes options of anything
        {
            constexpr DWORD nOption = INTERNET_OPTION_SECURITY_FLAGS;
            anErrors.push_back(ErrorOf(Internet().InternetQueryOptionA(hBad, nOption, &nValue, &nSize)));
            anErrors.push_back(ErrorOf(Internet().InternetSetOptionA(hBad, nOption, &nValue, sizeof nValue)));
        }
        constexpr DWORD nOther = ERROR_INTERNET_INCORRECT_HANDLE_TYPE;
        EXPECT_THAT(anErrors, testing::Each(testing::AnyOf(ERROR_INVALID_HANDLE, nOther)));
        EXPECT_EQ(Internet().InternetErrorDlg(nullptr, hBad, ERROR_SUCCESS, 7, nullptr), DWORD{ERROR_INVALID_HANDLE});
        EXPECT_TRUE(hBad == m_hConnection || Open(hBad, "/") == nullptr);
        EXPECT_TRUE(hBad == m_hSession || Connect(hBad, m_nPort) == nullptr);
        if (hBad != m_hSession && hBad != m_hConnection)
        {
            EXPECT_EQ(ErrorOf(Internet().InternetCloseHandle(hBad)), DWORD{ERROR_INVALID_HANDLE});
        }
    }
}
