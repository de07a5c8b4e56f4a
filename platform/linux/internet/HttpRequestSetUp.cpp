// The settings that a request gives libcurl before it is sent: all that tells one request from another stands here.
#include "Curl.h"
#include "HttpRequest.h"
#include "Proxy.h"

#include <cstdlib>
#include <new>

#include <strings.h>
#include <unistd.h>

namespace
{
constexpr long nMostRedirects = 50;
constexpr long nNetworkBlock = 0x20000;   // bytes that are taken off the network at a time

std::string EscapeBlanks(const std::string& strText)
{
    std::string strEscaped;
    for (const char ch : strText)
        strEscaped.append(ch == ' ' ? "%20" : std::string(1, ch));
    return strEscaped;
}
}

// libcurl refuses a setting that it knows only for want of memory.
template <class Value>
void HttpRequest::Set(CURLoption nOption, Value value)
{
    if (curl_easy_setopt(m_pTransfer.get(), nOption, value) != CURLE_OK)
        throw std::bad_alloc();
}

HttpRequest::HttpRequest(std::shared_ptr<HttpConnection> pConnection, const std::string& strVerb,
                         const std::string& strObject, DWORD nFlags)
    : m_pConnection(std::move(pConnection)), m_nFlags(nFlags), m_pTransfer(curl_easy_init())
{
    if (!m_pTransfer)
        throw std::bad_alloc();
    SetUrl(strObject);
    SetVerb(strVerb);
    SetSession();
    SetTrust();
    Set(CURLOPT_HEADERFUNCTION, &HttpRequest::OnHeader);
    Set(CURLOPT_HEADERDATA, this);
    Set(CURLOPT_WRITEFUNCTION, &HttpRequest::OnBody);
    Set(CURLOPT_WRITEDATA, this);
    Set(CURLOPT_PRIVATE, this);
}

// Server and port are judged by the library's own rules; the object is sent as it stands, its dots included.
void HttpRequest::SetUrl(const std::string& strObject)
{
    const char* const pszScheme = m_nFlags & INTERNET_FLAG_SECURE ? "https" : "http";
    const int nServicePort = m_nFlags & INTERNET_FLAG_SECURE ? 443 : 80;
    const std::string strPort = std::to_string(m_pConnection->nPort ? m_pConnection->nPort : nServicePort);
    const Owned<CURLU, curl_url_cleanup> pUrl(curl_url());
    Require(pUrl && curl_url_set(pUrl.get(), CURLUPART_HOST, m_pConnection->strServer.c_str(), 0) == CURLUE_OK &&
                curl_url_set(pUrl.get(), CURLUPART_PORT, strPort.c_str(), 0) == CURLUE_OK,
            ERROR_INTERNET_INVALID_URL);

    std::string strUrl = pszScheme + ("://" + m_pConnection->strServer) + ":" + strPort;
    if (!strObject.starts_with('/'))
        strUrl += '/';
    Set(CURLOPT_URL, (strUrl + EscapeBlanks(strObject)).c_str());
    Set(CURLOPT_PATH_AS_IS, 1L);
}

void HttpRequest::AddHeaderLine(const char* pszLine)
{
    curl_slist* const pLines = curl_slist_append(m_pHeaderLines.get(), pszLine);
    if (!pLines)
        throw std::bad_alloc();
    static_cast<void>(m_pHeaderLines.release());   // the same list, but for the first line
    m_pHeaderLines.reset(pLines);
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
    AddHeaderLine("Accept:");   // none, as on Windows
    if (m_nFlags & INTERNET_FLAG_PRAGMA_NOCACHE)
        AddHeaderLine("Pragma: no-cache");
    if (!(m_nFlags & INTERNET_FLAG_KEEP_CONNECTION))
        AddHeaderLine("Connection: close");
    Set(CURLOPT_HTTPHEADER, m_pHeaderLines.get());
}

void HttpRequest::SetSession()
{
    Set(CURLOPT_USERAGENT, m_pConnection->pSession->Agent().c_str());
    Set(CURLOPT_HTTP_VERSION, static_cast<long>(CURL_HTTP_VERSION_1_1));
    Set(CURLOPT_NOSIGNAL, 1L);   // signals are the host's
    Set(CURLOPT_CONNECTTIMEOUT, nConnectSeconds);
    Set(CURLOPT_TCP_KEEPALIVE, 1L);   // a peer that is gone is noticed long before the silence is too long
    Set(CURLOPT_BUFFERSIZE, nNetworkBlock);
    Set(CURLOPT_COOKIEFILE, "");   // within the request: some redirects want theirs back
    Set(CURLOPT_PROTOCOLS_STR, "http,https");
    // Away from a secure connection no redirect is followed.
    Set(CURLOPT_REDIR_PROTOCOLS_STR, m_nFlags & INTERNET_FLAG_SECURE ? "https" : "http,https");
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
    if (!pszFile || access(pszFile, R_OK) != 0)
        pszFile = nullptr;
    Set(CURLOPT_CAINFO, pszFile);
    Set(CURLOPT_PROXY_CAINFO, pszFile);
    if (const char* const pszFolder = secure_getenv("SSL_CERT_DIR"))
    {
        Set(CURLOPT_CAPATH, pszFolder);
        Set(CURLOPT_PROXY_CAPATH, pszFolder);
    }
}

std::string HttpRequest::Proxy() const
{
    const char* pszScheme = nullptr;
    curl_easy_getinfo(m_pTransfer.get(), CURLINFO_SCHEME, &pszScheme);
    return ProxyOf(pszScheme && strcasecmp(pszScheme, "https") == 0);
}

// The proxy's variable may hold credentials, which would win over these. It holds for all hops of the request from
// then on: another proxy must not see them.
void HttpRequest::SetProxyCredentials(const std::string& strUser, const std::string& strPassword)
{
    Set(CURLOPT_PROXY, WithoutUser(Proxy()).c_str());
    Set(CURLOPT_PROXYUSERNAME, strUser.c_str());
    Set(CURLOPT_PROXYPASSWORD, strPassword.c_str());
}
