// URLs are split, escaped and unescaped, and hosts cached, by the documented rules and for any bytes.
#include "FakeInternet.h"

#include "framework/Url.h"
#include "fuzz/Rules.h"
#include "platform/Memory.h"

#include <random>

#include <gtest/gtest.h>

namespace
{
std::string Escaped(const std::string& strText, int nLength = 0)
{
    return Malloced<char>(CHttpServicesPeer().URL_Escape(strText.data(), nLength)).get();
}

std::string UnEscaped(const std::string& strText, int nLength = 0)
{
    int nOut = -1;
    const Malloced<char> psz(CHttpServicesPeer().URL_UnEscape(strText.data(), nLength, nOut));
    EXPECT_EQ(psz.get()[nOut - 1], 0);
    return {psz.get(), static_cast<std::size_t>(nOut - 1)};
}
}

TEST(Url, SplitsIntoServicesServersPortsAndObjects)
{
    struct Row
    {
        const char* pszUrl;
        DWORD nService = 0;   // does not split
        const char *pszServer = "", *pszObject = "";
        INTERNET_PORT nPort = 7;
    };
    const Row aRows[] = {{"http://host", 3, "host", "", 80},
                         {"HTTP://u:p@Host:8080/a?b#c", 3, "Host", "/a?b#c", 8080},
                         {"https://host?x=http://y:1/", 4107, "host", "?x=http://y:1/", 443},
                         {"ftp://h:/x", 1, "h", "/x", 21},
                         {"http://[::1]:81/", 3, "[::1]", "/", 81},
                         {"http://[h:81/", 3, "[h", "/", 81},
                         {"http://h:65536/"},
                         {"http://h:8x/"},
                         {"http://h/a\r\nX: y"},
                         {"http:///x"},
                         {"mailto:a@b"},
                         {"news://h/x"},
                         {""}};
    for (const Row& o : aRows)
    {
        SCOPED_TRACE(o.pszUrl);
        DWORD nService = 9;
        INTERNET_PORT nPort = 7;
        CString strServer("old"), strObject("old");
        EXPECT_EQ(AfxParseURL(o.pszUrl, nService, strServer, strObject, nPort), o.nService != 0);
        EXPECT_EQ(std::tie(nService, strServer, strObject, nPort),
                  std::tuple(o.nService, CString(o.pszServer), CString(o.pszObject), o.nPort));
    }
    CHttpServicesPeer oClient;
    EXPECT_EQ(oClient.sGetStrippedURL("https://host/a?b"), "http://host:443");
    EXPECT_EQ(oClient.sGetStrippedURL("no URL"), "http://:80");
    EXPECT_EQ(oClient.sGetHost("http://[::1]/"), "[");
}

TEST(Url, EscapesAllButLettersAndDigits)
{
    for (const auto& [pszText, pszEscaped] :
         {std::pair{"a b-c", "a+b%2Dc"}, {"AZaz09_.~/\x80\xff", "AZaz09%5F%2E%7E%2F%80%FF"}, {"", ""}, {"-", "%2D"}})
        EXPECT_EQ(Escaped(pszText), pszEscaped);
    EXPECT_EQ(Escaped(std::string("\0b", 2), 2), "%00b");
    EXPECT_EQ(Escaped("abc", 1), "a");
    EXPECT_EQ(Escaped(std::string(1000, '-')).size(), 3000u);
}

TEST(Url, UnescapesAsSscanfReads)
{
    for (const auto& [pszText, pszPlain] :
         {std::pair{"a+b", "a+b"}, {"x?a+b?+", "x?a b? "}, {"%3Fa+b%2B", "?a+b+"}, {"%%41", "%A"}, {"%4G", "\x04"}})
        EXPECT_EQ(UnEscaped(pszText), pszPlain);
    EXPECT_EQ(UnEscaped("%41%42", 5), "A\x04");   // never behind the given length
    const std::string strPercents(1 << 20, '%');
    EXPECT_EQ(UnEscaped(strPercents + "41"), strPercents.substr(1) + "A");

    std::mt19937 oRandom(4711);
    for (int n = 0; n < 100000; ++n)
    {
        std::string strText(oRandom() % 9, ' ');
        for (char& ch : strText)
            ch = "%%%% \t\n+-?0aFfxXgG\xE4"[oRandom() % 19];
        ASSERT_EQ(FaultInUrlUnescaping(reinterpret_cast<const BYTE*>(strText.data()), strText.size()), "") << strText;
    }
}

TEST(HostCache, KeysCarryThePortThatLookupsIgnore)
{
    CHttpServicesPeer oClient;
    CHttpServicesPeer::m_oHostNameToIp["name"] = "other:8080";
    CHttpServicesPeer::m_oHostNameToIp["empty"] = "";
    CHttpServicesPeer::m_oHostNameToIp["ported:81"] = "never";
    EXPECT_TRUE(oClient.bIsURLHostCached("http://name:9/a"));
    for (const char* pszUrl : {"http://Name/", "http://empty/", "http://ported:81/"})
        EXPECT_FALSE(oClient.bIsURLHostCached(pszUrl)) << pszUrl;
    EXPECT_EQ(oClient.sGetCachedURLHostAndPort("http://ported:81/"), "ported");
    for (const auto& [pszUrl, pszCached] :
         {std::pair{"http://name/name?name", "http://other:8080/other:8080?other:8080"},
          {"http://name:9/", "http://other:8080/"},
          {"http://none/x", "http://none/x"},
          {"http://none:9/x", "http://none/x"},
          {"http://name/x:y", "http://name/x:y"}})   // the key then is name:80
        EXPECT_EQ(oClient.sGetCachedURL(pszUrl), pszCached);
}
