// Splitting a URL, without asking the system.
#pragma once

#include "ZevrinUtils/framework/String.h"
#include "platform/Internet.h"

inline constexpr DWORD AFX_INET_SERVICE_FTP = 1;
inline constexpr DWORD AFX_INET_SERVICE_GOPHER = 2;
inline constexpr DWORD AFX_INET_SERVICE_HTTP = 3;
inline constexpr DWORD AFX_INET_SERVICE_HTTPS = 4107;

// Splits scheme://[user@]server[:port]object. The server holds neither user nor port, the object is everything from
// the path, the query or the fragment on, as it stands, and a URL without a port has that of its scheme.
//
// False, with the outputs emptied, for anything else: another scheme, no server, a port that is none, and control
// characters, which could write lines of their own into a request. The port is then left as it was.
bool AfxParseURL(const CString& strUrl, DWORD& nServiceType, CString& strServer, CString& strObject,
                 INTERNET_PORT& nPort);

// "server:port"
CString HostAndPort(const CString& strServer, INTERNET_PORT nPort);
