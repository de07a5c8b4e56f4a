#include "HttpRequest.h"

#include "Curl.h"

#include <algorithm>
#include <charconv>
#include <chrono>
#include <cstdlib>
#include <cstring>
#include <new>
#include <utility>

#include <unistd.h>

namespace
{
constexpr auto nMostSilence = std::chrono::minutes(60);   // between two signs of life of a server
constexpr long nMostRedirects = 50;
constexpr long nNetworkBlock = 0x20000;             // bytes that are taken off the network at a time
constexpr std::size_t nDrainedForReuse = 0x10000;   // an answer no longer than this is read to keep its connection
constexpr const char* pszWebSchemes = "http,https";

std::string EscapeBlanks(const std::string& strText)
{
    std::string strEscaped;
    for (const char ch : strText)
        strEscaped.append(ch == ' ' ? "%20" : std::string(1, ch));
    return strEscaped;
}
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

template <class Value>
void HttpRequest::Set(CURLoption nOption, Value value)
{
    m_bSetUpFailed |= curl_easy_setopt(m_pTransfer, nOption, value) != CURLE_OK;
}

DWORD HttpRequest::SetUp(const std::string& strVerb, const std::string& strObject)
{
    if (!SetUrl(strObject))
        return ERROR_INTERNET_INVALID_URL;
    SetVerb(strVerb);
    SetSession();
    SetTrust();
    Set(CURLOPT_HEADERFUNCTION, &HttpRequest::OnHeader);
    Set(CURLOPT_HEADERDATA, this);
    Set(CURLOPT_WRITEFUNCTION, &HttpRequest::OnBody);
    Set(CURLOPT_WRITEDATA, this);
    return m_bSetUpFailed ? ERROR_NOT_ENOUGH_MEMORY : ERROR_SUCCESS;
}

// Server and port are judged by the library's own rules; the object is sent as it stands, its dots included.
bool HttpRequest::SetUrl(const std::string& strObject)
{
    const char* const pszScheme = m_nFlags & INTERNET_FLAG_SECURE ? "https" : "http";
    const std::string strPort = std::to_string(m_pConnection->nPort);
    CURLU* const pUrl = curl_url();
    const bool bValid = pUrl && curl_url_set(pUrl, CURLUPART_HOST, m_pConnection->strServer.c_str(), 0) == CURLUE_OK &&
                        curl_url_set(pUrl, CURLUPART_PORT, strPort.c_str(), 0) == CURLUE_OK;
    curl_url_cleanup(pUrl);
    if (!bValid)
        return false;

    std::string strUrl = pszScheme + ("://" + m_pConnection->strServer) + ":" + strPort;
    if (!strObject.starts_with('/'))
        strUrl += '/';
    Set(CURLOPT_URL, (strUrl + EscapeBlanks(strObject)).c_str());
    Set(CURLOPT_PATH_AS_IS, 1L);
    return true;
}

void HttpRequest::AddHeaderLine(const char* pszLine)
{
    curl_slist* const pLines = curl_slist_append(m_pHeaderLines, pszLine);
    m_bSetUpFailed |= !pLines;
    m_pHeaderLines = pLines ? pLines : m_pHeaderLines;
}

// All but GET and HEAD announce the empty body that they have.
void HttpRequest::SetVerb(const std::string& strVerb)
{
    if (strVerb == "HEAD")
        Set(CURLOPT_NOBODY, 1L);
    else if (strVerb != "GET")
    {
        Set(CURLOPT_POSTFIELDS, "");
        Set(CURLOPT_POSTFIELDSIZE, 0L);
        AddHeaderLine("Content-Type:");   // not the type of a form
        if (strVerb != "POST")
            Set(CURLOPT_CUSTOMREQUEST, strVerb.c_str());
    }
    if (m_nFlags & INTERNET_FLAG_PRAGMA_NOCACHE)
        AddHeaderLine("Pragma: no-cache");
    if (!(m_nFlags & INTERNET_FLAG_KEEP_CONNECTION))
        AddHeaderLine("Connection: close");
    Set(CURLOPT_HTTPHEADER, m_pHeaderLines);
}

void HttpRequest::SetSession()
{
    Set(CURLOPT_USERAGENT, m_pConnection->pSession->Agent().c_str());
    Set(CURLOPT_HTTP_VERSION, static_cast<long>(CURL_HTTP_VERSION_1_1));
    Set(CURLOPT_NOSIGNAL, 1L);
    Set(CURLOPT_CONNECTTIMEOUT, nConnectSeconds);
    Set(CURLOPT_BUFFERSIZE, nNetworkBlock);
    Set(CURLOPT_COOKIEFILE, "");   // within the request: some redirects want theirs back
    Set(CURLOPT_PROTOCOLS_STR, pszWebSchemes);
    Set(CURLOPT_REDIR_PROTOCOLS_STR, pszWebSchemes);
    Set(CURLOPT_MAXREDIRS, nMostRedirects);
    Set(CURLOPT_FOLLOWLOCATION, m_nFlags & INTERNET_FLAG_NO_AUTO_REDIRECT ? 0L : 1L);

    constexpr auto nPasswordSchemes = static_cast<long>(CURLAUTH_BASIC | CURLAUTH_DIGEST | CURLAUTH_NTLM);
    Set(CURLOPT_HTTPAUTH, nPasswordSchemes);
    Set(CURLOPT_PROXYAUTH, nPasswordSchemes);
    if (!m_pConnection->strUser.empty())
    {
        Set(CURLOPT_USERNAME, m_pConnection->strUser.c_str());
        Set(CURLOPT_PASSWORD, m_pConnection->strPassword.c_str());
    }
}

// The system's authorities, or those that OpenSSL's own variables name. A machine without any knows no authority,
// which is another thing than a failure.
void HttpRequest::SetTrust()
{
    // Only these two: the flag against caches has the value of the one that forgives an unknown authority.
    m_oRules.SetFlags(m_nFlags & (INTERNET_FLAG_IGNORE_CERT_CN_INVALID | INTERNET_FLAG_IGNORE_CERT_DATE_INVALID));
    const char* pszFile = secure_getenv("SSL_CERT_FILE");
    if (!pszFile)
        pszFile = curl_version_info(CURLVERSION_NOW)->cainfo;
    Set(CURLOPT_CAINFO, pszFile && access(pszFile, R_OK) == 0 ? pszFile : nullptr);
    if (const char* const pszFolder = secure_getenv("SSL_CERT_DIR"))
        Set(CURLOPT_CAPATH, pszFolder);
}

void HttpRequest::SetProxyCredentials(const std::string& strUser, const std::string& strPassword)
{
    Set(CURLOPT_PROXYUSERNAME, strUser.c_str());
    Set(CURLOPT_PROXYPASSWORD, strPassword.c_str());
}

DWORD HttpRequest::Send()
{
    Drain();
    Drop();
    m_strHeaders.clear();
    m_nStatus = 0;
    m_bHeadersComplete = false;
    m_strBody.clear();
    m_nTaken = 0;
    m_nFailure = ERROR_SUCCESS;
    m_oRules.Apply(m_pTransfer);
    if (m_bSetUpFailed || curl_multi_add_handle(m_pConnection->pSession->Transfers(), m_pTransfer) != CURLM_OK)
        return ERROR_NOT_ENOUGH_MEMORY;
    m_bRunning = true;

    DWORD nAvailable = 0;
    if (const DWORD nError = WaitForData(nAvailable); nError == ERROR_SUCCESS || IsAnswered())
        return ERROR_SUCCESS;   // what broke off behind the headers is the body, and reading it tells
    m_strHeaders.clear();
    m_nStatus = 0;
    return m_nFailure;
}

// Reads the rest of an answer, so that its connection can serve the next try.
void HttpRequest::Drain()
{
    for (std::size_t nDrained = 0; m_bRunning && nDrained <= nDrainedForReuse; m_nTaken = m_strBody.size())
    {
        nDrained += Arrived();
        Advance();
    }
}

void HttpRequest::Drop()
{
    if (std::exchange(m_bRunning, false))
        curl_multi_remove_handle(m_pConnection->pSession->Transfers(), m_pTransfer);
}

// Takes what has arrived off the network, and waits for it if need be. What was read before is forgotten.
void HttpRequest::Advance()
{
    constexpr int nPollMilliseconds = 1000;
    m_strBody.erase(0, std::exchange(m_nTaken, 0));
    CURLM* const pTransfers = m_pConnection->pSession->Transfers();
    const std::size_t nBefore = m_strBody.size();
    const auto nLatest = std::chrono::steady_clock::now() + nMostSilence;
    for (;;)
    {
        int nRunning = 0;
        if (curl_multi_perform(pTransfers, &nRunning) != CURLM_OK)
            return Finish(CURLE_OUT_OF_MEMORY);
        int nLeft = 0;
        while (const CURLMsg* const pMessage = curl_multi_info_read(pTransfers, &nLeft))
            if (pMessage->msg == CURLMSG_DONE)
                return Finish(pMessage->data.result);
        if (m_strBody.size() > nBefore)
            return;
        if (std::chrono::steady_clock::now() > nLatest)
            return Finish(CURLE_OPERATION_TIMEDOUT);
        curl_multi_poll(pTransfers, nullptr, 0, nPollMilliseconds, nullptr);
    }
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
    if (nResult != CURLE_PEER_FAILED_VERIFICATION)
        return ErrorOfTransfer(nResult);
    // libcurl itself judges the name alone.
    return m_oRules.Refusal() ? m_oRules.Refusal() : ERROR_INTERNET_SEC_CERT_CN_INVALID;
}

DWORD HttpRequest::WaitForData(DWORD& nAvailable)
{
    while (m_bRunning && Arrived() == 0)
        Advance();
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
        static_cast<HttpRequest*>(pRequest)->m_strBody.append(pchData, nSize * nCount);
        return nSize * nCount;
    }
    catch (const std::bad_alloc&)
    {
        return CURLE_WRITE_ERROR;   // anything but the count
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
    if (strLine.starts_with("HTTP/"))
    {
        m_strHeaders.clear();
        m_bHeadersComplete = false;
        m_nHop = Info(CURLINFO_REDIRECT_COUNT);
        m_nStatus = 0;
        const std::size_t nStatus = strLine.find_first_not_of(' ', strLine.find(' '));
        if (nStatus != std::string_view::npos)
            std::from_chars(strLine.data() + nStatus, strLine.data() + strLine.size(), m_nStatus);
    }
    if (m_bHeadersComplete)
        return;   // what follows a body
    strLine = strLine.substr(0, strLine.find_last_not_of("\r\n") + 1);
    m_strHeaders.append(strLine).append("\r\n");
    m_bHeadersComplete = strLine.empty();
}
