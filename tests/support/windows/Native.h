// What tests ask of the system itself.
#pragma once

#include "ZevrinUtils/Types.h"

#include <string>

#include <aclapi.h>

inline constexpr bool bWindows = true;

// For all that Wine does otherwise than Windows.
inline bool UnderWine()
{
    return GetProcAddress(GetModuleHandleA("ntdll.dll"), "wine_get_version") != nullptr;
}

inline void Unset(const char* pszName)
{
    SetEnvironmentVariableA(pszName, nullptr);
}

// Whether everyone may read, write and execute what is at the path.
inline bool EveryoneMayAll(std::string strPath)
{
    BYTE anEveryone[SECURITY_MAX_SID_SIZE];
    DWORD nSize = sizeof anEveryone;
    CreateWellKnownSid(WinWorldSid, nullptr, anEveryone, &nSize);
    PACL pList = nullptr;
    PSECURITY_DESCRIPTOR pDescriptor = nullptr;
    GetNamedSecurityInfoA(strPath.data(), SE_FILE_OBJECT, DACL_SECURITY_INFORMATION, nullptr, nullptr, &pList, nullptr,
                          &pDescriptor);
    constexpr DWORD nAll = FILE_GENERIC_READ | FILE_GENERIC_WRITE | FILE_GENERIC_EXECUTE;
    bool bFound = false;
    for (DWORD n = 0; pList && n < pList->AceCount; ++n)
    {
        void* pEntry = nullptr;
        GetAce(pList, n, &pEntry);
        auto& oEntry = *static_cast<ACCESS_ALLOWED_ACE*>(pEntry);
        bFound |= oEntry.Header.AceType == ACCESS_ALLOWED_ACE_TYPE && EqualSid(anEveryone, &oEntry.SidStart) &&
                  (oEntry.Mask & nAll) == nAll;
    }
    LocalFree(pDescriptor);
    return bFound;
}

using NativeSocket = SOCKET;

inline int CloseNative(NativeSocket hSocket)
{
    return closesocket(hSocket);
}
