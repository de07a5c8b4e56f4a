// An HTTP request: a session, a connection to a server, and the file that is its answer.
//
// Each belongs to one thread at a time and to whoever asked for it, and ends with its destructor at the latest.
// An operation that says that it throws, throws a CInternetException* with the system's last error.
#pragma once

#include "ZevrinUtils/framework/InternetException.h"
#include "ZevrinUtils/framework/String.h"
#include "platform/Internet.h"

// A handle of the Internet service, closed once.
class CInternetHandle
{
public:
    explicit CInternetHandle(HINTERNET hInternet);   // throws for null
    ~CInternetHandle() { Close(); }
    CInternetHandle(const CInternetHandle&) = delete;
    CInternetHandle& operator=(const CInternetHandle&) = delete;

    HINTERNET Get() const noexcept { return m_hInternet; }
    void Close() noexcept;

private:
    HINTERNET m_hInternet;
};

// An exchange with the server, whose answer is read like a file.
class CHttpFile
{
public:
    explicit CHttpFile(HINTERNET hFile) : m_oHandle(hFile) {}

    // Carries out the exchange, without headers and body of our own. Throws when there is no answer.
    void SendRequest();

    // Leaves the number alone if there is no answer.
    void QueryInfoStatusCode(DWORD& nStatus) const;

    // A header, or with HTTP_QUERY_RAW_HEADERS_CRLF all of them. False, with the target left alone, if absent.
    bool QueryInfo(DWORD nLevel, CString& strValue) const;
    bool QueryInfo(DWORD nLevel, DWORD& nValue) const;

    bool QueryOption(DWORD nOption, DWORD& nValue) const;
    bool SetOption(DWORD nOption, DWORD nValue);

    // Shows the system's dialog for what the answer wants; gives its result.
    DWORD ErrorDlg(HWND hParent, DWORD nError, DWORD nFlags, void** ppData);

    unsigned Read(void* pBuffer, unsigned nCount);   // throws when the answer breaks off
    unsigned long long GetLength() const;            // what has arrived and was not read yet
    void Close() noexcept { m_oHandle.Close(); }

private:
    CInternetHandle m_oHandle;
};
using CInternetFile = CHttpFile;   // the framework's name for what is read like a file

class CHttpConnection
{
public:
    explicit CHttpConnection(HINTERNET hConnection) : m_oConnection(hConnection) {}

    // Prepares a request, to be deleted by the caller. The verb is 0 POST, 1 GET, 2 HEAD, 3 PUT, 4 LINK, 5 DELETE or
    // 6 UNLINK; throws for another. There is no referer, and nothing is said of accepted types.
    CHttpFile* OpenRequest(int nVerb, const char* pszObject, DWORD_PTR nContext, DWORD nFlags);
    void Close() noexcept { m_oConnection.Close(); }

private:
    CInternetHandle m_oConnection;
};

class CInternetSession
{
public:
    CInternetSession(const char* pszAgent, DWORD_PTR nContext, DWORD nAccessType, const char* pszProxy,
                     const char* pszBypass, DWORD nFlags);   // throws

    // Names the server, to be deleted by the caller. Throws.
    CHttpConnection* GetHttpConnection(const char* pszServer, INTERNET_PORT nPort, const char* pszUserName,
                                       const char* pszPassword);
    void Close() noexcept { m_oSession.Close(); }

private:
    CInternetHandle m_oSession;
    DWORD_PTR m_nContext;
};
