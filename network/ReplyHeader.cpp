// The header byte for byte as clients know it. Its length is measured once, at load (module/LoadTimeObjects.cpp), with
// the placeholder still in it.
#include "network/ReplyHeader.h"

#include <cstring>

// Clients compare these lines as they are, letter case included.
constexpr char g_szReplyHeader[] = "HTTP/1.0 200 OK\r\n"
                                   "Server: Zevrin Meridor 3.0\r\n"
                                   "Pragma: no-cache\r\n"
                                   "Content-type: text/xml\r\n"
                                   "Content-length: %d\r\n"
                                   "\r\n";

int MeasureReplyHeader() noexcept
{
    return static_cast<int>(std::strlen(g_szReplyHeader));
}
