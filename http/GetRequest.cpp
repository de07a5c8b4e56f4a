// One request, from a URL to an answer that can be read. What the first try throws is dropped and never released; in
// secure mode alone a second one follows it, and what that throws ends the request. One that failed by its status stays
// open, and the next one forgets it: hosts are told of both (docs/http.md).
#include "ZevrinUtils/HttpServices.h"

#include "framework/Internet.h"
#include "framework/Url.h"
#include "http/Tell.h"
#include "http/UrlParts.h"
#include "platform/Errors.h"

#include <array>
#include <cstdlib>
#include <string>
#include <string_view>

namespace
{
constexpr DWORD nStatusOk = 200;
constexpr DWORD nStatusBadUrl = 400;
constexpr DWORD nStatusProxyAuthentication = 407;
constexpr DWORD nStatusSystemFailed = 501;
constexpr DWORD_PTR nContext = 1;
constexpr int nHttpPrefixLength = 7;   // of "http://", which a location is taken to begin with

// The server, and the object on it, that a request is sent to.
struct Target
{
    CString strServer;
    CString strObject;
    INTERNET_PORT nPort = 0;
};

bool SplitHttpUrl(const CString& sURL, Target& oTarget)
{
    DWORD nService = 0;
    return AfxParseURL(sURL, nService, oTarget.strServer, oTarget.strObject, oTarget.nPort) &&
           nService == AFX_INET_SERVICE_HTTP;
}

// A value of the host table may carry a port, which then wins over the URL's.
void ApplyKnownHost(const CMapStringToString& oHosts, Target& oTarget)
{
    CString strKnown;
    if (oHosts.Lookup(oTarget.strServer, strKnown) && !strKnown.IsEmpty())
        oTarget.strServer = strKnown;
    const int nColon = oTarget.strServer.Find(':');
    if (nColon < 0)
        return;
    oTarget.nPort = static_cast<INTERNET_PORT>(std::strtol(oTarget.strServer.Mid(nColon + 1), nullptr, 10));
    oTarget.strServer = oTarget.strServer.Left(nColon);
}

DWORD RequestFlags(bool bSecure, bool bAutoRedirect)
{
    DWORD nFlags = INTERNET_FLAG_KEEP_CONNECTION;
    if (!bAutoRedirect)
        nFlags |= INTERNET_FLAG_NO_AUTO_REDIRECT;
    if (bSecure)
        nFlags |= INTERNET_FLAG_SECURE | INTERNET_FLAG_IGNORE_CERT_CN_INVALID | INTERNET_FLAG_IGNORE_CERT_DATE_INVALID |
                  INTERNET_FLAG_PRAGMA_NOCACHE;
    return nFlags;
}

DWORD StatusOf(const CHttpFile& oFile)
{
    DWORD nStatus = 0;
    oFile.QueryInfoStatusCode(nStatus);   // left alone if no answer came
    return nStatus;
}

// False if the user gave it up.
bool AskForCredentials(CHttpFile& oFile)
{
    return oFile.ErrorDlg(nullptr, Errors().GetLastError(),
                          FLAGS_ERROR_UI_FILTER_FOR_ERRORS | FLAGS_ERROR_UI_FLAGS_CHANGE_OPTIONS |
                              FLAGS_ERROR_UI_FLAGS_GENERATE_DATA,
                          nullptr) != ERROR_CANCELLED;
}

// In secure mode a first failure is taken to be an unknown authority, which is accepted from here on.
void AcceptUnknownAuthority(CHttpFile& oFile)
{
    DWORD nFlags = 0;
    oFile.QueryOption(INTERNET_OPTION_SECURITY_FLAGS, nFlags);
    oFile.SetOption(INTERNET_OPTION_SECURITY_FLAGS, nFlags | SECURITY_FLAG_IGNORE_UNKNOWN_CA);
}

void ShowDialog(CHTTPRequestObserver* pObserver, bool bShown)
{
    if (pObserver)
        pObserver->OnDialogShown(bShown);
}

// The first try: true if the request is to be sent again. Whatever is thrown here is dropped and never released.
// In secure mode it is taken for an unknown authority; otherwise nothing is sent again, whatever the user has said.
bool SendFirst(CHttpFile& oFile, CHTTPRequestObserver* pObserver, bool bSecure)
{
    try
    {
        bool bResend = false;
        oFile.SendRequest();
        if (StatusOf(oFile) == nStatusProxyAuthentication)
        {
            ShowDialog(pObserver, true);
            bResend = AskForCredentials(oFile);
            ShowDialog(pObserver, false);
        }
        return bResend;
    }
    catch (...)   // NOLINT(bugprone-empty-catch): what is left to do may throw, and that passes
    {
    }
    ShowDialog(pObserver, false);   // observers hear this even if no dialog was ever shown
    if (bSecure)
        AcceptUnknownAuthority(oFile);
    return bSecure;
}

// The whole exchange, second tries included; gives the status.
DWORD Exchange(CHttpFile& oFile, CHTTPRequestObserver* pObserver, bool bSecure)
{
    if (SendFirst(oFile, pObserver, bSecure))
        oFile.SendRequest();
    if (bSecure && StatusOf(oFile) == nStatusProxyAuthentication)
    {
        // Unlike the first dialog: a canceled one is not reported as gone, and the request is sent all the same.
        ShowDialog(pObserver, true);
        if (AskForCredentials(oFile))
            ShowDialog(pObserver, false);
        oFile.SendRequest();
    }
    return StatusOf(oFile);
}

// The part of a location up to its first "/" behind the scheme, which is taken to be http and not looked at.
CString HostOfLocation(const CString& strLocation)
{
    const CString strRest = strLocation.Mid(nHttpPrefixLength);
    return strRest.Left(strRest.Find('/'));   // none: nothing
}
}

