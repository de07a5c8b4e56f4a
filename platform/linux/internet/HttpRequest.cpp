// The course of an exchange: sending, waiting, reading, and what libcurl tells meanwhile. libcurl works only while a
// caller waits for it, so there is no thread, and nobody to hold up.
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
    m_pTransfers.reset(curl_multi_init());
    if (!m_pTransfers)
        throw std::bad_alloc();
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

HttpRequest::~HttpRequest()
{
    Drop();
}

void HttpRequest::Send()
{
    Drain();
    Drop();
    m_oAnswer = {};
    m_oRules.Apply(m_pTransfer.get());
    if (curl_multi_add_handle(m_pConnection->pSession->Transfers(), m_pTransfer.get()) != CURLM_OK)
        throw std::bad_alloc();
    m_bRunning = true;

    const auto nLatest = Clock::now() + nMostSilence;
    while (m_bRunning && m_oAnswer.eHowFar < eHeadersFinal && Arrived() == 0)
        Advance(nLatest);
    if (m_bRunning || m_oAnswer.nFailure == ERROR_SUCCESS || IsAnswered())
        return;   // what broke off behind the headers is the body, and reading it tells
    const DWORD nError = m_oAnswer.nFailure;
    m_oAnswer = {};
    throw Failure{nError};
}

// Reads the rest of an answer, if it is at hand, so that its connection can serve the next try.
void HttpRequest::Drain()
{
    const auto nLatest = Clock::now() + nMostDraining;
    for (std::size_t nDrained = 0; m_bRunning && nDrained <= nDrainedForReuse;
         m_oAnswer.nTaken = m_oAnswer.strBody.size())
    {
        nDrained += Arrived();
        Advance(nLatest);
    }
}

// A transfer that is taken out in the middle takes its connection with it.
void HttpRequest::Drop()
{
    if (std::exchange(m_bRunning, false))
        curl_multi_remove_handle(m_pConnection->pSession->Transfers(), m_pTransfer.get());
}

// Takes what has arrived off the network, and waits for it if need be. What was read before is forgotten.
void HttpRequest::Advance(Clock::time_point nLatest)
{
    constexpr int nPollMilliseconds = 500;
    m_oAnswer.strBody.erase(0, std::exchange(m_oAnswer.nTaken, 0));
    CURLM* const pTransfers = m_pConnection->pSession->Transfers();
    const std::size_t nBefore = m_oAnswer.strBody.size();
    const eStage eBefore = m_oAnswer.eHowFar;
    for (;;)
    {
        int nRunning = 0;
        if (curl_multi_perform(pTransfers, &nRunning) != CURLM_OK)
            return Finish(CURLE_OUT_OF_MEMORY);
        int nLeft = 0;
        while (const CURLMsg* const pMessage = curl_multi_info_read(pTransfers, &nLeft))
            FinishOf(*pMessage);
        if (!m_bRunning || m_oAnswer.strBody.size() > nBefore ||
            (eBefore < eHeadersFinal && m_oAnswer.eHowFar >= eHeadersFinal))
            return;
        if (Clock::now() > nLatest)
            return Finish(CURLE_OPERATION_TIMEDOUT);
        // Until something comes, or to see whether the time is up.
        curl_multi_poll(pTransfers, nullptr, 0, nPollMilliseconds, nullptr);
    }
}

// The message may be for any request of the session: they share its transfers.
void HttpRequest::FinishOf(const CURLMsg& oMessage)
{
    HttpRequest* pRequest = nullptr;
    curl_easy_getinfo(oMessage.easy_handle, CURLINFO_PRIVATE, &pRequest);
    if (oMessage.msg == CURLMSG_DONE && pRequest)
        pRequest->Finish(oMessage.data.result);
}

void HttpRequest::Finish(CURLcode nResult)
{
    m_oAnswer.nFailure = ErrorOfResult(nResult);
    if (m_oAnswer.nFailure != ERROR_SUCCESS && WasTunnelRefused() && IsAnswered())
        m_oAnswer.nFailure = ERROR_SUCCESS;   // to be read as any answer
    Drop();
}

long HttpRequest::Info(CURLINFO nWhich) const
{
    long nValue = 0;
    curl_easy_getinfo(m_pTransfer.get(), nWhich, &nValue);
    return nValue;
}

// By a proxy, whose answer is then all there is.
bool HttpRequest::WasTunnelRefused() const
{
    const long nStatus = Info(CURLINFO_HTTP_CONNECTCODE);
    return nStatus != 0 && nStatus / 100 != 2;
}

