#include "FakeInternet.h"

#include "framework/Url.h"
#include "fuzz/Rules.h"

#include <cstdlib>
#include <memory>
#include <random>

#include <gtest/gtest.h>

namespace
{
struct Free
{
    void operator()(char* psz) const { std::free(psz); }
};

std::string Escaped(const std::string& strText, int nLength = 0)
{
    return std::unique_ptr<char, Free>(CHttpServicesPeer().URL_Escape(strText.data(), nLength)).get();
}

std::string UnEscaped(const std::string& strText, int nLength = 0)
{
    int nOut = -1;
    const std::unique_ptr<char, Free> psz(CHttpServicesPeer().URL_UnEscape(strText.data(), nLength, nOut));
    EXPECT_EQ(psz.get()[nOut - 1], 0);
    return {psz.get(), static_cast<std::size_t>(nOut - 1)};
}
}

TEST(Url, SplitsIntoServicesServersPortsAndObjects)
{
    struct Row
    {
        const char* pszUrl;
        DWORD nService;   // 0: does not split
        const char *pszServer, *pszObject;
        INTERNET_PORT nPort;
    };
    for (const Row& o : std::initializer_list<Row>{
             {"http://host", 3, "host", "", 80},
             {"HTTP://u:p@Host:8080/a?b#c", 3, "Host", "/a?b#c", 8080},
             {"https://host?x=http://y:1/", 4107, "host", "?x=http://y:1/", 443},
             {"ftp://h:/x", 1, "h", "/x", 21},
             {"http://[::1]:81/", 3, "[::1]", "/", 81},
             {"http://[h:81/", 3, "[h", "/", 81},
             {"http://h:65536/", 0, "", "", 7},
             {"http://h:8x/", 0, "", "", 7},
             {"http://h/a\r\nX: y", 0, "", "", 7},
             {"http:///x", 0, "", "", 7},
             {"mailto:a@b", 0, "", "", 7},
             {"news://h/x", 0, "", "", 7},
             {"", 0, "", "", 7},
         })
    {
        SCOPED_TRACE(o.pszUrl);
        DWORD nService = 9;
        INTERNET_PORT nPort = 7;
        CString strServer("old"), strObject("old");
        EXPECT_EQ(AfxParseURL(o.pszUrl, nService, strServer, strObject, nPort), o.nService != 0);
        EXPECT_EQ(nService, o.nService);
        EXPECT_EQ(strServer, o.pszServer);
        EXPECT_EQ(strObject, o.pszObject);
        EXPECT_EQ(nPort, o.nPort);
    }
    CHttpServicesPeer oClient;
    EXPECT_EQ(oClient.sGetStrippedURL("https://host/a?b"), "http://host:443");
    EXPECT_EQ(oClient.sGetStrippedURL("no URL"), "http://:80");
    EXPECT_EQ(oClient.sGetHost("http://[::1]/"), "[");
}

TEST(Url, EscapesAllButLettersAndDigits)
{
    EXPECT_EQ(Escaped("a b-c"), "a+b%2Dc");
    EXPECT_EQ(Escaped("AZaz09_.~/\x80\xff"), "AZaz09%5F%2E%7E%2F%80%FF");
    EXPECT_EQ(Escaped(""), "");
    EXPECT_EQ(Escaped("-"), "%2D");
    EXPECT_EQ(Escaped(std::string("\0b", 2), 2), "%00b");
    EXPECT_EQ(Escaped("abc", 1), "a");
    EXPECT_EQ(Escaped(std::string(1000, '-')).size(), 3000u);
}

TEST(Url, UnescapesAsSscanfReads)
{
    EXPECT_EQ(UnEscaped("a+b"), "a+b");
    EXPECT_EQ(UnEscaped("x?a+b?+"), "x?a b? ");
    EXPECT_EQ(UnEscaped("%3Fa+b%2B"), "?a+b+");
    EXPECT_EQ(UnEscaped("%%41"), "%A");
    EXPECT_EQ(UnEscaped("%4G"), "\x04");
    EXPECT_EQ(UnEscaped("%41%42", 5), std::string("A\x04"));   // never behind the given length
    EXPECT_EQ(UnEscaped(std::string("%\0AB", 4), 4), std::string("\0B", 2));
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
    EXPECT_EQ(oClient.sGetCachedURL("http://name/name?name"), "http://other:8080/other:8080?other:8080");
    EXPECT_EQ(oClient.sGetCachedURL("http://name:9/"), "http://other:8080/");
    EXPECT_EQ(oClient.sGetCachedURL("http://none/x"), "http://none/x");
    EXPECT_EQ(oClient.sGetCachedURL("http://none:9/x"), "http://none/x");
    EXPECT_EQ(oClient.sGetCachedURL("http://name/x:y"), "http://name/x:y");   // the key then is name:80
}