// Stores into the fields without a look at what they hold: the objects of a failed request that nobody closed are
// lost.
unsigned long CHttpServices::MakeGetRequest(const CString& sURL, CString* psError, int bAutoRedirect)
{
    try
    {
        Target oTarget;
        if (!SplitHttpUrl(sURL, oTarget))
        {
            Tell(psError, "Failed to parse the given URL - " + sURL);
            return nStatusBadUrl;
        }
        ApplyKnownHost(m_oHostNameToIp, oTarget);
        m_pSession = new CInternetSession(m_strAppName, nContext, INTERNET_OPEN_TYPE_PRECONFIG, nullptr, nullptr,
                                          m_bSecure ? INTERNET_FLAG_SECURE : 0);
        m_pConnection = m_pSession->GetHttpConnection(oTarget.strServer, m_bSecure ? m_nSecurePort : oTarget.nPort,
                                                      m_strUserName, m_strPassword);
        m_pFile = m_pConnection->OpenRequest(m_nGetPostType, oTarget.strObject, nContext,
                                             RequestFlags(m_bSecure != 0, bAutoRedirect != 0));
        if (!m_pFile)   // ours throws; kept for one that does not
        {
            Tell(psError, "Failed to open http Get request");
            return nStatusSystemFailed;
        }
        const DWORD nStatus = Exchange(*m_pFile, m_pObserver, m_bSecure != 0);
        if (nStatus != nStatusOk)
            Tell(psError, ("Failed to send Http Get request (Error Code " + std::to_string(nStatus) + ")").c_str());
        return nStatus;
    }
    catch (CInternetException* pError)
    {
        std::array<char, 1000> achText{};
        if (pError->GetErrorMessage(achText.data(), achText.size()))
            Tell(psError, achText.data());
        pError->Delete();
        CloseGetRequest(0);
        return nStatusSystemFailed;
    }
}

// A 307 does not count.
int CHttpServices::bIsRedirection(unsigned long nStatus)
{
    return nStatus >= 301 && nStatus <= 303;
}

// The first "Location: " wins, wherever it stands: that of a Content-Location ahead of it too.
CString CHttpServices::sGetRedirectionNewLocation()
{
    constexpr std::string_view strName = "Location: ";
    CString strLocation;
    m_pFile->QueryInfo(HTTP_QUERY_RAW_HEADERS_CRLF, strLocation);
    const int nName = strLocation.Find(strName.data());
    if (nName < 0)
        return strLocation;
    strLocation = strLocation.Mid(nName + static_cast<int>(strName.size()));
    const int nLineFeed = strLocation.Find('\n');
    return nLineFeed > 0 ? strLocation.Left(nLineFeed) : strLocation;
}

int CHttpServices::bOpenGetRequest(const CString& sURL, CString& sNewHost, CString* psError, int bUseHostCache)
{
    sNewHost.Empty();
    const CString strKey = HostKey(sURL);
    if (!bUseHostCache || bIsURLHostCached(sURL))
    {
        const CString strKnown = sGetCachedURLHostAndPort(sURL);
        if (strKnown != strKey)
            sNewHost = strKnown;
        return MakeGetRequest(sURL, psError, 1) == nStatusOk;
    }

    // A host that is not known yet is asked for its root: where that redirects to is where it lives now. The path
    // of the location is not used.
    CString strTarget = sURL;
    CString strOldHost;
    CString strNewHost;
    CloseGetRequest(1);
    if (bIsRedirection(MakeGetRequest(sGetStrippedURL(sURL), psError, 0)))
    {
        strNewHost = HostOfLocation(sGetRedirectionNewLocation());
        strOldHost = strKey;
        strTarget.Replace(strOldHost, strNewHost);   // in the path and the query as well
    }
    CloseGetRequest(1);
    const bool bOpened = MakeGetRequest(strTarget, psError, 1) == nStatusOk;
    if (bOpened && !strOldHost.IsEmpty() && !strNewHost.IsEmpty() && strOldHost != strNewHost)
    {
        m_oHostNameToIp[strOldHost] = strNewHost;
        sNewHost = strNewHost;
    }
    return bOpened;
}
