// Split here and not by the system, so that a URL means the same on every target. The whole text is judged before any
// part is given out, so that a refused URL leaves no half of one.
#include "framework/Url.h"

#include <algorithm>
#include <charconv>
#include <optional>
#include <string>
#include <string_view>

namespace
{
struct Scheme
{
    const char* pszName;
    DWORD nServiceType;
    INTERNET_PORT nPort;
};
constexpr Scheme s_aSchemes[] = {{"http", AFX_INET_SERVICE_HTTP, 80},
                                 {"https", AFX_INET_SERVICE_HTTPS, 443},
                                 {"ftp", AFX_INET_SERVICE_FTP, 21},
                                 {"gopher", AFX_INET_SERVICE_GOPHER, 70}};

constexpr std::string_view strBehindScheme = "://";

bool HasControlCharacter(std::string_view strText)
{
    return std::any_of(strText.begin(), strText.end(), [](char ch) {
        const auto nByte = static_cast<unsigned char>(ch);
        return nByte < 0x20 || nByte == 0x7f;
    });
}

CString AsCString(std::string_view strText)
{
    return {std::string(strText)};
}

const Scheme* FindScheme(std::string_view strName)
{
    const CString strWanted = AsCString(strName);
    for (const Scheme& oScheme : s_aSchemes)
        if (strWanted.CompareNoCase(oScheme.pszName) == 0)
            return &oScheme;
    return nullptr;
}

// The port of some digits, none of which stand for the scheme's; nothing if they are no port.
std::optional<INTERNET_PORT> ReadPort(std::string_view strDigits, INTERNET_PORT nOfScheme)
{
    if (strDigits.empty())
        return nOfScheme;
    INTERNET_PORT nPort = 0;
    const char* const pchEnd = strDigits.data() + strDigits.size();
    const auto [pchRead, eError] = std::from_chars(strDigits.data(), pchEnd, nPort);
    return eError == std::errc() && pchRead == pchEnd ? std::optional(nPort) : std::nullopt;
}

// The place of the port's colon, past the brackets of an IPv6 address; the length if there is none. A bracket that
// nothing closes guards no colon.
std::size_t FindPortColon(std::string_view strServer)
{
    const std::size_t nBracket = strServer.starts_with('[') ? strServer.find(']') : std::string_view::npos;
    return std::min(strServer.find(':', nBracket == std::string_view::npos ? 0 : nBracket), strServer.size());
}
}

bool AfxParseURL(const CString& strUrl, DWORD& nServiceType, CString& strServer, CString& strObject,
                 INTERNET_PORT& nPort)
{
    nServiceType = 0;
    strServer.Empty();
    strObject.Empty();

    const std::string strText(strUrl, static_cast<std::size_t>(strUrl.GetLength()));
    std::string_view strRest = strText;
    const std::size_t nScheme = strRest.find(strBehindScheme);
    if (nScheme == std::string_view::npos || HasControlCharacter(strRest))
        return false;
    const Scheme* const pScheme = FindScheme(strRest.substr(0, nScheme));
    if (!pScheme)
        return false;
    strRest.remove_prefix(nScheme + strBehindScheme.size());

    const std::size_t nObject = std::min(strRest.find_first_of("/\\?#"), strRest.size());
    std::string_view strAuthority = strRest.substr(0, nObject);
    // The last one, because a name or a password may hold one too, and must not become the server.
    if (const std::size_t nUser = strAuthority.rfind('@'); nUser != std::string_view::npos)
        strAuthority.remove_prefix(nUser + 1);
    const std::size_t nColon = FindPortColon(strAuthority);
    const auto nFound = ReadPort(strAuthority.substr(std::min(nColon + 1, strAuthority.size())), pScheme->nPort);
    if (nColon == 0 || !nFound)
        return false;

    nServiceType = pScheme->nServiceType;
    strServer = AsCString(strAuthority.substr(0, nColon));
    strObject = AsCString(strRest.substr(nObject));
    nPort = *nFound;
    return true;
}

CString HostAndPort(const CString& strServer, INTERNET_PORT nPort)
{
    return strServer + ":" + std::to_string(nPort).c_str();
}
