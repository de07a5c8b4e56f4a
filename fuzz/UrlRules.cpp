// URLs by a regular expression, escapes by printf and sscanf: accounts that share no code with the library.
#include "Rules.h"

#include "ZevrinUtils/HttpServices.h"
#include "framework/Url.h"

#include <algorithm>
#include <cctype>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <regex>
#include <tuple>
#include <vector>

namespace
{
struct Free
{
    void operator()(char* psz) const { std::free(psz); }
};
using Owned = std::unique_ptr<char, Free>;

// Unescapes a text that has no terminator, unless it is empty.
std::string UnEscaped(const std::string& strText)
{
    const std::vector<char> oText(strText.begin(), strText.end());
    int nOut = -1;
    const Owned pszPlain(
        CHttpServices().URL_UnEscape(oText.empty() ? "" : oText.data(), static_cast<int>(oText.size()), nOut));
    return pszPlain.get()[nOut - 1] ? "no terminator" : std::string(pszPlain.get(), static_cast<std::size_t>(nOut - 1));
}

std::string UnEscapedBySscanf(const std::string& strText)
{
    std::string strOut;
    bool bQuestion = false;
    unsigned nValue = 0;
    for (std::size_t n = 0; n < strText.size(); ++n)
    {
        char ch = strText[n];
        if (bQuestion && ch == '+')
            ch = ' ';
        else if (ch == '?')
            bQuestion = true;
        else if (ch == '%' && std::sscanf(strText.c_str() + n + 1, "%02X", &nValue) != 0)
        {
            ch = static_cast<char>(nValue);
            n += 2;
        }
        strOut += ch;
    }
    return strOut;
}

std::string EscapedByPrintf(const std::string& strPlain)
{
    std::string strText;
    for (const char ch : strPlain)
    {
        char szEscape[4] = {ch};
        if (ch == ' ')
            szEscape[0] = '+';
        else if (!std::isalnum(static_cast<unsigned char>(ch)))
            std::snprintf(szEscape, sizeof szEscape, "%%%02X", static_cast<unsigned>(static_cast<unsigned char>(ch)));
        strText += szEscape;
    }
    return strText;
}

// Scheme, user, server, port and object. The colons of an IPv6 address stand in brackets.
const std::regex s_oUrl(R"(([a-z]+)://([^/\\?#]*@)?(\[[^\]/\\?#@]*\][^/\\?#@:]*|[^/\\?#@:]+)(:\d*)?([/\\?#].*)?)",
                        std::regex::icase);
const std::tuple<const char*, DWORD, int> s_aoSchemes[] = {
    {"http", 3, 80}, {"https", 4107, 443}, {"ftp", 1, 21}, {"gopher", 2, 70}};

using Parts = std::tuple<DWORD, std::string, std::string, INTERNET_PORT>;
constexpr INTERNET_PORT nPortBefore = 7;

Parts PartsByGrammar(std::string strUrl)
{
    std::smatch oFound;
    const bool bHasControls = std::ranges::any_of(strUrl, [](unsigned char n) { return std::iscntrl(n); });
    if (!bHasControls && std::regex_match(strUrl, oFound, s_oUrl))
        for (const auto& [pszScheme, nService, nPortOfScheme] : s_aoSchemes)
            if (CString(oFound.str(1)).CompareNoCase(pszScheme) == 0)
            {
                const std::string strPort = oFound.str(4);
                const long nPort = strPort.size() > 1 ? std::strtol(&strPort[1], nullptr, 10) : nPortOfScheme;
                if (nPort <= 65535)
                    return {nService, oFound.str(3), oFound.str(5), static_cast<INTERNET_PORT>(nPort)};
            }
    return {0, "", "", nPortBefore};
}
}

std::string FaultInUrlSplitting(const unsigned char* pText, std::size_t nSize)
{
    const std::string strUrl(pText, pText + nSize);
    DWORD nService = 9;
    CString strServer("old");
    CString strObject("old");
    INTERNET_PORT nPort = nPortBefore;
    const bool bSplits = AfxParseURL(strUrl, nService, strServer, strObject, nPort);
    if (bSplits != (nService != 0))
        return "the result";
    return Parts(nService, std::string(strServer), std::string(strObject), nPort) == PartsByGrammar(strUrl)
               ? ""
               : "the parts";
}

std::string FaultInUrlEscaping(const unsigned char* pPlain, std::size_t nSize)
{
    const std::string strPlain(pPlain, pPlain + nSize);
    const char* const pszPlain = nSize ? reinterpret_cast<const char*>(pPlain) : "";
    const Owned pszText(CHttpServices().URL_Escape(pszPlain, static_cast<int>(nSize)));
    const std::string strText = pszText.get();
    return strText != EscapedByPrintf(strPlain)         ? "the text"
           : UnEscaped("?" + strText) != "?" + strPlain ? "what comes back"
                                                        : "";
}

std::string FaultInUrlUnescaping(const unsigned char* pText, std::size_t nSize)
{
    const std::string strText(pText, pText + nSize);
    return UnEscaped(strText) == UnEscapedBySscanf(strText) ? "" : "the text";
}
