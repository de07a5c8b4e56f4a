// Access lists and SIDs.
#pragma once

#include "ZevrinUtils/Types.h"

using ACCESS_MASK = DWORD;
using SECURITY_INFORMATION = DWORD;
using PSID = void*;
using PACL = struct ACL*;
using PSECURITY_DESCRIPTOR = void*;

inline constexpr ACCESS_MASK GENERIC_ALL = 0x10000000;
inline constexpr DWORD SUB_CONTAINERS_AND_OBJECTS_INHERIT = 3;
inline constexpr SECURITY_INFORMATION DACL_SECURITY_INFORMATION = 4;
inline constexpr SECURITY_INFORMATION PROTECTED_DACL_SECURITY_INFORMATION = 0x80000000;

enum ACCESS_MODE
{
    SET_ACCESS = 2
};

enum SE_OBJECT_TYPE
{
    SE_FILE_OBJECT = 1
};

enum TRUSTEE_FORM
{
    TRUSTEE_IS_SID,
    TRUSTEE_IS_NAME
};

struct TRUSTEE_A
{
    TRUSTEE_FORM TrusteeForm;
    char* ptstrName;   // or the SID
};
using PTRUSTEEA = TRUSTEE_A*;

struct EXPLICIT_ACCESSA
{
    DWORD grfAccessPermissions;
    ACCESS_MODE grfAccessMode;
    DWORD grfInheritance;
    TRUSTEE_A Trustee;
};
using PEXPLICIT_ACCESSA = EXPLICIT_ACCESSA*;

namespace win32
{
void BuildExplicitAccessWithNameA(PEXPLICIT_ACCESSA pEntry, LPSTR pszAccount, DWORD nAccess, ACCESS_MODE eMode,
                                  DWORD nInheritance);
BOOL ConvertStringSidToSidA(LPCSTR pszSid, PSID* ppSid);
void BuildTrusteeWithSidA(PTRUSTEEA pTrustee, PSID pSid);
DWORD SetEntriesInAclA(ULONG nEntries, PEXPLICIT_ACCESSA pEntries, PACL pOld, PACL* ppNew);
DWORD GetNamedSecurityInfoA(LPCSTR pszPath, SE_OBJECT_TYPE eType, SECURITY_INFORMATION nParts, PSID* ppOwner,
                            PSID* ppGroup, PACL* ppList, PACL* ppSystemList, PSECURITY_DESCRIPTOR* ppDescriptor);
DWORD SetNamedSecurityInfoA(LPSTR pszPath, SE_OBJECT_TYPE eType, SECURITY_INFORMATION nParts, PSID pOwner, PSID pGroup,
                            PACL pList, PACL pSystemList);
LPVOID FreeSid(PSID pSid);
}
