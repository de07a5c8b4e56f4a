#include "win32/Internet.h"

#include "Curl.h"
#include "HttpRequest.h"
#include "Proxy.h"
#include "platform/linux/base/Failure.h"
#include "platform/linux/desktop/CredentialsPrompt.h"
#include "util/OrEmpty.h"

#include <algorithm>
#include <charconv>
#include <cstring>

#include <strings.h>

namespace
{
constexpr DWORD nStatusProxyAuthentication = 407;
constexpr std::size_t nMostRealm = 100;
constexpr DWORD nKnownRequestFlags = INTERNET_FLAG_SECURE | INTERNET_FLAG_KEEP_CONNECTION |
                                     INTERNET_FLAG_NO_AUTO_REDIRECT | INTERNET_FLAG_PRAGMA_NOCACHE |
                                     INTERNET_FLAG_IGNORE_CERT_CN_INVALID | INTERNET_FLAG_IGNORE_CERT_DATE_INVALID;

BOOL Answer(DWORD nError) noexcept
{
    return nError == ERROR_SUCCESS ? TRUE : Fail(nError, FALSE);
}

// Copies a value out, in the manner of the queries: the size comes in as that of the buffer and goes out as what
// was written, or what would be needed, with room for the text's zero byte.
BOOL GiveOut(const void* pValue, DWORD nSize, DWORD nTerminator, LPVOID pBuffer, LPDWORD pnSize)
{
    const bool bFits = pBuffer && *pnSize >= nSize + nTerminator;
    *pnSize = bFits ? nSize : nSize + nTerminator;
    if (!bFits)
        return Fail(ERROR_INSUFFICIENT_BUFFER, FALSE);
    std::memcpy(pBuffer, pValue, nSize);
    std::memset(static_cast<char*>(pBuffer) + nSize, 0, nTerminator);
    return TRUE;
}

// The value of a header's last occurrence, without the blanks around it.
std::string_view FindHeader(std::string_view strHeaders, std::string_view strName)
{
    std::string_view strFound;
    while (!strHeaders.empty())
    {
        std::string_view strLine = strHeaders.substr(0, strHeaders.find("\r\n"));
        strHeaders.remove_prefix(std::min(strHeaders.size(), strLine.size() + 2));
        if (strLine.size() > strName.size() && strLine[strName.size()] == ':' &&
            strncasecmp(strLine.data(), strName.data(), strName.size()) == 0)
        {
            strLine.remove_prefix(strName.size() + 1);
            const std::size_t nFirst = std::min(strLine.find_first_not_of(" \t"), strLine.size());
            strFound = strLine.substr(nFirst, strLine.find_last_not_of(" \t") + 1 - nFirst);
        }
    }
    return strFound;
}

BOOL QueryContentLength(const HttpRequest& oRequest, LPVOID pBuffer, LPDWORD pnSize)
{
    const std::string_view strLength = FindHeader(oRequest.Headers(), "Content-Length");
    if (strLength.empty())
        return Fail(ERROR_HTTP_HEADER_NOT_FOUND, FALSE);
    std::uint64_t nLength = 0;
    const char* const pchEnd = strLength.data() + strLength.size();
    const auto [pchRead, eError] = std::from_chars(strLength.data(), pchEnd, nLength);
    if (eError != std::errc() || pchRead != pchEnd)
        return Fail(ERROR_HTTP_INVALID_SERVER_RESPONSE, FALSE);
    const auto nLow = static_cast<DWORD>(nLength);
    return GiveOut(&nLow, sizeof nLow, 0, pBuffer, pnSize);
}

// What the prompt says. The realm is the proxy's text, and a terminal would obey its control characters.
std::string WhoAsks(const HttpRequest& oRequest)
{
    constexpr std::string_view strName = "realm=\"";
    std::string strText = "The proxy " + WithoutUser(oRequest.Proxy()) + " asks for a name and a password";
    const std::string_view strChallenge = FindHeader(oRequest.Headers(), "Proxy-Authenticate");
    if (const std::size_t nRealm = strChallenge.find(strName); nRealm != std::string_view::npos)
    {
        const std::string_view strRealm = strChallenge.substr(nRealm + strName.size());
        strText.append(" (").append(strRealm.substr(0, std::min(strRealm.find('"'), nMostRealm))).append(")");
    }
    const auto isUnprintable = [](unsigned char ch) { return ch < ' ' || ch >= 0x7f; };
    std::replace_if(strText.begin(), strText.end(), isUnprintable, '?');
    return strText;
}
}

