// The look-up of addresses by the system's own resolver, whatever it goes by: files, a name server, others.
#include "win32/Network.h"

#include "platform/linux/base/Failure.h"
#include "util/Translation.h"

#include <cstring>

#include <arpa/inet.h>

namespace
{
constexpr Translation<int, DWORD> s_aLookupErrors[] = {
    {EAI_AGAIN, WSATRY_AGAIN},
    {EAI_NONAME, WSAHOST_NOT_FOUND},
};
}

ULONG win32::inet_addr(const char* pszAddress)
{
    return pszAddress ? ::inet_addr(pszAddress) : INADDR_NONE;
}

// Through getnameinfo, which unlike the C library's own gethostbyaddr may run in several threads.
hostent* win32::gethostbyaddr(const char* pAddress, int nLength, int nFamily)
{
    return ResultOr<hostent*>(nullptr, [&] {
        Require(pAddress && nLength == sizeof(in_addr) && nFamily == AF_INET, WSAEFAULT);
        sockaddr_in oAddress{};
        oAddress.sin_family = AF_INET;
        std::memcpy(&oAddress.sin_addr, pAddress, sizeof oAddress.sin_addr);

        // A name is required: without one the address itself would pass for it.
        thread_local char t_szName[NI_MAXHOST];
        const int nResult = getnameinfo(reinterpret_cast<const sockaddr*>(&oAddress), sizeof oAddress, t_szName,
                                        sizeof t_szName, nullptr, 0, NI_NAMEREQD);
        Require(nResult == 0, Translate(s_aLookupErrors, nResult, WSANO_RECOVERY));

        thread_local hostent t_oHost;
        t_oHost = hostent{};
        t_oHost.h_name = t_szName;
        t_oHost.h_addrtype = AF_INET;
        t_oHost.h_length = sizeof(in_addr);
        return &t_oHost;
    });
}
