// libcurl finds the proxy by itself; this tells users whose credentials they are asked for.
#include "Proxy.h"

#include <array>
#include <cstdlib>

// In http_proxy only the small letters count: a web server hands a header of its client on as HTTP_PROXY.
std::string ProxyOf(bool bSecure)
{
    using Names = std::array<const char*, 4>;
    for (const char* const pszName : bSecure ? Names{"https_proxy", "HTTPS_PROXY", "all_proxy", "ALL_PROXY"}
                                             : Names{"http_proxy", "http_proxy", "all_proxy", "ALL_PROXY"})
        if (const char* const pszProxy = std::getenv(pszName); pszProxy && *pszProxy)
            return pszProxy;
    return "";
}

std::string WithoutUser(std::string strProxy)
{
    const std::size_t nScheme = strProxy.find("://");
    const std::size_t nHost = nScheme == std::string::npos ? 0 : nScheme + 3;
    const std::size_t nUser = strProxy.rfind('@');
    if (nUser != std::string::npos && nUser >= nHost)
        strProxy.erase(nHost, nUser + 1 - nHost);
    return strProxy;
}
