/// @file
/// The HTTP client: fetches what a URL holds into a stream, a string or a file.
#pragma once

#include "ZevrinUtils/Export.h"
#include "ZevrinUtils/Types.h"
#include "ZevrinUtils/framework/String.h"
#include "ZevrinUtils/framework/StringMap.h"

#include <ostream>

class CHttpConnection;
class CHttpFile;
class CInternetSession;

/// Through this a host hears of a retrieval. All operations run on the thread that called the retrieval. The client
/// keeps the observer until its next retrieval or its end, so it must live that long.
class ZEVRINUTILS_API CHTTPRequestObserver
{
public:
    CHTTPRequestObserver();
    CHTTPRequestObserver(const CHTTPRequestObserver& oOther);              ///< copies nothing
    CHTTPRequestObserver& operator=(const CHTTPRequestObserver& oOther);   ///< likewise

    /// The size of the answer in bytes, once, before the first byte is read. For an answer that does not tell
    /// its size it is what has arrived so far. Not to be relied on for sizes from 4 GiB on.
    virtual void OnContentLength(unsigned long nBytes) = 0;

    /// After each block that reached the output, with the bytes of this block alone. False cancels.
    virtual bool bOnDataBlock(unsigned long nBytes) = 0;

    /// After each read, the last one that gives nothing included, if the retrieval was asked to check. False:
    /// the application is terminating, and the retrieval fails.
    virtual bool bKeepRunning() = 0;

    /// The end of a retrieval: true if all went well. Not called for a canceled one, nor when an exception
    /// leaves the retrieval.
    virtual void OnRequestEnd(bool bSuccess) = 0;

    /// True when a dialog for credentials opens, false when it is gone. False also comes alone, when a request
    /// could not be sent; and after a second dialog that the user canceled it does not come.
    virtual void OnDialogShown(bool bShown) = 0;

protected:
    ~CHTTPRequestObserver() = default;   // the client never deletes one
};

/// An HTTP client. One request at a time, on the thread that asks for it and blocked until it is done. Each
/// request makes its session and connection anew, with the system's proxy settings and time limits.
///
/// Common to all operations:
/// - A URL is `http://host[:port][/path][?query]`. The scheme is always http: secure transport is switched on by
///   SetAuthenticationDetails alone, and an https URL fails. The host is a name or an IPv4 address: one in brackets
///   never works.
/// - Failure text goes to *psError, which may be null. It is never cleared, and a success may leave text there
///   from an inner step that failed: a probe that found a redirect does.
/// - Memory that runs out passes as std::bad_alloc.
/// - sNewHost receives the host that was asked in place of the one in the URL, and is empty if none was. For a
///   URL with a port of its own it may be the URL's own host without that port.
///
/// Threads: an object belongs to one thread at a time; Abort alone may be called from any. The table of hosts is
/// shared by all objects of the process, read by every request, written by those with bUseHostCache, and guarded
/// by nothing: a host that uses it from several threads keeps those requests apart.
class ZEVRINUTILS_API CHttpServices
{
public:
    /// The end of a retrieval.
    enum eHttpReqRTC
    {
        eHttpReqOK = 0,        ///< the whole answer went to the output
        eHttpReqFailed = 1,    ///< the request failed, the output refused a block, or the application is terminating
        eHttpReqCanceled = 2   ///< canceled by Abort or by the observer
    };

    /// @param pszAppName  agent text of every request
    explicit CHttpServices(const char* pszAppName = "ZEVRIN_UTILS");

    /// Member by member, an open request and the observer as plain pointers: two objects that share a request
    /// both free it. Safe only while no request is open.
    CHttpServices(const CHttpServices& oOther);
    CHttpServices& operator=(const CHttpServices& oOther);   ///< likewise

    /// Closes the open request, if there is one.
    virtual ~CHttpServices();

    void SetAppName(CString strAppName);   ///< the agent text of later requests

    /// The verb of every request: 0 POST, 1 GET (at first), 2 HEAD, 3 PUT, 4 LINK, 5 DELETE, 6 UNLINK. No body is
    /// ever sent.
    void SetGetPostType(int nType);

    /// Name and password for servers that ask for them, both copied and null counting as empty, and secure transport
    /// on or off. While it is on, every request goes to nPort, whatever port the URL names; certificates with a wrong
    /// name or date are accepted, and one from an unknown authority is on a second try.
    void SetAuthenticationDetails(const char* pszUserName, const char* pszPassword, bool bSecure, unsigned short nPort);

    /// Appends the present second as a parameter, so that no cache that goes by URLs can answer.
    static void MakeUniqueHttpRequest(CString& sURL);

    /// Copies the answer into a stream, in blocks of 1024 bytes. What was written stays there, whatever the
    /// result, and the stream's flags are left as they are.
    ///
    /// @param sURL            what to fetch
    /// @param oOutput         the caller's
    /// @param sNewHost        receives the host that was asked instead, if any
    /// @param pObserver       may be null
    /// @param bCheckRunning   non-zero: ask the observer's bKeepRunning
    /// @param bUniqueRequest  non-zero: MakeUniqueHttpRequest on a copy of the URL
    /// @param psError         receives the text of a failure; may be null
    /// @param bUseHostCache   non-zero: a host that is not known yet is first asked for its root, and if that
    ///                        redirects to another host, the request and later ones go there
    /// @throws CInternetException*  the answer broke off. The catcher calls its Delete; the observer heard no end,
    ///                        and the request stays open until this object's end.
    eHttpReqRTC eCopyURLFile(const CString& sURL, std::ostream& oOutput, CString& sNewHost,
                             CHTTPRequestObserver* pObserver, int bCheckRunning, int bUniqueRequest, CString* psError,
                             int bUseHostCache);

