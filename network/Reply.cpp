#include "network/Reply.h"

#include "network/ReplyHeader.h"
#include "platform/Memory.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <memory>

void SendReply(SOCKET hConnection, const char* pszReply, bool (*pfnUseHeader)())
{
    const std::size_t nLength = pszReply ? std::strlen(pszReply) : 0;
    if (nLength == 0)
        return;

    // Twice what is needed, as the margin was once settled.
    const std::size_t nHeader = pfnUseHeader() ? static_cast<std::size_t>(g_nReplyHeaderLength) : 0;
    const std::size_t nSize = 2 * (nHeader + nLength);
    const std::unique_ptr<char, decltype(&std::free)> pBuffer(static_cast<char*>(Memory().malloc(nSize)), &std::free);
    if (!pBuffer)
        return;
    std::memset(pBuffer.get(), 0, nSize);

    // A header that was turned on only now goes out if the margin holds it.
    int nPrinted = 0;
    if (pfnUseHeader())
        nPrinted = std::snprintf(pBuffer.get(), nSize, g_szReplyHeader, static_cast<int>(nLength));
    if (nPrinted < 0 || static_cast<std::size_t>(nPrinted) + nLength >= nSize)
        nPrinted = 0;
    std::memcpy(pBuffer.get() + nPrinted, pszReply, nLength);
    Sockets().send(hConnection, pBuffer.get(), nPrinted + static_cast<int>(nLength), 0);
}
