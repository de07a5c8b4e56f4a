// What a URL names.
#include "ZevrinUtils/HttpServices.h"

#include "framework/Url.h"

CString CHttpServices::sGetHost(const CString& sURL)
{
    DWORD nService = 0;
    INTERNET_PORT nPort = 0;
    CString strServer;
    CString strObject;
    AfxParseURL(sURL, nService, strServer, strObject, nPort);
    const int nColon = strServer.Find(':');
    return nColon >= 0 ? strServer.Left(nColon) : strServer;
}

unsigned short CHttpServices::nGetPort(const CString& sURL)
{
    constexpr INTERNET_PORT nHttpPort = 80;
    DWORD nService = 0;
    INTERNET_PORT nPort = nHttpPort;
    CString strServer;
    CString strObject;
    return AfxParseURL(sURL, nService, strServer, strObject, nPort) ? nPort : nHttpPort;
}

// Always http, and always with the port.
CString CHttpServices::sGetStrippedURL(const CString& sURL)
{
    return "http://" + HostAndPort(sGetHost(sURL), nGetPort(sURL));
}