HINTERNET win32::InternetOpenA(LPCSTR pszAgent, DWORD nAccessType, LPCSTR pszProxy, LPCSTR pszBypass, DWORD nFlags)
{
    if (nAccessType != INTERNET_OPEN_TYPE_PRECONFIG || pszProxy || pszBypass || (nFlags & ~INTERNET_FLAG_SECURE))
        return Fail(ERROR_NOT_SUPPORTED, HINTERNET{});
    const std::string_view strAgent = OrEmpty(pszAgent);
    if (strAgent.find_first_of("\r\n") != std::string_view::npos)
        return Fail(ERROR_INVALID_PARAMETER, HINTERNET{});   // which would be headers of its own
    return OrOutOfMemory(HINTERNET{}, [&] { return OpenHandle(std::make_shared<HttpSession>(std::string(strAgent))); });
}

HINTERNET win32::InternetConnectA(HINTERNET hSession, LPCSTR pszServer, INTERNET_PORT nPort, LPCSTR pszUser,
                                  LPCSTR pszPassword, DWORD nService, DWORD nFlags, DWORD_PTR /*nContext*/)
{
    const auto pSession = FindObjectOf<HttpSession>(hSession);
    if (!pSession)
        return Fail(ERROR_INVALID_HANDLE, HINTERNET{});
    if (nService != INTERNET_SERVICE_HTTP || nFlags != 0)
        return Fail(ERROR_NOT_SUPPORTED, HINTERNET{});
    if (!pszServer || !*pszServer)
        return Fail(ERROR_INVALID_PARAMETER, HINTERNET{});
    return OrOutOfMemory(HINTERNET{}, [&] {
        return OpenHandle(
            std::make_shared<HttpConnection>(pSession, pszServer, nPort, OrEmpty(pszUser), OrEmpty(pszPassword)));
    });
}

HINTERNET win32::HttpOpenRequestA(HINTERNET hConnection, LPCSTR pszVerb, LPCSTR pszObject, LPCSTR pszVersion,
                                  LPCSTR pszReferer, LPCSTR* ppszAcceptTypes, DWORD nFlags, DWORD_PTR /*nContext*/)
{
    const auto pConnection = FindObjectOf<HttpConnection>(hConnection);
    if (!pConnection)
        return Fail(ERROR_INVALID_HANDLE, HINTERNET{});
    if (pszVersion || pszReferer || ppszAcceptTypes || (nFlags & ~nKnownRequestFlags))
        return Fail(ERROR_NOT_SUPPORTED, HINTERNET{});
    return OrOutOfMemory(HINTERNET{}, [&] {
        const auto pRequest = std::make_shared<HttpRequest>(pConnection, nFlags);
        const DWORD nError = pRequest->SetUp(pszVerb ? pszVerb : "GET", OrEmpty(pszObject));
        return nError == ERROR_SUCCESS ? OpenHandle(pRequest) : Fail(nError, HINTERNET{});
    });
}

BOOL win32::HttpSendRequestA(HINTERNET hRequest, LPCSTR pszHeaders, DWORD /*nHeadersLength*/, LPVOID pBody,
                             DWORD nBodyLength)
{
    const auto pRequest = FindObjectOf<HttpRequest>(hRequest);
    if (!pRequest)
        return Fail(ERROR_INVALID_HANDLE, FALSE);
    if (pszHeaders || pBody || nBodyLength != 0)
        return Fail(ERROR_NOT_SUPPORTED, FALSE);
    return OrOutOfMemory(FALSE, [&] { return Answer(pRequest->Send()); });
}

BOOL win32::HttpQueryInfoA(HINTERNET hRequest, DWORD nLevel, LPVOID pBuffer, LPDWORD pnSize, LPDWORD pnIndex)
{
    const auto pRequest = FindObjectOf<HttpRequest>(hRequest);
    if (!pRequest)
        return Fail(ERROR_INVALID_HANDLE, FALSE);
    if (pnIndex)
        return Fail(ERROR_NOT_SUPPORTED, FALSE);
    const DWORD nStatus = pRequest->Status();
    if (nStatus == 0)
        return Fail(ERROR_INTERNET_INCORRECT_HANDLE_STATE, FALSE);
    switch (nLevel)
    {
    case HTTP_QUERY_RAW_HEADERS_CRLF:
        return GiveOut(pRequest->Headers().data(), static_cast<DWORD>(pRequest->Headers().size()), 1, pBuffer, pnSize);
    case HTTP_QUERY_STATUS_CODE | HTTP_QUERY_FLAG_NUMBER: return GiveOut(&nStatus, sizeof nStatus, 0, pBuffer, pnSize);
    case HTTP_QUERY_CONTENT_LENGTH | HTTP_QUERY_FLAG_NUMBER: return QueryContentLength(*pRequest, pBuffer, pnSize);
    default: return Fail(ERROR_NOT_SUPPORTED, FALSE);
    }
}

