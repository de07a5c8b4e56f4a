#include "HttpRequest.h"

#include "Curl.h"

#include <algorithm>
#include <charconv>
#include <cstring>
#include <new>
#include <utility>

namespace
{
constexpr auto nMostSilence = std::chrono::minutes(60);   // between two signs of life of a server
constexpr auto nMostDraining = std::chrono::seconds(1);
constexpr std::size_t nDrainedForReuse = 0x10000;   // an answer no longer than this is read to keep its connection
}

HttpSession::HttpSession(std::string strAgent) : m_strAgent(std::move(strAgent))
{
    StartCurl();
    m_pTransfers = curl_multi_init();
    if (!m_pTransfers)
        throw std::bad_alloc();
}

HttpSession::~HttpSession()
{
    curl_multi_cleanup(m_pTransfers);
}

HttpConnection::HttpConnection(std::shared_ptr<HttpSession> pOfSession, std::string strOfServer, INTERNET_PORT nOfPort,
                               std::string strOfUser, std::string strOfPassword)
    : pSession(std::move(pOfSession)),
      strServer(std::move(strOfServer)),
      nPort(nOfPort),
      strUser(std::move(strOfUser)),
      strPassword(std::move(strOfPassword))
{
}

HttpRequest::HttpRequest(std::shared_ptr<HttpConnection> pConnection, DWORD nFlags)
    : m_pConnection(std::move(pConnection)), m_nFlags(nFlags), m_pTransfer(curl_easy_init())
{
    if (!m_pTransfer)
        throw std::bad_alloc();
}

HttpRequest::~HttpRequest()
{
    Drop();
    curl_easy_cleanup(m_pTransfer);
    curl_slist_free_all(m_pHeaderLines);
}

DWORD HttpRequest::Send()
{
    Drain();
    Drop();
    m_strHeaders.clear();
    m_nStatus = 0;
    m_bHeadersComplete = false;
    m_bFinalHeaders = false;
    m_strBody.clear();
    m_nTaken = 0;
    m_bBodyBegan = false;
    m_nFailure = ERROR_SUCCESS;
    m_bSetUpFailed |= !m_oRules.Apply(m_pTransfer);
    if (m_bSetUpFailed || curl_multi_add_handle(m_pConnection->pSession->Transfers(), m_pTransfer) != CURLM_OK)
        return ERROR_NOT_ENOUGH_MEMORY;
    m_bRunning = true;

    const auto nLatest = Clock::now() + nMostSilence;
    while (m_bRunning && !m_bFinalHeaders && Arrived() == 0)
        Advance(nLatest);
    if (m_bRunning || m_nFailure == ERROR_SUCCESS || IsAnswered())
        return ERROR_SUCCESS;   // what broke off behind the headers is the body, and reading it tells
    m_strHeaders.clear();
    m_nStatus = 0;
    return m_nFailure;
}

// Reads the rest of an answer, if it is at hand, so that its connection can serve the next try.
void HttpRequest::Drain()
{
    const auto nLatest = Clock::now() + nMostDraining;
    for (std::size_t nDrained = 0; m_bRunning && nDrained <= nDrainedForReuse; m_nTaken = m_strBody.size())
    {
        nDrained += Arrived();
        Advance(nLatest);
    }
}

void HttpRequest::Drop()
{
    if (std::exchange(m_bRunning, false))
        curl_multi_remove_handle(m_pConnection->pSession->Transfers(), m_pTransfer);
}

// Takes what has arrived off the network, and waits for it if need be. What was read before is forgotten.
void HttpRequest::Advance(Clock::time_point nLatest)
{
    constexpr int nPollMilliseconds = 500;
    m_strBody.erase(0, std::exchange(m_nTaken, 0));
    CURLM* const pTransfers = m_pConnection->pSession->Transfers();
    const std::size_t nBefore = m_strBody.size();
    const bool bHadHeaders = m_bFinalHeaders;
    for (;;)
    {
        int nRunning = 0;
        if (curl_multi_perform(pTransfers, &nRunning) != CURLM_OK)
            return Finish(CURLE_OUT_OF_MEMORY);
        int nLeft = 0;
        while (const CURLMsg* const pMessage = curl_multi_info_read(pTransfers, &nLeft))
            FinishOf(*pMessage);
        if (!m_bRunning || m_strBody.size() > nBefore || m_bFinalHeaders != bHadHeaders)
            return;
        if (Clock::now() > nLatest)
            return Finish(CURLE_OPERATION_TIMEDOUT);
        curl_multi_poll(pTransfers, nullptr, 0, nPollMilliseconds, nullptr);
    }
}

// Of any request of the session: they share its transfers.
void HttpRequest::FinishOf(const CURLMsg& oMessage)
{
    HttpRequest* pRequest = nullptr;
    curl_easy_getinfo(oMessage.easy_handle, CURLINFO_PRIVATE, &pRequest);
    if (oMessage.msg == CURLMSG_DONE && pRequest)
        pRequest->Finish(oMessage.data.result);
}

void HttpRequest::Finish(CURLcode nResult)
{
    m_nFailure = ErrorOf(nResult);
    if (m_nFailure != ERROR_SUCCESS && WasTunnelRefused() && IsAnswered())
        m_nFailure = ERROR_SUCCESS;   // to be read as any answer
    Drop();
}

long HttpRequest::Info(CURLINFO nWhich) const
{
    long nValue = 0;
    curl_easy_getinfo(m_pTransfer, nWhich, &nValue);
    return nValue;
}

