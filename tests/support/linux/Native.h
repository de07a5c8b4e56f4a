// What tests ask of the system itself.
#pragma once

#include "support/ScratchFolder.h"

#include <cstdlib>

#include <netinet/in.h>
#include <sys/socket.h>
#include <unistd.h>

inline constexpr bool bWindows = false;

inline bool UnderWine()
{
    return false;
}

inline void Unset(const char* pszName)
{
    unsetenv(pszName);
}

// Whether everyone may read, write and execute what is at the path.
inline bool EveryoneMayAll(const std::string& strPath)
{
    return std::filesystem::status(ScratchFolder::Native(strPath)).permissions() == std::filesystem::perms::all;
}

using NativeSocket = int;

inline int CloseNative(NativeSocket nSocket)
{
    return close(nSocket);
}
