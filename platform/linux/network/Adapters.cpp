// The adapters of the kernel in the form that Windows lists them: one record each, which callers walk through.
#include "win32/Network.h"

#include "platform/linux/base/Buffers.h"
#include "platform/linux/base/Failure.h"
#include "util/Owned.h"

#include <cstring>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include <arpa/inet.h>
#include <ifaddrs.h>
#include <net/if.h>

namespace
{
// Address texts of each adapter, by its name.
using AdapterMap = std::map<std::string, std::vector<std::string>>;

std::string TextOf(const sockaddr& oAddress)
{
    sockaddr_in oInternet;
    std::memcpy(&oInternet, &oAddress, sizeof oInternet);
    char achText[INET_ADDRSTRLEN];
    return inet_ntop(AF_INET, &oInternet.sin_addr, achText, sizeof achText);
}

AdapterMap Collect(const ifaddrs* pAddress)
{
    AdapterMap oAdapters;
    for (; pAddress; pAddress = pAddress->ifa_next)
    {
        if (pAddress->ifa_flags & IFF_LOOPBACK)
            continue;
        auto& oTexts = oAdapters[pAddress->ifa_name];
        if (pAddress->ifa_addr && pAddress->ifa_addr->sa_family == AF_INET)
            oTexts.push_back(TextOf(*pAddress->ifa_addr));
    }
    // As Windows writes of an adapter that has no address yet.
    for (auto& [strName, oTexts] : oAdapters)
        if (oTexts.empty())
            oTexts.emplace_back("0.0.0.0");
    return oAdapters;
}

// Adapters first, then the addresses that do not lie in one of them.
std::size_t SizeOf(const AdapterMap& oAdapters)
{
    std::size_t nSize = oAdapters.size() * sizeof(IP_ADAPTER_INFO);
    for (const auto& [strName, oTexts] : oAdapters)
        nSize += (oTexts.size() - 1) * sizeof(IP_ADDR_STRING);
    return nSize;
}

void Fill(IP_ADAPTER_INFO* pAdapter, const AdapterMap& oAdapters)
{
    auto* pMore = reinterpret_cast<IP_ADDR_STRING*>(pAdapter + oAdapters.size());
    IP_ADAPTER_INFO* pBefore = nullptr;
    for (const auto& [strName, oTexts] : oAdapters)
    {
        *pAdapter = {};
        if (pBefore)
            pBefore->Next = pAdapter;
        auto* pAddress = &pAdapter->IpAddressList;
        CopyCut(oTexts[0], pAddress->IpAddress.String, sizeof pAddress->IpAddress.String);
        for (std::size_t n = 1; n < oTexts.size(); ++n)
        {
            *pMore = {};
            CopyCut(oTexts[n], pMore->IpAddress.String, sizeof pMore->IpAddress.String);
            pAddress = pAddress->Next = pMore++;
        }
        pBefore = pAdapter++;
    }
}
}

ULONG win32::GetAdaptersInfo(PIP_ADAPTER_INFO pAdapters, ULONG* pnSize)
{
    return ErrorOf([&] {
        Require(pnSize, ERROR_INVALID_PARAMETER);
        ifaddrs* pAddresses = nullptr;
        OrThrowErrno(::getifaddrs(&pAddresses));
        const Owned<ifaddrs, ::freeifaddrs> pOwned(pAddresses);
        const AdapterMap oAdapters = Collect(pAddresses);
        Require(!oAdapters.empty(), ERROR_NO_DATA);
        const auto nNeeded = static_cast<ULONG>(SizeOf(oAdapters));
        const ULONG nHas = std::exchange(*pnSize, nNeeded);
        Require(pAdapters && nHas >= nNeeded, ERROR_BUFFER_OVERFLOW);
        Fill(pAdapters, oAdapters);
    });
}