// True of a transfer that failed if the headers that came are those of the last server asked, and it was not until
// the body that the transfer broke off. A tunnel's headers are an answer only if it was refused.
bool HttpRequest::IsAnswered() const
{
    const DWORD nFailure = m_oAnswer.nFailure;
    const bool bBroke = nFailure == ERROR_SUCCESS || nFailure == ERROR_INTERNET_CONNECTION_RESET ||
                        nFailure == ERROR_INTERNET_TIMEOUT || nFailure == ERROR_HTTP_INVALID_SERVER_RESPONSE;
    return bBroke && m_oAnswer.eHowFar >= eHeadersComplete && m_oAnswer.nHop == Info(CURLINFO_REDIRECT_COUNT) &&
           (Info(CURLINFO_RESPONSE_CODE) != 0 || WasTunnelRefused());
}

DWORD HttpRequest::ErrorOfResult(CURLcode nResult) const
{
    // A scheme that a redirect must not lead to, or else what came is no HTTP.
    if (nResult == CURLE_UNSUPPORTED_PROTOCOL)
        return m_oAnswer.eHowFar >= eHeadersComplete ? ERROR_HTTP_REDIRECT_FAILED : ERROR_HTTP_INVALID_SERVER_RESPONSE;
    if (nResult != CURLE_PEER_FAILED_VERIFICATION)
        return ErrorOfTransfer(nResult);
    // libcurl itself judges the name alone.
    return m_oRules.Refusal() ? m_oRules.Refusal() : ERROR_INTERNET_SEC_CERT_CN_INVALID;
}

void HttpRequest::AwaitData()
{
    const auto nLatest = m_bRunning && Arrived() == 0 ? Clock::now() + nMostSilence : Clock::time_point();
    while (m_bRunning && Arrived() == 0)
        Advance(nLatest);
}

DWORD HttpRequest::WaitForData()
{
    AwaitData();
    Require(Arrived() > 0 || m_oAnswer.nFailure == ERROR_SUCCESS, m_oAnswer.nFailure);
    return static_cast<DWORD>(std::min<std::size_t>(Arrived(), ~DWORD{0}));
}

DWORD HttpRequest::Read(char* pchBuffer, DWORD nCount)
{
    DWORD nRead = 0;
    while (nRead < nCount)
    {
        AwaitData();
        if (Arrived() == 0)
            break;
        const auto nTake = static_cast<DWORD>(std::min<std::size_t>(Arrived(), nCount - nRead));
        std::memcpy(pchBuffer + nRead, m_oAnswer.strBody.data() + m_oAnswer.nTaken, nTake);
        m_oAnswer.nTaken += nTake;
        nRead += nTake;
    }
    Require(nRead > 0 || nCount == 0 || m_oAnswer.nFailure == ERROR_SUCCESS, m_oAnswer.nFailure);
    return nRead;
}

// libcurl is C, so nothing may be thrown through it: a count that is too small makes the transfer fail.
std::size_t HttpRequest::OnBody(char* pchData, std::size_t nSize, std::size_t nCount, void* pRequest)
{
    try
    {
        auto& oThis = *static_cast<HttpRequest*>(pRequest);
        oThis.m_oAnswer.strBody.append(pchData, nSize * nCount);
        oThis.m_oAnswer.eHowFar = eBody;
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
    auto& o = m_oAnswer;
    if (o.eHowFar == eBody)
        return;   // what follows a body
    if (strLine.starts_with("HTTP/") && o.eHowFar != eHeaders)
    {
        o.eHowFar = eHeaders;
        o.strHeaders.clear();
        o.nHop = Info(CURLINFO_REDIRECT_COUNT);
        o.nStatus = 0;
        const std::size_t nStatus = strLine.find_first_not_of(' ', strLine.find(' '));
        if (nStatus != std::string_view::npos)
            std::from_chars(strLine.data() + nStatus, strLine.data() + strLine.size(), o.nStatus);
    }
    if (o.eHowFar != eHeaders)
        return;   // what follows the body of a redirect
    strLine = strLine.substr(0, strLine.find_last_not_of("\r\n") + 1);
    o.strHeaders.append(strLine).append("\r\n");
    if (strLine.empty())
        o.eHowFar = IsFinal() ? eHeadersFinal : eHeadersComplete;
}

// True where the headers that are complete end the wait for an answer, because nothing more is tried and the server
// itself has sent them. A refusal that is met with credentials shows by what comes next.
bool HttpRequest::IsFinal() const
{
    const DWORD nStatus = m_oAnswer.nStatus;
    const bool bFollowed = nStatus / 100 == 3 && !(m_nFlags & INTERNET_FLAG_NO_AUTO_REDIRECT);
    return nStatus >= 200 && nStatus != 401 && nStatus != 407 && !bFollowed &&
           Info(CURLINFO_RESPONSE_CODE) == static_cast<long>(nStatus);
}
