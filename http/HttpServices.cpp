// Construction, settings and the end of a request.
#include "ZevrinUtils/HttpServices.h"

#include "framework/Internet.h"
#include "platform/System.h"

#include <atomic>
#include <string>
#include <utility>

namespace
{
template <class Object>
void CloseAndDelete(Object*& pObject, int bClose)
{
    if (!pObject)
        return;
    if (bClose)
        pObject->Close();
    delete std::exchange(pObject, nullptr);
}
}

CHTTPRequestObserver::CHTTPRequestObserver() = default;
CHTTPRequestObserver::CHTTPRequestObserver(const CHTTPRequestObserver& oOther) = default;
CHTTPRequestObserver& CHTTPRequestObserver::operator=(const CHTTPRequestObserver& oOther) = default;

CHttpServices::CHttpServices(const char* pszAppName) : m_strAppName(pszAppName) {}
CHttpServices::CHttpServices(const CHttpServices& oOther) = default;
CHttpServices& CHttpServices::operator=(const CHttpServices& oOther) = default;

CHttpServices::~CHttpServices()
{
    CloseGetRequest(1);
}

void CHttpServices::SetAppName(CString strAppName)
{
    m_strAppName = std::move(strAppName);
}

void CHttpServices::SetGetPostType(int nType)
{
    m_nGetPostType = nType;
}

void CHttpServices::SetAuthenticationDetails(const char* pszUserName, const char* pszPassword, bool bSecure,
                                             unsigned short nPort)
{
    m_strUserName = pszUserName;
    m_strPassword = pszPassword;
    m_bSecure = bSecure ? 1 : 0;
    m_nSecurePort = nPort;
}

void CHttpServices::MakeUniqueHttpRequest(CString& sURL)
{
    sURL += sURL.Find('?') >= 0 ? "&" : "?";
    sURL += CString("IECacheTime=" + std::to_string(System().time(nullptr)));
}

// Set from another thread while a retrieval looks at it between two blocks; relaxed, since nothing goes with it.
void CHttpServices::Abort(int bValue)
{
    std::atomic_ref<int>(m_bAbort).store(bValue, std::memory_order_relaxed);
}

int CHttpServices::IsAbort()
{
    return std::atomic_ref<int>(m_bAbort).load(std::memory_order_relaxed);
}

void CHttpServices::CloseGetRequest(int bClose)
{
    // The last made goes first: each was made from the one before it.
    CloseAndDelete(m_pFile, bClose);
    CloseAndDelete(m_pConnection, bClose);
    CloseAndDelete(m_pSession, bClose);
}