// By a proxy, whose answer is then all there is.
bool HttpRequest::WasTunnelRefused() const
{
    const long nStatus = Info(CURLINFO_HTTP_CONNECTCODE);
    return nStatus != 0 && nStatus / 100 != 2;
}

// Of a transfer that failed: whether the headers that came are those of the last server asked, and it was not until
// the body that the transfer broke off. A tunnel's headers are an answer only if it was refused.
bool HttpRequest::IsAnswered() const
{
    const bool bBroke = m_nFailure == ERROR_SUCCESS || m_nFailure == ERROR_INTERNET_CONNECTION_RESET ||
                        m_nFailure == ERROR_INTERNET_TIMEOUT || m_nFailure == ERROR_HTTP_INVALID_SERVER_RESPONSE;
    return bBroke && m_bHeadersComplete && m_nHop == Info(CURLINFO_REDIRECT_COUNT) &&
           (Info(CURLINFO_RESPONSE_CODE) != 0 || WasTunnelRefused());
}

DWORD HttpRequest::ErrorOf(CURLcode nResult) const
{
    // A scheme that a redirect must not lead to, or else what came is no HTTP.
    if (nResult == CURLE_UNSUPPORTED_PROTOCOL)
        return m_bHeadersComplete ? ERROR_HTTP_REDIRECT_FAILED : ERROR_HTTP_INVALID_SERVER_RESPONSE;
    if (nResult != CURLE_PEER_FAILED_VERIFICATION)
        return ErrorOfTransfer(nResult);
    // libcurl itself judges the name alone.
    return m_oRules.Refusal() ? m_oRules.Refusal() : ERROR_INTERNET_SEC_CERT_CN_INVALID;
}

DWORD HttpRequest::WaitForData(DWORD& nAvailable)
{
    const auto nLatest = m_bRunning && Arrived() == 0 ? Clock::now() + nMostSilence : Clock::time_point();
    while (m_bRunning && Arrived() == 0)
        Advance(nLatest);
    nAvailable = static_cast<DWORD>(std::min<std::size_t>(Arrived(), ~DWORD{0}));
    return nAvailable == 0 ? m_nFailure : ERROR_SUCCESS;
}

DWORD HttpRequest::Read(char* pchBuffer, DWORD nCount, DWORD& nRead)
{
    nRead = 0;
    for (DWORD nAvailable = 0; nRead < nCount;)
    {
        if (const DWORD nError = WaitForData(nAvailable); nAvailable == 0)
            return nRead == 0 ? nError : ERROR_SUCCESS;
        const DWORD nTake = std::min(nAvailable, nCount - nRead);
        std::memcpy(pchBuffer + nRead, m_strBody.data() + m_nTaken, nTake);
        m_nTaken += nTake;
        nRead += nTake;
    }
    return ERROR_SUCCESS;
}

std::size_t HttpRequest::OnBody(char* pchData, std::size_t nSize, std::size_t nCount, void* pRequest)
{
    try
    {
        auto& oThis = *static_cast<HttpRequest*>(pRequest);
        oThis.m_strBody.append(pchData, nSize * nCount);
        oThis.m_bBodyBegan = true;
        return nSize * nCount;
    }
    catch (const std::bad_alloc&)
    {
        return 0;
    }
}

std::size_t HttpRequest::OnHeader(char* pchLine, std::size_t nSize, std::size_t nCount, void* pRequest)
{
    try
    {
        static_cast<HttpRequest*>(pRequest)->TakeHeader({pchLine, nSize * nCount});
        return nSize * nCount;
    }
    catch (const std::bad_alloc&)
    {
        return 0;
    }
}

// Keeps the headers of the latest answer: those of redirects that are followed and of tunnels go by.
void HttpRequest::TakeHeader(std::string_view strLine)
{
    if (m_bBodyBegan)
        return;   // what follows a body
    if (strLine.starts_with("HTTP/") && (m_strHeaders.empty() || m_bHeadersComplete))
    {
        m_strHeaders.clear();
        m_bHeadersComplete = false;
        m_bFinalHeaders = false;
        m_nHop = Info(CURLINFO_REDIRECT_COUNT);
        m_nStatus = 0;
        const std::size_t nStatus = strLine.find_first_not_of(' ', strLine.find(' '));
        if (nStatus != std::string_view::npos)
            std::from_chars(strLine.data() + nStatus, strLine.data() + strLine.size(), m_nStatus);
    }
    if (m_bHeadersComplete)
        return;   // what follows the body of a redirect
    strLine = strLine.substr(0, strLine.find_last_not_of("\r\n") + 1);
    m_strHeaders.append(strLine).append("\r\n");
    m_bHeadersComplete = strLine.empty();
    m_bFinalHeaders = m_bHeadersComplete && IsFinal();
}

// Whether the headers that are complete end the wait for an answer, because nothing more is tried and the server
// itself has sent them. A refusal that is met with credentials shows by what comes next.
bool HttpRequest::IsFinal() const
{
    const bool bFollowed = m_nStatus / 100 == 3 && !(m_nFlags & INTERNET_FLAG_NO_AUTO_REDIRECT);
    return m_nStatus >= 200 && m_nStatus != 401 && m_nStatus != 407 && !bFollowed &&
           Info(CURLINFO_RESPONSE_CODE) == static_cast<long>(m_nStatus);
}
