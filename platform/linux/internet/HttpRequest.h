// What stands behind the handles of the Internet service: libcurl, driven on the thread that waits for it, so that
// an answer is taken off the network only as fast as it is read.
#pragma once

#include "Certificates.h"
#include "platform/linux/base/KernelObject.h"
#include "win32/Errors.h"
#include "win32/Internet.h"

#include <chrono>
#include <memory>
#include <string>
#include <string_view>

#include <curl/curl.h>

// Holds the connections that are kept alive.
class HttpSession final : public KernelObject
{
public:
    explicit HttpSession(std::string strAgent);   // throws std::bad_alloc
    ~HttpSession() override;

    const std::string& Agent() const noexcept { return m_strAgent; }
    CURLM* Transfers() const noexcept { return m_pTransfers; }

private:
    std::string m_strAgent;
    CURLM* m_pTransfers;
};

struct HttpConnection final : KernelObject
{
    HttpConnection(std::shared_ptr<HttpSession> pOfSession, std::string strOfServer, INTERNET_PORT nOfPort,
                   std::string strOfUser, std::string strOfPassword);

    std::shared_ptr<HttpSession> pSession;
    std::string strServer;
    INTERNET_PORT nPort;
    std::string strUser;   // empty: none
    std::string strPassword;
};

// One exchange. Operations give an error number, ERROR_SUCCESS if they succeed.
class HttpRequest final : public KernelObject
{
public:
    HttpRequest(std::shared_ptr<HttpConnection> pConnection, DWORD nFlags);   // throws std::bad_alloc
    ~HttpRequest() override;

    // To be done once, before anything else.
    DWORD SetUp(const std::string& strVerb, const std::string& strObject);

    // Sends, again if need be, and returns when the answer's headers are there.
    DWORD Send();

    // Of the answer; 0 and nothing before there is one.
    DWORD Status() const noexcept { return m_nStatus; }
    const std::string& Headers() const noexcept { return m_strHeaders; }   // lines ended by CR LF

    // As many bytes as asked for, less only at the end. A failure behind the first of them is told by the next call.
    DWORD Read(char* pchBuffer, DWORD nCount, DWORD& nRead);
    DWORD WaitForData(DWORD& nAvailable);

    CertificateRules& Rules() noexcept { return m_oRules; }
    const HttpConnection& Connection() const noexcept { return *m_pConnection; }

    // Of the proxy that the last exchange used: its text in the environment, and what it takes to log on there.
    std::string Proxy() const;   // empty: none
    void SetProxyCredentials(const std::string& strUser, const std::string& strPassword);

private:
    using Clock = std::chrono::steady_clock;

    bool SetUrl(const std::string& strObject);
    void SetVerb(const std::string& strVerb);
    void AddHeaderLine(const char* pszLine);
    void SetSession();
    void SetTrust();
    template <class Value>
    void Set(CURLoption nOption, Value value);

    static std::size_t OnHeader(char* pchLine, std::size_t nSize, std::size_t nCount, void* pRequest);
    static std::size_t OnBody(char* pchData, std::size_t nSize, std::size_t nCount, void* pRequest);
    void TakeHeader(std::string_view strLine);

    void Drop();
    void Drain();
    void Advance(Clock::time_point nLatest);
    static void FinishOf(const CURLMsg& oMessage);
    void Finish(CURLcode nResult);
    bool WasTunnelRefused() const;
    bool IsAnswered() const;
    bool IsFinal() const;
    DWORD ErrorOf(CURLcode nResult) const;
    long Info(CURLINFO nWhich) const;
    std::size_t Arrived() const noexcept { return m_strBody.size() - m_nTaken; }

    std::shared_ptr<HttpConnection> m_pConnection;
    DWORD m_nFlags;
    CURL* m_pTransfer;
    curl_slist* m_pHeaderLines = nullptr;
    CertificateRules m_oRules;
    bool m_bSetUpFailed = false;
    bool m_bRunning = false;            // handed to the session's transfers
    DWORD m_nFailure = ERROR_SUCCESS;   // of a transfer that is done

    std::string m_strHeaders;
    DWORD m_nStatus = 0;
    bool m_bHeadersComplete = false;
    bool m_bFinalHeaders = false;
    bool m_bBodyBegan = false;
    long m_nHop = 0;   // redirects that were followed to the server that sent these headers

    std::string m_strBody;      // what has arrived
    std::size_t m_nTaken = 0;   // of which so much was read
};
