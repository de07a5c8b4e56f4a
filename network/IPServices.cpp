// Tests on texts. An address is this machine's if an adapter has it letter for letter: no number is compared, no name
// looked up.
#include "ZevrinUtils/IPServices.h"

#include "ZevrinUtils/framework/String.h"
#include "platform/Adapters.h"
#include "platform/Errors.h"
#include "platform/Memory.h"

#include <cstdio>
#include <cstring>

CSIPServices& CSIPServices::operator=(const CSIPServices&) = default;

namespace
{
constexpr int nMostOfGroup = 255;

bool IsGroupInRange(const char* pszGroup)
{
    int nValue = 0;
    return std::sscanf(pszGroup, "%d", &nValue) == 1 && nValue >= 0 && nValue <= nMostOfGroup;
}

using AdapterList = Malloced<IP_ADAPTER_INFO>;

// Null if the system does not tell.
AdapterList ReadAdapters()
{
    ULONG nSize = 0;
    if (Adapters().GetAdaptersInfo(nullptr, &nSize) != ERROR_BUFFER_OVERFLOW)
        return nullptr;
    AdapterList pAdapters(static_cast<PIP_ADAPTER_INFO>(Memory().malloc(nSize)));
    if (!pAdapters)
        return nullptr;
    std::memset(static_cast<void*>(pAdapters.get()), 0, nSize);
    // An adapter that has come since the size was told makes the buffer too small: then this is a failure too.
    return Adapters().GetAdaptersInfo(pAdapters.get(), &nSize) == ERROR_SUCCESS ? std::move(pAdapters) : nullptr;
}

bool HasAddress(const IP_ADDR_STRING* pAddress, const CString& strText)
{
    for (; pAddress; pAddress = pAddress->Next)
        if (strText == pAddress->IpAddress.String)
            return true;
    return false;
}
}

// The form of each group is tested, not how many there are: callers pass parts of addresses as well.
bool CSIPServices::IsValidIP(const char* pszText)
{
    if (!pszText || !*pszText)
        return false;
    char chBefore = '.';
    for (const char* p = pszText; *p; chBefore = *p++)
    {
        const bool bOpensGroup = chBefore == '.';
        if (*p == '.' ? bOpensGroup || !p[1] : *p < '0' || *p > '9' || (bOpensGroup && !IsGroupInRange(p)))
            return false;
    }
    return true;
}

bool CSIPServices::IsLocalIP(const char* pszText, bool& bIsLocal)
{
    bIsLocal = false;
    const AdapterList pAdapters = ReadAdapters();
    if (!pAdapters)
        return false;
    const CString strText(pszText);
    for (const auto* pAdapter = pAdapters.get(); pAdapter && !bIsLocal; pAdapter = pAdapter->Next)
        bIsLocal = HasAddress(&pAdapter->IpAddressList, strText);
    return true;
}
