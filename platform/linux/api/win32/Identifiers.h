// Unique identifiers.
#pragma once

#include "ZevrinUtils/Types.h"

using RPC_STATUS = LONG;
using RPC_CSTR = unsigned char*;

inline constexpr RPC_STATUS RPC_S_OK = 0;
inline constexpr RPC_STATUS RPC_S_OUT_OF_MEMORY = 14;
inline constexpr RPC_STATUS RPC_S_UUID_NO_ADDRESS = 1739;
inline constexpr RPC_STATUS RPC_S_UUID_LOCAL_ONLY = 1824;

struct UUID
{
    ULONG Data1;
    WORD Data2;
    WORD Data3;
    BYTE Data4[8];
};

namespace win32
{
RPC_STATUS UuidCreate(UUID* pId);
RPC_STATUS UuidToStringA(UUID* pId, RPC_CSTR* ppszText);
RPC_STATUS RpcStringFreeA(RPC_CSTR* ppszText);
}
