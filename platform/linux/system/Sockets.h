// The types that both systems share by name and layout are the C library's own.
#pragma once

#include "ZevrinUtils/Types.h"

#include <netdb.h>
#include <netinet/in.h>

struct WSADATA
{
    WORD wVersion;
    WORD wHighVersion;
};
using LPWSADATA = WSADATA*;

namespace win32
{
int WSAStartup(WORD nVersion, LPWSADATA pData);
int WSACleanup();

ULONG inet_addr(const char* pszAddress);
hostent* gethostbyaddr(const char* pAddress, int nLength, int nFamily);
}
