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

// The server's answer, read like a file.
class CInternetFile
{
public:
    explicit CInternetFile(HINTERNET hFile) : m_oHandle(hFile) {}

    unsigned Read(void* pBuffer, unsigned nCount);   // throws when the answer breaks off
    unsigned long long GetLength() const;            // what has arrived and was not read yet
    void Close() noexcept { m_oHandle.Close(); }

    bool QueryOption(DWORD nOption, DWORD& nValue) const;
    bool SetOption(DWORD nOption, DWORD nValue);

protected:
    HINTERNET Handle() const noexcept { return m_oHandle.Get(); }

private:
    CInternetHandle m_oHandle;
};

class CHttpFile : public CInternetFile
{
public:
    using CInternetFile::CInternetFile;

    // Carries out the exchange, without headers and body of our own. Throws when there is no answer.
    void SendRequest();

    // Leaves the number alone if there is no answer.
    void QueryInfoStatusCode(DWORD& nStatus) const;

    // A header, or with HTTP_QUERY_RAW_HEADERS_CRLF all of them. False, with the target left alone, if absent.
    bool QueryInfo(DWORD nLevel, CString& strValue) const;
    bool QueryInfo(DWORD nLevel, DWORD& nValue) const;

    // Shows the system's dialog for what the answer wants; gives its result.
    DWORD ErrorDlg(HWND hParent, DWORD nError, DWORD nFlags, void** ppData);
};

class CHttpConnection
{
public:
    explicit CHttpConnection(HINTERNET hConnection) : m_oConnection(hConnection) {}

    // Prepares a request, to be deleted by the caller. The verb is 0 POST, 1 GET, 2 HEAD, 3 PUT, 4 LINK, 5 DELETE or
    // 6 UNLINK; throws for another.
    CHttpFile* OpenRequest(int nVerb, const char* pszObject, const char* pszReferer, DWORD_PTR nContext,
                           const char** ppszAcceptTypes, const char* pszVersion, DWORD nFlags);
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
