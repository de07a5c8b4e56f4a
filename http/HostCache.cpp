// Hosts that were learned from redirects. Nothing ever leaves the table: a host that has stopped answering stays
// in it for as long as the module is loaded, and requests for it fail.
#include "ZevrinUtils/HttpServices.h"

#include "http/UrlParts.h"

// Looked up by the bare host, while entries are written under the host key: one with a port is never found,
// and each request for its URL probes anew. Hosts rely on being told the new host each time.
int CHttpServices::bIsURLHostCached(const CString& sURL)
{
    CString strKnown;
    return m_oHostNameToIp.Lookup(HostOf(sURL), strKnown) && !strKnown.IsEmpty();
}

CString CHttpServices::sGetCachedURLHostAndPort(const CString& sURL)
{
    const CString strHost = HostOf(sURL);
    CString strKnown;
    return m_oHostNameToIp.Lookup(strHost, strKnown) && !strKnown.IsEmpty() ? strKnown : strHost;
}

CString CHttpServices::sGetCachedURL(const CString& sURL)
{
    CString strCached = sURL;
    strCached.Replace(HostKey(sURL), sGetCachedURLHostAndPort(sURL));
    return strCached;
}
