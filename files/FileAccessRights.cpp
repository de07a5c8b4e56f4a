// One entry of full access, alone in a new list or put into the old one. What the system gives on the way is released
// on every path. Nothing can be locked between reading a list and writing it: of two writers at once one may be undone.
#include "ZevrinUtils/FileAccessRights.h"

#include "platform/AccessLists.h"
#include "platform/System.h"

namespace
{
constexpr unsigned long nNoCode = 0;   // what the texts say of a malformed SID

// Everything that the system gives on the way, released in this order.
struct Received
{
    Received() = default;
    ~Received()
    {
        if (pSid)
            AccessLists().FreeSid(pSid);
        if (pNewList)
            System().LocalFree(pNewList);
        if (pDescriptor)
            System().LocalFree(pDescriptor);
    }
    Received(const Received&) = delete;
    Received& operator=(const Received&) = delete;

    PSID pSid = nullptr;
    PACL pNewList = nullptr;
    PSECURITY_DESCRIPTOR pDescriptor = nullptr;
};

// The system does not write to what it takes as writable.
LPSTR Writable(const char* pszText)
{
    return const_cast<LPSTR>(pszText);
}

struct Request
{
    const char* pszModule;
    const char* pszPath;
    const char* pszAccount;
    int bIsSid;
    CString& strError;
    Received oReceived{};

    int Failed(unsigned long nCode) const
    {
        strError.Format("Failed to set full access rights of the account %s for the folder %s.\n"
                        "Please update permissions for the folder %s manually.\n\n(Module: '%s', Error: 0x%lX)",
                        pszAccount, pszPath, pszPath, pszModule, nCode);
        return 0;
    }

    int FailedToRead(unsigned long nCode) const
    {
        strError.Format("Failed to get current permissions for the folder %s.\n"
                        "Please update permissions for the folder %s manually.\n\n(Module: '%s', Error: 0x%lX)",
                        pszPath, pszPath, pszModule, nCode);
        return 0;
    }

    // Puts the entry into the old list, if there is one, and writes the result.
    int Write(PACL pOldList, SECURITY_INFORMATION nParts)
    {
        EXPLICIT_ACCESSA oEntry{};
        AccessLists().BuildExplicitAccessWithNameA(&oEntry, Writable(pszAccount), GENERIC_ALL, SET_ACCESS,
                                                   SUB_CONTAINERS_AND_OBJECTS_INHERIT);
        if (bIsSid)
        {
            if (!AccessLists().ConvertStringSidToSidA(pszAccount, &oReceived.pSid))
                return Failed(nNoCode);
            AccessLists().BuildTrusteeWithSidA(&oEntry.Trustee, oReceived.pSid);
        }
        if (const DWORD nError = AccessLists().SetEntriesInAclA(1, &oEntry, pOldList, &oReceived.pNewList))
            return Failed(nError);
        if (const DWORD nError = AccessLists().SetNamedSecurityInfoA(Writable(pszPath), SE_FILE_OBJECT, nParts, nullptr,
                                                                     nullptr, oReceived.pNewList, nullptr))
            return Failed(nError);
        return 1;
    }
};
}

int ZVUSetFileAccessRights(const char* pszPath, const char* pszAccount, int bIsSid, int bKeepInherited,
                           CString& strError)
{
    Request oRequest{"ZVUSetFileAccessRights", pszPath, pszAccount, bIsSid, strError};
    return oRequest.Write(nullptr,
                          DACL_SECURITY_INFORMATION | (bKeepInherited ? 0 : PROTECTED_DACL_SECURITY_INFORMATION));
}

int ZVUAddFileAccessRights(const char* pszPath, const char* pszAccount, int bIsSid, CString& strError)
{
    Request oRequest{"ZVUAddFileAccessRights", pszPath, pszAccount, bIsSid, strError};
    PACL pOldList = nullptr;
    if (const DWORD nError =
            AccessLists().GetNamedSecurityInfoA(Writable(pszPath), SE_FILE_OBJECT, DACL_SECURITY_INFORMATION, nullptr,
                                                nullptr, &pOldList, nullptr, &oRequest.oReceived.pDescriptor))
        return oRequest.FailedToRead(nError);
    return oRequest.Write(pOldList, DACL_SECURITY_INFORMATION);
}
