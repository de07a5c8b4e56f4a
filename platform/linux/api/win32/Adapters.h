#pragma once

#include "ZevrinUtils/Types.h"

// Four numbers and their dots.
struct IP_ADDRESS_STRING
{
    char String[16];
};

struct IP_ADDR_STRING
{
    IP_ADDR_STRING* Next;
    IP_ADDRESS_STRING IpAddress;
};
using PIP_ADDR_STRING = IP_ADDR_STRING*;

struct IP_ADAPTER_INFO
{
    IP_ADAPTER_INFO* Next;
    IP_ADDR_STRING IpAddressList;
};
using PIP_ADAPTER_INFO = IP_ADAPTER_INFO*;

namespace win32
{
ULONG GetAdaptersInfo(PIP_ADAPTER_INFO pAdapters, ULONG* pnSize);
}
