// The system's HTTP client.
//
// A session holds the agent's name and the connections that are kept alive; a connection names a server and what
// it takes to log on there; a request is one exchange with it. Each handle belongs to one thread at a time.
// Error numbers are those of the Windows Internet interface, 12000 to 12175.
#pragma once

#include "platform/Service.h"
#include "win32/Internet.h"

struct InternetCalls
{
    // A session with the system's proxy settings; on Linux the proxy variables of the environment.
    PLATFORM_CALL(InternetOpenA);
    // Names the server; nothing is sent. On Linux other services than HTTP are not supported.
    PLATFORM_CALL(InternetConnectA);
    // Prepares a request; nothing is sent. A blank in the object is escaped.
    PLATFORM_CALL(HttpOpenRequestA);
    // Sends the request and waits for the headers of the answer, also those of a proxy that refuses it. Follows
    // redirects unless told not to. May be repeated: the answer before is dropped.
    PLATFORM_CALL(HttpSendRequestA);
    // A header as a number, or all headers as text. Fails with ERROR_INSUFFICIENT_BUFFER, telling the size, and
    // with ERROR_HTTP_HEADER_NOT_FOUND.
    PLATFORM_CALL(HttpQueryInfoA);
    // Reads the answer's body while it arrives: as much as was asked for, less only at the end, 0 behind it.
    PLATFORM_CALL(InternetReadFile);
    // Waits for a part of the body and tells how much can be read without waiting; 0 at the end.
    PLATFORM_CALL(InternetQueryDataAvailable);
    // The security flags of a request, in force from its next send on.
    PLATFORM_CALL(InternetQueryOptionA);
    PLATFORM_CALL(InternetSetOptionA);
    // Ends a session, connection or request.
    PLATFORM_CALL(InternetCloseHandle);
    // Asks the user for what the answer wants, credentials for a proxy: ERROR_INTERNET_FORCE_RETRY if given,
    // ERROR_CANCELLED if not; ERROR_SUCCESS if the answer wants nothing.
    PLATFORM_CALL(InternetErrorDlg);
    // Tries to reach the server of a URL, without a proxy. Non-zero on success, and for no URL at all.
    PLATFORM_CALL(InternetCheckConnectionA);
};

inline const InternetCalls& Internet() noexcept
{
    return PlatformService<InternetCalls>::InForce();
}
