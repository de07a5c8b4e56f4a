// The access rights of a path as the system itself sees them.
#pragma once

#include "ZevrinUtils/Types.h"

#include <string>

#include <aclapi.h>

// To read, write and execute.
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
