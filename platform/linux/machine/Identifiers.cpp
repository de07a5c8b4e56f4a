// Random identifiers by libuuid, whose bytes stand in network order.
#include "win32/Identifiers.h"

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <utility>

#include <arpa/inet.h>
#include <uuid/uuid.h>

namespace
{
constexpr std::size_t nTextSize = UUID_STR_LEN;
}

// The first three fields of the struct are numbers.
RPC_STATUS win32::UuidCreate(UUID* pId)
{
    static_assert(sizeof(UUID) == sizeof(uuid_t));
    uuid_t anId;
    uuid_generate(anId);
    std::memcpy(pId, anId, sizeof anId);
    pId->Data1 = ntohl(pId->Data1);
    pId->Data2 = ntohs(pId->Data2);
    pId->Data3 = ntohs(pId->Data3);
    return RPC_S_OK;
}

RPC_STATUS win32::UuidToStringA(UUID* pId, RPC_CSTR* ppszText)
{
    auto* const pszText = static_cast<char*>(std::malloc(nTextSize));
    if (!pszText)
        return RPC_S_OUT_OF_MEMORY;
    UUID oId = *pId;
    oId.Data1 = htonl(oId.Data1);
    oId.Data2 = htons(oId.Data2);
    oId.Data3 = htons(oId.Data3);
    uuid_t anId;
    std::memcpy(anId, &oId, sizeof anId);
    uuid_unparse_lower(anId, pszText);
    *ppszText = reinterpret_cast<RPC_CSTR>(pszText);
    return RPC_S_OK;
}

RPC_STATUS win32::RpcStringFreeA(RPC_CSTR* ppszText)
{
    std::free(std::exchange(*ppszText, nullptr));
    return RPC_S_OK;
}