BOOL win32::InternetReadFile(HINTERNET hRequest, LPVOID pBuffer, DWORD nCount, LPDWORD pnRead)
{
    const auto pRequest = FindObjectOf<HttpRequest>(hRequest);
    if (!pRequest)
        return Fail(ERROR_INVALID_HANDLE, FALSE);
    if (pRequest->Status() == 0)
        return Fail(ERROR_INTERNET_INCORRECT_HANDLE_STATE, FALSE);
    return OrOutOfMemory(FALSE, [&] { return Answer(pRequest->Read(static_cast<char*>(pBuffer), nCount, *pnRead)); });
}

BOOL win32::InternetQueryDataAvailable(HINTERNET hRequest, LPDWORD pnAvailable, DWORD nFlags, DWORD_PTR /*nContext*/)
{
    const auto pRequest = FindObjectOf<HttpRequest>(hRequest);
    if (!pRequest)
        return Fail(ERROR_INVALID_HANDLE, FALSE);
    if (nFlags != 0)
        return Fail(ERROR_NOT_SUPPORTED, FALSE);
    if (pRequest->Status() == 0)
        return Fail(ERROR_INTERNET_INCORRECT_HANDLE_STATE, FALSE);
    return OrOutOfMemory(FALSE, [&] { return Answer(pRequest->WaitForData(*pnAvailable)); });
}

BOOL win32::InternetQueryOptionA(HINTERNET hRequest, DWORD nOption, LPVOID pBuffer, LPDWORD pnSize)
{
    const auto pRequest = FindObjectOf<HttpRequest>(hRequest);
    if (!pRequest)
        return Fail(ERROR_INVALID_HANDLE, FALSE);
    if (nOption != INTERNET_OPTION_SECURITY_FLAGS)
        return Fail(ERROR_NOT_SUPPORTED, FALSE);
    const DWORD nFlags = pRequest->Rules().Flags();
    return GiveOut(&nFlags, sizeof nFlags, 0, pBuffer, pnSize);
}

BOOL win32::InternetSetOptionA(HINTERNET hRequest, DWORD nOption, LPVOID pBuffer, DWORD nSize)
{
    const auto pRequest = FindObjectOf<HttpRequest>(hRequest);
    if (!pRequest)
        return Fail(ERROR_INVALID_HANDLE, FALSE);
    if (nOption != INTERNET_OPTION_SECURITY_FLAGS || nSize != sizeof(DWORD))
        return Fail(ERROR_NOT_SUPPORTED, FALSE);
    DWORD nFlags = 0;
    std::memcpy(&nFlags, pBuffer, sizeof nFlags);
    pRequest->Rules().SetFlags(nFlags);
    return TRUE;
}

BOOL win32::InternetCloseHandle(HINTERNET hAny)
{
    return ForgetHandle(hAny) ? TRUE : Fail(ERROR_INVALID_HANDLE, FALSE);
}

DWORD win32::InternetErrorDlg(HWND /*hWindow*/, HINTERNET hRequest, DWORD /*nError*/, DWORD /*nFlags*/,
                              LPVOID* /*ppData*/)
{
    const auto pRequest = FindObjectOf<HttpRequest>(hRequest);
    if (!pRequest)
        return ERROR_INVALID_HANDLE;
    if (pRequest->Status() != nStatusProxyAuthentication)
        return ERROR_SUCCESS;
    if (pRequest->Proxy().empty())
        return ERROR_CANCELLED;   // from something that is no proxy, so nothing helps
    return OrOutOfMemory(ERROR_CANCELLED, [&]() -> DWORD {
        const auto oGiven = AskForCredentials(WhoAsks(*pRequest));
        if (!oGiven)
            return ERROR_CANCELLED;
        pRequest->SetProxyCredentials(oGiven->strUser, oGiven->strPassword);
        return ERROR_INTERNET_FORCE_RETRY;
    });
}

BOOL win32::InternetCheckConnectionA(LPCSTR pszUrl, DWORD nFlags, DWORD /*nReserved*/)
{
    if (nFlags != FLAG_ICC_FORCE_CONNECTION)
        return Fail(ERROR_NOT_SUPPORTED, FALSE);
    return pszUrl ? Answer(TryToConnect(pszUrl)) : TRUE;
}
