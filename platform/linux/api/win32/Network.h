// Sockets, the look-up of addresses, network adapters.
#pragma once

#include "ZevrinUtils/Types.h"

#include <netdb.h>
#include <netinet/in.h>
#include <sys/socket.h>

// Sockets. The types that both systems share by name and layout are the C library's own.

using SOCKET = unsigned int;

inline constexpr SOCKET INVALID_SOCKET = ~SOCKET{0};
inline constexpr int SOCKET_ERROR = -1;

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

SOCKET socket(int nFamily, int nType, int nProtocol);
int bind(SOCKET hSocket, const sockaddr* pAddress, int nLength);
int listen(SOCKET hSocket, int nBacklog);
SOCKET accept(SOCKET hSocket, sockaddr* pAddress, int* pnLength);
int recv(SOCKET hSocket, char* pBuffer, int nLength, int nFlags);
int send(SOCKET hSocket, const char* pData, int nLength, int nFlags);
int closesocket(SOCKET hSocket);

ULONG inet_addr(const char* pszAddress);
hostent* gethostbyaddr(const char* pAddress, int nLength, int nFamily);
}

// Network adapters.

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