    /// Copies the answer into a string, which receives what arrived whatever the result, zero bytes included; it stays
    /// as it was when an exception passes. Each call leaves the memory that it gathered the answer in behind.
    eHttpReqRTC eGetURLFile(const CString& sURL, CString& sContent, CString& sNewHost, CHTTPRequestObserver* pObserver,
                            int bCheckRunning, int bUniqueRequest, CString* psError, int bUseHostCache);

    /// Copies the answer into a file, which is created or overwritten once the server has answered. Knows no observer,
    /// no Abort and no probe for another host. Non-zero on success. A failure of the request leaves the file alone.
    ///
    /// @throws CInternetException*, CFileException*  the answer broke off, or a block could not be written. The
    ///         catcher calls Delete; the file keeps what was written.
    int bGetURLFileAndWriteToFile(const CString& sURL, const CString& sFilePath, int bUniqueRequest, CString* psError);

    /// Non-zero: every retrieval of this object is canceled after its next block, until Abort(0). A read that
    /// waits for the network is not interrupted. From any thread.
    void Abort(int bValue);
    int IsAbort();   ///< the value that Abort was given; 0 at first. From any thread

    /// Non-zero if a server answers the URL's connection; no proxy is asked. Of a URL of 260 bytes or more the system
    /// sees an empty text. The argument is not changed.
    int IsOnline(CString& sURL);

    /// Percent-escapes all but letters and digits; a blank becomes "+". Null counts as an empty text, and so does any
    /// with a negative length.
    ///
    /// @param pszText  any bytes
    /// @param nLength  bytes to escape; 0: up to the first zero byte
    /// @return new text, to be released with free; null if memory is short
    char* URL_Escape(const char* pszText, int nLength);

    /// Undoes percent-escapes; "+" becomes a blank only behind the text's first plain "?". What follows a "%" is
    /// read as sscanf does with "%02X": white space and a sign may stand in front of the digits, a second digit
    /// may be missing, and two bytes are used up in any case. Behind a last "%" comes the value of the
    /// escape before it; do not depend on it. Null and a negative length are as in URL_Escape.
    ///
    /// @param pszText     any bytes
    /// @param nLength     bytes to read; 0: up to the first zero byte
    /// @param nOutLength  receives the bytes of the result, its closing zero counted
    /// @return new text, to be released with free; null if memory is short
    char* URL_UnEscape(const char* pszText, int nLength, int& nOutLength);

protected:
    /// Opens the request for a URL, by way of a probe if the host cache is used: non-zero if the answer is
    /// 200, and then m_pFile is open for reading.
    int bOpenGetRequest(const CString& sURL, CString& sNewHost, CString* psError, int bUseHostCache);

    /// Sends one request: the status of the answer, 0 if none came, 400 for a URL that does not split, 501 for a
    /// failure of the system. After any status the objects stay open for queries; an earlier request that is
    /// still open is forgotten, not closed. The system follows redirects if bAutoRedirect is non-zero.
    unsigned long MakeGetRequest(const CString& sURL, CString* psError, int bAutoRedirect);

    /// Deletes file, connection and session, closing them before if asked.
    void CloseGetRequest(int bClose);

    int bIsRedirection(unsigned long nStatus);   ///< non-zero for 301, 302 and 303

    /// The text behind "Location: " in the answer's headers, its carriage return included; all headers if there is
    /// none. Only while a request is open.
    CString sGetRedirectionNewLocation();

    CString sGetHost(const CString& sURL);          ///< empty if the URL does not split
    unsigned short nGetPort(const CString& sURL);   ///< 80 if the URL does not split
    CString sGetStrippedURL(const CString& sURL);   ///< http, host and port

    /// Non-zero if another host is known for the URL's.
    int bIsURLHostCached(const CString& sURL);

    /// The host known for the URL's, with its port if it came with one; otherwise the URL's host, without a port.
    CString sGetCachedURLHostAndPort(const CString& sURL);

    /// The URL with its host replaced by the one above, wherever it occurs in the text.
    CString sGetCachedURL(const CString& sURL);

    CInternetSession* m_pSession = nullptr;        ///< of the open request; owned
    CHttpConnection* m_pConnection = nullptr;      ///< of the open request; owned
    CHTTPRequestObserver* m_pObserver = nullptr;   ///< of the last retrieval; the host's
    CHttpFile* m_pFile = nullptr;                  ///< the open request; owned
    CString m_strAppName;                          ///< agent text
    CString m_strUserName;                         ///< for servers that ask
    CString m_strPassword;                         ///< to that name
    int m_nGetPostType = 1;                        ///< number of the verb
    int m_bAbort = 0;                              ///< non-zero: retrievals are canceled
    int m_bSecure = 0;                             ///< 1: secure transport
    unsigned short m_nSecurePort = 0;              ///< in use while m_bSecure is set

    /// The host to ask, by the host in the URL, for hosts that were learned from redirects.
    static CMapStringToString m_oHostNameToIp;

private:
    friend struct CHttpServicesPeer;   // the tests: the layout, and what is protected
};
