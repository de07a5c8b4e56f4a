// The host may turn the header on or off while a reply is made. So the question about it is put twice: the buffer is
// made by the first answer, and anew if the second one needs more.
#include "network/Reply.h"

#include "platform/Memory.h"

#include <cstdio>
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

namespace
{
using Buffer = Malloced<char>;

// Room for a text, all zero; twice what is needed, as the margin was once settled.
Buffer MakeBuffer(std::size_t nLength)
{
    Buffer pBuffer(static_cast<char*>(Memory().malloc(2 * nLength)));
    if (pBuffer)
        std::memset(pBuffer.get(), 0, 2 * nLength);
    return pBuffer;
}
}

void SendReply(SOCKET hConnection, const char* pszReply, bool (*pfnUseHeader)())
{
    const std::size_t nLength = pszReply ? std::strlen(pszReply) : 0;
    if (nLength == 0)
        return;

    const std::size_t nWithHeader = static_cast<std::size_t>(g_nReplyHeaderLength) + nLength;
    const bool bRoomForHeader = pfnUseHeader();
    Buffer pBuffer = MakeBuffer(bRoomForHeader ? nWithHeader : nLength);
    std::size_t nHeader = 0;
    if (pfnUseHeader())
    {
        if (!bRoomForHeader)   // turned on just now
            pBuffer = MakeBuffer(nWithHeader);
        if (pBuffer)
            nHeader = static_cast<std::size_t>(
                std::snprintf(pBuffer.get(), 2 * nWithHeader, g_szReplyHeader, static_cast<int>(nLength)));
    }
    if (!pBuffer)
        return;
    std::memcpy(pBuffer.get() + nHeader, pszReply, nLength);
    Sockets().send(hConnection, pBuffer.get(), static_cast<int>(nHeader + nLength), 0);
}
