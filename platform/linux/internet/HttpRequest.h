// The objects behind the handles of the internet functions: libcurl, driven on the thread that waits for it, so that
// an answer is taken off the network only as fast as it is read.
#pragma once

#include "Certificates.h"
#include "platform/linux/base/Handles.h"
#include "util/Owned.h"
#include "win32/Internet.h"
#include "win32/Kernel.h"

#include <chrono>
#include <memory>
#include <string>
#include <string_view>

#include <curl/curl.h>

// The kinds that InternetCloseHandle closes.
class InternetObject : public HandleObject
{
};

// Holds the connections that are kept alive.
class HttpSession final : public InternetObject
{
public:
    explicit HttpSession(std::string strAgent);

    const std::string& Agent() const noexcept { return m_strAgent; }
    CURLM* Transfers() const noexcept { return m_pTransfers.get(); }

private:
    std::string m_strAgent;
    Owned<CURLM, curl_multi_cleanup> m_pTransfers;
};

struct HttpConnection final : InternetObject
{
    HttpConnection(std::shared_ptr<HttpSession> pOfSession, std::string strOfServer, INTERNET_PORT nOfPort,
                   std::string strOfUser, std::string strOfPassword);

    std::shared_ptr<HttpSession> pSession;
    std::string strServer;
    INTERNET_PORT nPort;
    std::string strUser;   // empty: none
    std::string strPassword;
};

// One exchange. Operations throw a Failure or std::bad_alloc.
class HttpRequest final : public InternetObject
{
public:
    HttpRequest(std::shared_ptr<HttpConnection> pConnection, const std::string& strVerb, const std::string& strObject,
                DWORD nFlags);
    ~HttpRequest() override;

    // Sends, again if need be, and returns when the answer's headers are there.
    void Send();

    // The answer's; 0 and nothing before there is one.
    DWORD Status() const noexcept { return m_oAnswer.nStatus; }
    const std::string& Headers() const noexcept { return m_oAnswer.strHeaders; }   // lines ended by CR LF

    // Gives as many bytes as asked for, less only at the end. A failure behind the first of them is told by the next
    // call.
    DWORD Read(char* pchBuffer, DWORD nCount);
    // Gives how many bytes can be read without waiting; 0 at the end.
    DWORD WaitForData();

    CertificateRules& Rules() noexcept { return m_oRules; }

    // The proxy that the last exchange used: its text in the environment, and what it takes to log on there.
    std::string Proxy() const;   // empty: none
    void SetProxyCredentials(const std::string& strUser, const std::string& strPassword);

private:
    using Clock = std::chrono::steady_clock;

    // The stages of an answer. Headers are final once nothing more is tried for others.
    enum eStage
    {
        eNothing,
        eHeaders,
        eHeadersComplete,
        eHeadersFinal,
        eBody
    };

    struct Answer
    {
        eStage eHowFar = eNothing;
        DWORD nStatus = 0;
        std::string strHeaders;
        long nHop = 0;                    // redirects that were followed to the server that sent these headers
        std::string strBody;              // as far as it has arrived
        std::size_t nTaken = 0;           // of which so much was read
        DWORD nFailure = ERROR_SUCCESS;   // of a transfer that is done
    };

    void SetUrl(const std::string& strObject);
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
    void AwaitData();
    static void FinishOf(const CURLMsg& oMessage);
    void Finish(CURLcode nResult);
    bool WasTunnelRefused() const;
    bool IsAnswered() const;
    bool IsFinal() const;
    DWORD ErrorOfResult(CURLcode nResult) const;
    long Info(CURLINFO nWhich) const;
    std::size_t Arrived() const noexcept { return m_oAnswer.strBody.size() - m_oAnswer.nTaken; }

    const std::shared_ptr<HttpConnection> m_pConnection;
    const DWORD m_nFlags;
    Owned<curl_slist, curl_slist_free_all> m_pHeaderLines;   // outlives the transfer, which only borrows them
    const Owned<CURL, curl_easy_cleanup> m_pTransfer;
    CertificateRules m_oRules;
    bool m_bRunning = false;   // handed to the session's transfers
    Answer m_oAnswer;
};
