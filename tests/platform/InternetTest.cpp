// The contract of the HTTP client, the same on every target, with a listener of the library as its server.
#include "platform/Internet.h"
#include "network/ListenerFixture.h"
#include "support/ErrorOf.h"

#include "Native.h"

#include <map>

namespace
{
const std::string strOk = "HTTP/1.1 200 OK\r\nConnection: close\r\n";
const std::map<std::string, std::string> s_oReplies{
    {"/sized", strOk + "Content-Length: 11\r\n\r\nhello world"},
    {"/a%20b", strOk + "\r\nto the end"},
    {"/long", strOk + "Content-Length: 3000000\r\n\r\n" + std::string(3000000, 'l')},
    {"/moved", "HTTP/1.1 302 Found\r\nLocation: /sized\r\nContent-Length: 0\r\nConnection: close\r\n\r\n"}};

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
        m_hSession = o.InternetOpenA("AGENT", INTERNET_OPEN_TYPE_PRECONFIG, nullptr, nullptr, 0);
        m_hConnection = Connect(m_hSession, m_nPort);
    }
    ~HttpCalls() override
    {
        for (const HINTERNET h : {m_hRequest, m_hConnection, m_hSession})
            o.InternetCloseHandle(h);
    }

    HINTERNET Connect(HINTERNET hSession, unsigned short nPort) const
    {
        return o.InternetConnectA(hSession, "127.0.0.1", nPort, "", "", INTERNET_SERVICE_HTTP, 0, 1);
    }
    HINTERNET Open(HINTERNET hConnection, const char* pszObject, DWORD nFlags = INTERNET_FLAG_KEEP_CONNECTION)
    {
        return m_hRequest = o.HttpOpenRequestA(hConnection, "GET", pszObject, nullptr, nullptr, nullptr, nFlags, 1);
    }
    DWORD Send() const { return ErrorOf(o.HttpSendRequestA(m_hRequest, nullptr, 0, nullptr, 0)); }
    // Of a header that is a number: minus the error if there is none.
    long long Number(DWORD nHeader) const
    {
        DWORD nValue = 0, nSize = sizeof nValue;
        const DWORD nError =
            ErrorOf(o.HttpQueryInfoA(m_hRequest, nHeader | HTTP_QUERY_FLAG_NUMBER, &nValue, &nSize, nullptr));
        return nError ? -static_cast<long long>(nError) : nValue;
    }
    std::string Read(DWORD nMost) const
    {
        std::string strBlock(nMost, '\0');
        DWORD nRead = ~0u;
        EXPECT_TRUE(o.InternetReadFile(m_hRequest, strBlock.data(), nMost, &nRead));
        return strBlock.substr(0, nRead);
    }
    DWORD Available() const
    {
        DWORD nAvailable = ~0u;
        EXPECT_TRUE(o.InternetQueryDataAvailable(m_hRequest, &nAvailable, 0, 0));
        return nAvailable;
    }

    const InternetCalls& o = Internet();
    HINTERNET m_hSession, m_hConnection, m_hRequest = nullptr;
};
}

TEST_F(HttpCalls, GiveTheHeadersAndTheBodyPieceByPiece)
{
    Open(m_hConnection, "/sized");
    for (int nSend = 0; nSend < 2; ++nSend)   // the answer before is dropped
    {
        ASSERT_EQ(Send(), 0u);
        EXPECT_EQ(Available(), 11u);
        EXPECT_EQ(Read(5), "hello");
    }
    EXPECT_EQ(Available(), 6u);
    EXPECT_EQ(Read(100), " world");
    EXPECT_EQ(Available(), 0u);
    const auto headers = [&](DWORD nSize, char* pBuffer) {
        const DWORD nError =
            ErrorOf(o.HttpQueryInfoA(m_hRequest, HTTP_QUERY_RAW_HEADERS_CRLF, pBuffer, &nSize, nullptr));
        return std::pair(nError, nSize);
    };
    const auto [nError, nSize] = headers(0, nullptr);
    EXPECT_EQ(nError, DWORD{ERROR_INSUFFICIENT_BUFFER});
    std::string strHeaders(nSize, '#');
    EXPECT_EQ(headers(nSize - 1, strHeaders.data()), std::pair(nError, nSize));
    EXPECT_EQ(headers(nSize, strHeaders.data()), std::pair(DWORD{0}, nSize - 1));   // without the zero byte
    EXPECT_EQ(strHeaders, strOk + "Content-Length: 11\r\n\r\n" + '\0');
}

TEST_F(HttpCalls, EscapeFollowAndReadToTheEnd)
{
    const struct
    {
        const char *pszObject, *pszAsked;
        DWORD nFlags;
        int nStatus, nLength;
        std::string strBody;
    } aRows[] = {{"/a b", "/a%20b", 0, 200, -int{ERROR_HTTP_HEADER_NOT_FOUND}, "to the end"},
                 {"/long", "/long", INTERNET_FLAG_PRAGMA_NOCACHE, 200, 3000000, std::string(3000000, 'l')},
                 {"/moved", "/sized", 0, 200, 11, "hello world"},
                 {"/moved", "/moved", INTERNET_FLAG_NO_AUTO_REDIRECT, 302, 0, ""}};
    for (const auto& oRow : aRows)
    {
        SCOPED_TRACE(oRow.pszObject);
        Open(m_hConnection, oRow.pszObject, oRow.nFlags);
        ASSERT_EQ(Send(), 0u);
        EXPECT_EQ(Number(HTTP_QUERY_STATUS_CODE), oRow.nStatus);
        EXPECT_EQ(Number(HTTP_QUERY_CONTENT_LENGTH), oRow.nLength);
        EXPECT_EQ(Read(4000000), oRow.strBody);
        EXPECT_EQ(Read(1), "");
        const std::string strRequest = Requests().back();
        EXPECT_TRUE(strRequest.starts_with("0:GET " + std::string(oRow.pszAsked) + " HTTP/1.1\r\n")) << strRequest;
        EXPECT_NE(strRequest.find("\r\nUser-Agent: AGENT\r\n"), std::string::npos) << strRequest;
        EXPECT_TRUE(o.InternetCloseHandle(std::exchange(m_hRequest, nullptr)));
    }
}

