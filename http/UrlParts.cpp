// Server and port, as requests and the table of hosts name them. A server is cut at its first colon, so an IPv6 address
// in brackets never works; hosts are told so.
#include "http/UrlParts.h"

#include "ZevrinUtils/HttpServices.h"
#include "framework/Url.h"

CString HostOf(const CString& sURL)
{
    DWORD nService = 0;
    INTERNET_PORT nPort = 0;
    CString strServer;
    CString strObject;
    AfxParseURL(sURL, nService, strServer, strObject, nPort);
    const int nColon = strServer.Find(':');
    return nColon >= 0 ? strServer.Left(nColon) : strServer;
}

unsigned short PortOf(const CString& sURL)
{
    constexpr INTERNET_PORT nHttpPort = 80;
    DWORD nService = 0;
    INTERNET_PORT nPort = nHttpPort;
    CString strServer;
    CString strObject;
    return AfxParseURL(sURL, nService, strServer, strObject, nPort) ? nPort : nHttpPort;
}

CString HostKey(const CString& sURL)
{
    constexpr int nColonOfHttp = 4;
    const int nColon = sURL.ReverseFind(':');
    return nColon < 0 || nColon == nColonOfHttp ? HostOf(sURL) : HostAndPort(HostOf(sURL), PortOf(sURL));
}

CString CHttpServices::sGetHost(const CString& sURL)
{
    return HostOf(sURL);
}

unsigned short CHttpServices::nGetPort(const CString& sURL)
{
    return PortOf(sURL);
}

// Always http, and always with the port.
CString CHttpServices::sGetStrippedURL(const CString& sURL)
{
    return "http://" + HostAndPort(HostOf(sURL), PortOf(sURL));
}
