// A signal may interrupt a write, or let it stop half-way.
#include "Descriptor.h"

#include <cerrno>

std::size_t WriteAll(int nDescriptor, const void* pData, std::size_t nCount)
{
    std::size_t nDone = 0;
    while (nDone < nCount)
    {
        const ssize_t nWritten = ::write(nDescriptor, static_cast<const char*>(pData) + nDone, nCount - nDone);
        if (nWritten >= 0)
            nDone += static_cast<std::size_t>(nWritten);
        else if (errno != EINTR)
            break;
    }
    return nDone;
}