TEST_F(HttpCalls, KeepTheSecurityFlagsOfARequest)
{
    Open(m_hConnection, "/sized", INTERNET_FLAG_SECURE | INTERNET_FLAG_IGNORE_CERT_CN_INVALID);
    constexpr DWORD nOption = INTERNET_OPTION_SECURITY_FLAGS;
    constexpr DWORD nMore = SECURITY_FLAG_IGNORE_UNKNOWN_CA | SECURITY_FLAG_IGNORE_CERT_DATE_INVALID;
    constexpr DWORD nAll = nMore | SECURITY_FLAG_IGNORE_CERT_CN_INVALID;
    DWORD nFlags = 0, nSize = sizeof nFlags;
    EXPECT_TRUE(o.InternetQueryOptionA(m_hRequest, nOption, &nFlags, &nSize));
    EXPECT_EQ(nFlags & nAll, nAll & ~nMore);
    nFlags |= nMore;
    EXPECT_TRUE(o.InternetSetOptionA(m_hRequest, nOption, &nFlags, sizeof nFlags));
    nFlags = 0;
    EXPECT_TRUE(o.InternetQueryOptionA(m_hRequest, nOption, &nFlags, &nSize));
    EXPECT_EQ(nFlags & nAll, nAll);
    nSize = 1;
    EXPECT_EQ(ErrorOf(o.InternetQueryOptionA(m_hRequest, nOption, &nFlags, &nSize)), DWORD{ERROR_INSUFFICIENT_BUFFER});
}

TEST_F(HttpCalls, SayWhyAServerIsNotReached)
{
    const unsigned short nFree = FreePort();
    const HINTERNET hNobody = Connect(m_hSession, nFree);
    Open(hNobody, "/");
    EXPECT_EQ(Send(), DWORD{ERROR_INTERNET_CANNOT_CONNECT});
    EXPECT_TRUE(o.InternetCloseHandle(hNobody));
    const auto check = [&](unsigned short nPort) {
        const std::string strUrl = "http://127.0.0.1:" + std::to_string(nPort) + '/';
        return o.InternetCheckConnectionA(nPort ? strUrl.c_str() : nullptr, FLAG_ICC_FORCE_CONNECTION, 0) != FALSE;
    };
    EXPECT_TRUE(check(m_nPort) && check(0) && !check(nFree));
}

TEST_F(HttpCalls, CheckTheirHandlesAndTheirOrder)
{
    char chByte = 0;
    DWORD nValue = 0;
    // The errors of what needs an answer.
    const auto readAndQuery = [&] {
        return std::vector{static_cast<DWORD>(-Number(HTTP_QUERY_STATUS_CODE)),
                           ErrorOf(o.InternetReadFile(m_hRequest, &chByte, 1, &nValue)),
                           ErrorOf(o.InternetQueryDataAvailable(m_hRequest, &nValue, 0, 0))};
    };
    Open(m_hConnection, "/sized");
    EXPECT_THAT(readAndQuery(), testing::Each(UnderWine() ? 0 : DWORD{ERROR_INTERNET_INCORRECT_HANDLE_STATE}));
    ASSERT_EQ(Send(), 0u);
    EXPECT_EQ(o.InternetErrorDlg(nullptr, m_hRequest, ERROR_SUCCESS, 7, nullptr),
              UnderWine() ? DWORD{ERROR_INVALID_HANDLE} : DWORD{ERROR_SUCCESS});   // which wants a window all the same
    const HINTERNET hClosed = m_hRequest;
    EXPECT_TRUE(o.InternetCloseHandle(hClosed));
    for (const HINTERNET hBad : {hClosed, HINTERNET{}, m_hSession, m_hConnection})
    {
        m_hRequest = hBad;
        auto anErrors = readAndQuery();
        anErrors.push_back(Send());
        DWORD nSize = sizeof nValue;
        constexpr DWORD nOption = INTERNET_OPTION_SECURITY_FLAGS;
        if (!UnderWine())   // which takes options of anything
            for (const BOOL bDone : {o.InternetQueryOptionA(hBad, nOption, &nValue, &nSize),
                                     o.InternetSetOptionA(hBad, nOption, &nValue, sizeof nValue)})
                anErrors.push_back(ErrorOf(bDone));
        constexpr DWORD nOther = ERROR_INTERNET_INCORRECT_HANDLE_TYPE;
        EXPECT_THAT(anErrors, testing::Each(testing::AnyOf(ERROR_INVALID_HANDLE, nOther)));
        EXPECT_EQ(o.InternetErrorDlg(nullptr, hBad, ERROR_SUCCESS, 7, nullptr), DWORD{ERROR_INVALID_HANDLE});
        EXPECT_TRUE(hBad == m_hConnection || !Open(hBad, "/"));
        EXPECT_TRUE(hBad == m_hSession || !Connect(hBad, m_nPort));
        EXPECT_TRUE(hBad == m_hConnection || hBad == m_hSession || !o.InternetCloseHandle(hBad));
    }
}
