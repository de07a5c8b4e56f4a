// The calls of the internet functions: arguments checked, handles looked up, answers copied out.
#include "win32/Internet.h"

#include "Curl.h"
#include "HttpRequest.h"
#include "Proxy.h"
#include "platform/linux/base/Buffers.h"
#include "platform/linux/desktop/CredentialsPrompt.h"
#include "util/OrEmpty.h"

#include <algorithm>
#include <charconv>
#include <cstdint>
#include <cstring>

#include <strings.h>

namespace
{
constexpr DWORD nStatusProxyAuthentication = 407;
constexpr std::size_t nMostRealm = 100;
constexpr DWORD nKnownRequestFlags = INTERNET_FLAG_SECURE | INTERNET_FLAG_KEEP_CONNECTION |
                                     INTERNET_FLAG_NO_AUTO_REDIRECT | INTERNET_FLAG_PRAGMA_NOCACHE |
                                     INTERNET_FLAG_IGNORE_CERT_CN_INVALID | INTERNET_FLAG_IGNORE_CERT_DATE_INVALID;

// Once there is an answer.
std::shared_ptr<HttpRequest> AnsweredRequest(HINTERNET hRequest)
{
    auto pRequest = ObjectOf<HttpRequest>(hRequest);
    Require(pRequest->Status() != 0, ERROR_INTERNET_INCORRECT_HANDLE_STATE);
    return pRequest;
}

// Copies a value out, in the manner of the queries: the size comes in as that of the buffer and goes out as what
// was written, or what would be needed, with room for the text's zero byte.
void GiveOut(std::string_view strValue, DWORD nTerminator, LPVOID pBuffer, LPDWORD pnSize)
{
    const bool bFits = pBuffer && CopyWhole(strValue, nTerminator, pBuffer, *pnSize);
    *pnSize = static_cast<DWORD>(strValue.size()) + (bFits ? 0 : nTerminator);
    Require(bFits, ERROR_INSUFFICIENT_BUFFER);
}

void GiveOut(DWORD nValue, LPVOID pBuffer, LPDWORD pnSize)
{
    GiveOut({reinterpret_cast<const char*>(&nValue), sizeof nValue}, 0, pBuffer, pnSize);
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

// Modulo 4 GiB, as the number that hosts are given has no more.
DWORD ContentLength(std::string_view strHeaders)
{
    const std::string_view strLength = FindHeader(strHeaders, "Content-Length");
    Require(!strLength.empty(), ERROR_HTTP_HEADER_NOT_FOUND);
    std::uint64_t nLength = 0;
    const char* const pchEnd = strLength.data() + strLength.size();
    const auto [pchRead, eError] = std::from_chars(strLength.data(), pchEnd, nLength);
    Require(eError == std::errc() && pchRead == pchEnd, ERROR_HTTP_INVALID_SERVER_RESPONSE);
    return static_cast<DWORD>(nLength);
}

// The text of the prompt. The realm is the proxy's text, and a terminal would obey its control characters.
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
    return ResultOr(HINTERNET{}, [&] {
        RequireSupported(nAccessType == INTERNET_OPEN_TYPE_PRECONFIG && !pszProxy && !pszBypass &&
                         !(nFlags & ~INTERNET_FLAG_SECURE));
        const std::string strAgent = OrEmpty(pszAgent);
        Require(strAgent.find_first_of("\r\n") == std::string::npos,
                ERROR_INVALID_PARAMETER);   // no headers of its own
        return OpenHandle(std::make_shared<HttpSession>(strAgent));
    });
}

HINTERNET win32::InternetConnectA(HINTERNET hSession, LPCSTR pszServer, INTERNET_PORT nPort, LPCSTR pszUser,
                                  LPCSTR pszPassword, DWORD nService, DWORD nFlags, DWORD_PTR /*nContext*/)
{
    return ResultOr(HINTERNET{}, [&] {
        const auto pSession = ObjectOf<HttpSession>(hSession);
        RequireSupported(nService == INTERNET_SERVICE_HTTP && nFlags == 0);
        Require(pszServer && *pszServer, ERROR_INVALID_PARAMETER);
        return OpenHandle(
            std::make_shared<HttpConnection>(pSession, pszServer, nPort, OrEmpty(pszUser), OrEmpty(pszPassword)));
    });
}

HINTERNET win32::HttpOpenRequestA(HINTERNET hConnection, LPCSTR pszVerb, LPCSTR pszObject, LPCSTR pszVersion,
                                  LPCSTR pszReferer, LPCSTR* ppszAcceptTypes, DWORD nFlags, DWORD_PTR /*nContext*/)
{
    return ResultOr(HINTERNET{}, [&] {
        const auto pConnection = ObjectOf<HttpConnection>(hConnection);
        RequireSupported(!pszVersion && !pszReferer && !ppszAcceptTypes && !(nFlags & ~nKnownRequestFlags));
        return OpenHandle(
            std::make_shared<HttpRequest>(pConnection, pszVerb ? pszVerb : "GET", OrEmpty(pszObject), nFlags));
    });
}

BOOL win32::HttpSendRequestA(HINTERNET hRequest, LPCSTR pszHeaders, DWORD /*nHeadersLength*/, LPVOID pBody,
                             DWORD nBodyLength)
{
    return Succeeds([&] {
        const auto pRequest = ObjectOf<HttpRequest>(hRequest);
        RequireSupported(!pszHeaders && !pBody && nBodyLength == 0);
        pRequest->Send();
    });
}

BOOL win32::HttpQueryInfoA(HINTERNET hRequest, DWORD nLevel, LPVOID pBuffer, LPDWORD pnSize, LPDWORD pnIndex)
{
    return Succeeds([&] {
        const auto pRequest = AnsweredRequest(hRequest);
        RequireSupported(!pnIndex);
        switch (nLevel)
        {
        case HTTP_QUERY_RAW_HEADERS_CRLF: return GiveOut(pRequest->Headers(), 1, pBuffer, pnSize);
        case HTTP_QUERY_STATUS_CODE | HTTP_QUERY_FLAG_NUMBER: return GiveOut(pRequest->Status(), pBuffer, pnSize);
        case HTTP_QUERY_CONTENT_LENGTH | HTTP_QUERY_FLAG_NUMBER:
            return GiveOut(ContentLength(pRequest->Headers()), pBuffer, pnSize);
        default: RequireSupported(false);
        }
    });
}

BOOL win32::InternetReadFile(HINTERNET hRequest, LPVOID pBuffer, DWORD nCount, LPDWORD pnRead)
{
    return Succeeds([&] {
        const auto pRequest = AnsweredRequest(hRequest);
        *pnRead = 0;
        *pnRead = pRequest->Read(static_cast<char*>(pBuffer), nCount);
    });
}

BOOL win32::InternetQueryDataAvailable(HINTERNET hRequest, LPDWORD pnAvailable, DWORD nFlags, DWORD_PTR /*nContext*/)
{
    return Succeeds([&] {
        const auto pRequest = AnsweredRequest(hRequest);
        RequireSupported(nFlags == 0);
        *pnAvailable = 0;
        *pnAvailable = pRequest->WaitForData();
    });
}

BOOL win32::InternetQueryOptionA(HINTERNET hRequest, DWORD nOption, LPVOID pBuffer, LPDWORD pnSize)
{
    return Succeeds([&] {
        const auto pRequest = ObjectOf<HttpRequest>(hRequest);
        RequireSupported(nOption == INTERNET_OPTION_SECURITY_FLAGS);
        GiveOut(pRequest->Rules().Flags(), pBuffer, pnSize);
    });
}

BOOL win32::InternetSetOptionA(HINTERNET hRequest, DWORD nOption, LPVOID pBuffer, DWORD nSize)
{
    return Succeeds([&] {
        const auto pRequest = ObjectOf<HttpRequest>(hRequest);
        RequireSupported(nOption == INTERNET_OPTION_SECURITY_FLAGS && nSize == sizeof(DWORD));
        DWORD nFlags = 0;
        std::memcpy(&nFlags, pBuffer, sizeof nFlags);
        pRequest->Rules().SetFlags(nFlags);
    });
}

BOOL win32::InternetCloseHandle(HINTERNET hAny)
{
    return Succeeds([&] { TakeObjectOf<InternetObject>(hAny); });
}

DWORD win32::InternetErrorDlg(HWND /*hWindow*/, HINTERNET hRequest, DWORD /*nError*/, DWORD /*nFlags*/,
                              LPVOID* /*ppData*/)
{
    DWORD nResult = ERROR_SUCCESS;
    const auto ask = [&] {
        const auto pRequest = ObjectOf<HttpRequest>(hRequest);
        if (pRequest->Status() != nStatusProxyAuthentication)
            return;
        Require(!pRequest->Proxy().empty(), ERROR_CANCELLED);   // from something that is no proxy, so nothing helps
        const auto oGiven = AskForCredentials(WhoAsks(*pRequest));
        Require(oGiven.has_value(), ERROR_CANCELLED);
        pRequest->SetProxyCredentials(oGiven->strUser, oGiven->strPassword);
        nResult = ERROR_INTERNET_FORCE_RETRY;
    };
    const DWORD nError = ErrorOf(ask, ERROR_CANCELLED);
    return nError ? nError : nResult;
}

BOOL win32::InternetCheckConnectionA(LPCSTR pszUrl, DWORD nFlags, DWORD /*nReserved*/)
{
    return Succeeds([&] {
        RequireSupported(nFlags == FLAG_ICC_FORCE_CONNECTION);
        if (pszUrl)
            TryToConnect(pszUrl);
    });
}
