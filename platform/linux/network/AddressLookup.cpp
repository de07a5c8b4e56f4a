#include "win32/Sockets.h"

#include "platform/linux/base/Failure.h"

#include <cstring>

#include <arpa/inet.h>

namespace
{
DWORD LookupError(int nResult) noexcept
{
    switch (nResult)
    {
    case EAI_AGAIN: return WSATRY_AGAIN;
    case EAI_NONAME: return WSAHOST_NOT_FOUND;
    default: return WSANO_RECOVERY;
    }
}
}

ULONG win32::inet_addr(const char* pszAddress)
{
    return pszAddress ? ::inet_addr(pszAddress) : INADDR_NONE;
}

// Through getnameinfo, which unlike the C library's own gethostbyaddr may run in several threads.
hostent* win32::gethostbyaddr(const char* pAddress, int nLength, int nFamily)
{
    if (!pAddress || nLength != sizeof(in_addr) || nFamily != AF_INET)
        return Fail(WSAEFAULT, static_cast<hostent*>(nullptr));

    sockaddr_in oAddress{};
    oAddress.sin_family = AF_INET;
    std::memcpy(&oAddress.sin_addr, pAddress, sizeof oAddress.sin_addr);

    thread_local char t_szName[NI_MAXHOST];
    const int nResult = getnameinfo(reinterpret_cast<const sockaddr*>(&oAddress), sizeof oAddress, t_szName,
                                    sizeof t_szName, nullptr, 0, NI_NAMEREQD);
    if (nResult != 0)
        return Fail(LookupError(nResult), static_cast<hostent*>(nullptr));

    thread_local hostent t_oHost;
    t_oHost = hostent{};
    t_oHost.h_name = t_szName;
    t_oHost.h_addrtype = AF_INET;
    t_oHost.h_length = sizeof(in_addr);
    return &t_oHost;
}
