// The HTTP objects over the platform's handles. A failure is thrown as a pointer, as hosts catch it, with the last
// error as it was at once, before anything else could change it.
#include "framework/Internet.h"

#include "platform/Errors.h"

#include <memory>
#include <string>
#include <utility>

namespace
{
constexpr const char* s_apszVerbs[] = {"POST", "GET", "HEAD", "PUT", "LINK", "DELETE", "UNLINK"};

[[noreturn]] void Throw(DWORD nError)
{
    throw std::make_unique<CInternetException>(nError).release();
}

void ThrowUnless(bool bSucceeded)
{
    if (!bSucceeded)
        Throw(Errors().GetLastError());
}
}

CInternetHandle::CInternetHandle(HINTERNET hInternet) : m_hInternet(hInternet)
{
    ThrowUnless(hInternet != nullptr);
}

void CInternetHandle::Close() noexcept
{
    if (m_hInternet)
        Internet().InternetCloseHandle(std::exchange(m_hInternet, nullptr));
}

CInternetSession::CInternetSession(const char* pszAgent, DWORD_PTR nContext, DWORD nAccessType, const char* pszProxy,
                                   const char* pszBypass, DWORD nFlags)
    : m_oSession(Internet().InternetOpenA(pszAgent, nAccessType, pszProxy, pszBypass, nFlags)), m_nContext(nContext)
{
}

CHttpConnection* CInternetSession::GetHttpConnection(const char* pszServer, INTERNET_PORT nPort,
                                                     const char* pszUserName, const char* pszPassword)
{
    return new CHttpConnection(Internet().InternetConnectA(m_oSession.Get(), pszServer, nPort, pszUserName, pszPassword,
                                                           INTERNET_SERVICE_HTTP, 0, m_nContext));
}

CHttpFile* CHttpConnection::OpenRequest(int nVerb, const char* pszObject, DWORD_PTR nContext, DWORD nFlags)
{
    if (nVerb < 0 || static_cast<std::size_t>(nVerb) >= std::size(s_apszVerbs))
        Throw(ERROR_INVALID_PARAMETER);
    return new CHttpFile(Internet().HttpOpenRequestA(m_oConnection.Get(), s_apszVerbs[nVerb], pszObject, nullptr,
                                                     nullptr, nullptr, nFlags, nContext));
}

void CHttpFile::SendRequest()
{
    ThrowUnless(Internet().HttpSendRequestA(m_oHandle.Get(), nullptr, 0, nullptr, 0));
}

void CHttpFile::QueryInfoStatusCode(DWORD& nStatus) const
{
    QueryInfo(HTTP_QUERY_STATUS_CODE | HTTP_QUERY_FLAG_NUMBER, nStatus);
}

bool CHttpFile::QueryInfo(DWORD nLevel, CString& strValue) const
{
    DWORD nSize = 0;   // first asked for, then the text's
    if (Internet().HttpQueryInfoA(m_oHandle.Get(), nLevel, nullptr, &nSize, nullptr) ||
        Errors().GetLastError() != ERROR_INSUFFICIENT_BUFFER)
        return false;
    std::string strText(nSize, '\0');
    if (!Internet().HttpQueryInfoA(m_oHandle.Get(), nLevel, strText.data(), &nSize, nullptr))
        return false;
    strText.resize(nSize);
    strValue = CString(std::move(strText));
    return true;
}

bool CHttpFile::QueryInfo(DWORD nLevel, DWORD& nValue) const
{
    DWORD nFound = 0;
    DWORD nSize = sizeof nFound;
    if (!Internet().HttpQueryInfoA(m_oHandle.Get(), nLevel, &nFound, &nSize, nullptr))
        return false;
    nValue = nFound;
    return true;
}

bool CHttpFile::QueryOption(DWORD nOption, DWORD& nValue) const
{
    DWORD nSize = sizeof nValue;
    return Internet().InternetQueryOptionA(m_oHandle.Get(), nOption, &nValue, &nSize) != FALSE;
}

bool CHttpFile::SetOption(DWORD nOption, DWORD nValue)
{
    return Internet().InternetSetOptionA(m_oHandle.Get(), nOption, &nValue, sizeof nValue) != FALSE;
}

DWORD CHttpFile::ErrorDlg(HWND hParent, DWORD nError, DWORD nFlags, void** ppData)
{
    return Internet().InternetErrorDlg(hParent, m_oHandle.Get(), nError, nFlags, ppData);
}

unsigned CHttpFile::Read(void* pBuffer, unsigned nCount)
{
    DWORD nRead = 0;
    ThrowUnless(Internet().InternetReadFile(m_oHandle.Get(), pBuffer, nCount, &nRead));
    return static_cast<unsigned>(nRead);
}

unsigned long long CHttpFile::GetLength() const
{
    DWORD nAvailable = 0;
    return Internet().InternetQueryDataAvailable(m_oHandle.Get(), &nAvailable, 0, 0) ? nAvailable : 0;
}
