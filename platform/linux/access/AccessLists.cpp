// The calls on access lists: one entry that gives an account full access, put into the list of a file or folder and
// handed down to what is below it.
#include "win32/AccessLists.h"

#include "AccessEntries.h"
#include "platform/linux/base/Paths.h"
#include "util/OrEmpty.h"
#include "util/Owned.h"

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <vector>

#include <sys/stat.h>

// A list as callers have it: one block that free releases. It counts and holds the entries of three lists: the
// object's own, the one that it hands down, and the accounts that are to be granted full access.
struct ACL
{
    struct Entry
    {
        Account oAccount;
        unsigned nBits;
    };

    std::size_t anCounts[3];
    Entry aEntries[1];   // and as many more as there are
};

namespace
{
struct Lists
{
    AccessEntries oAccess;    // none in a list that was made from nothing
    AccessEntries oDefault;   // none for a file
    AccessEntries oGranted;
};

PACL Pack(const Lists& oLists)
{
    const AccessEntries* const apParts[] = {&oLists.oAccess, &oLists.oDefault, &oLists.oGranted};
    std::size_t nEntries = 0;
    for (const auto* pPart : apParts)
        nEntries += pPart->size();
    auto* const pList = static_cast<PACL>(std::malloc(sizeof(ACL) + nEntries * sizeof(ACL::Entry)));
    if (!pList)
        throw std::bad_alloc();
    auto* pEntry = pList->aEntries;
    for (std::size_t n = 0; n < std::size(apParts); ++n)
    {
        pList->anCounts[n] = apParts[n]->size();
        for (const auto& [oAccount, nBits] : *apParts[n])
            *pEntry++ = {oAccount, nBits};
    }
    return pList;
}

Lists Unpack(const ACL* pList)
{
    Lists oLists;
    if (!pList)
        return oLists;
    AccessEntries* const apParts[] = {&oLists.oAccess, &oLists.oDefault, &oLists.oGranted};
    const auto* pEntry = pList->aEntries;
    for (std::size_t nPart = 0; nPart < std::size(apParts); ++nPart)
        for (std::size_t n = 0; n < pList->anCounts[nPart]; ++n, ++pEntry)
            apParts[nPart]->emplace(pEntry->oAccount, pEntry->nBits);
    return oLists;
}

bool Read(const char* pszPath, bool bFolder, Lists& oLists)
{
    return ReadEntries(pszPath, ACL_TYPE_ACCESS, oLists.oAccess) &&
           (!bFolder || ReadEntries(pszPath, ACL_TYPE_DEFAULT, oLists.oDefault));
}

// The entries that the parent gives to those below. Where it says nothing, those of owner, group and others are what
// Linux has in their place.
Lists Inherited(const char* pszPath, const struct stat& oStatus)
{
    Lists oLists;
    ReadEntries(pszPath, ACL_TYPE_ACCESS, oLists.oAccess);   // if that fails, so will the writing
    std::erase_if(oLists.oAccess, [](const auto& o) { return o.first.nTag == ACL_USER || o.first.nTag == ACL_GROUP; });
    std::error_code oError;
    const auto oPath = std::filesystem::canonical(pszPath, oError);
    AccessEntries oOfParent;
    if (oError || !ReadEntries(oPath.parent_path().c_str(), ACL_TYPE_DEFAULT, oOfParent) || oOfParent.empty())
        return oLists;
    if (S_ISDIR(oStatus.st_mode))
        return {oOfParent, oOfParent, {}};
    // A new file would not be made executable by its parent.
    for (const auto& [oAccount, nBits] : oLists.oAccess)
        oOfParent[oAccount] &= nBits | ACL_READ | ACL_WRITE;
    return {oOfParent, {}, {}};
}

void PutBackDefault(const char* pszFolder, const AccessEntries& oDefault)
{
    if (oDefault.empty())
        ::acl_delete_def_file(pszFolder);
    else
        WriteEntries(pszFolder, ACL_TYPE_DEFAULT, oDefault);
}

// With what is granted; a folder also hands it down, and lets those who make something there have it.
bool Write(const char* pszPath, const struct stat& oStatus, Lists oLists)
{
    if (S_ISDIR(oStatus.st_mode) && oLists.oDefault.empty())
        for (const auto& [oAccount, nNone] : NoAccess())
            oLists.oDefault[oAccount] = oAccount.nTag == ACL_USER_OBJ ? nFullAccess : oLists.oAccess[oAccount];
    for (const auto& [oAccount, nBits] : oLists.oGranted)
    {
        Grant(oLists.oAccess, oAccount, oStatus.st_uid);
        if (S_ISDIR(oStatus.st_mode))
            Grant(oLists.oDefault, oAccount, oStatus.st_uid);
    }
    if (oLists.oDefault.empty())
        return WriteEntries(pszPath, ACL_TYPE_ACCESS, oLists.oAccess);

    Lists oBefore;
    const bool bKnown = Read(pszPath, true, oBefore);
    if (!WriteEntries(pszPath, ACL_TYPE_DEFAULT, oLists.oDefault))
        return false;
    if (WriteEntries(pszPath, ACL_TYPE_ACCESS, oLists.oAccess))
        return true;
    const int nErrno = errno;
    if (bKnown)
        PutBackDefault(pszPath, oBefore.oDefault);   // a failed call changes nothing
    errno = nErrno;
    return false;
}

std::vector<std::filesystem::path> ContentOf(const std::filesystem::path& oFolder)
{
    std::vector<std::filesystem::path> oContent;
    std::error_code oError;
    for (std::filesystem::directory_iterator it(oFolder, oError), end; !oError && it != end; it.increment(oError))
        oContent.push_back(it->path());
    return oContent;
}

// Done as far as it goes, since the object has its list by now: what vanishes or cannot be read meanwhile is left out,
// and nothing else. Links lead elsewhere.
void HandDown(const std::filesystem::path& oFolder, const AccessEntries& oGranted)
{
    for (const auto& oPath : ContentOf(oFolder))
    {
        Lists oLists{{}, {}, oGranted};
        struct stat oStatus;
        if (::lstat(oPath.c_str(), &oStatus) != 0 || (!S_ISREG(oStatus.st_mode) && !S_ISDIR(oStatus.st_mode)))
            continue;
        if (Read(oPath.c_str(), S_ISDIR(oStatus.st_mode), oLists))
            Write(oPath.c_str(), oStatus, oLists);
        if (S_ISDIR(oStatus.st_mode))
            HandDown(oPath, oGranted);
    }
}

Account FindAccount(const TRUSTEE_A& oTrustee)
{
    if (oTrustee.TrusteeForm == TRUSTEE_IS_NAME)
        return ::FindAccount(OrEmpty(oTrustee.ptstrName));
    SID oSid;
    std::memcpy(&oSid, oTrustee.ptstrName, sizeof oSid);
    return ::FindAccount(oSid);
}
}

void win32::BuildExplicitAccessWithNameA(PEXPLICIT_ACCESSA pEntry, LPSTR pszAccount, DWORD nAccess, ACCESS_MODE eMode,
                                         DWORD nInheritance)
{
    *pEntry = {nAccess, eMode, nInheritance, {TRUSTEE_IS_NAME, pszAccount}};
}

BOOL win32::ConvertStringSidToSidA(LPCSTR pszSid, PSID* ppSid)
{
    return Succeeds([&] {
        const auto oSid = ParseSid(OrEmpty(pszSid));
        Require(oSid.has_value(), ERROR_INVALID_SID);
        Malloced<SID> pSid(static_cast<SID*>(std::malloc(sizeof(SID))));
        if (!pSid)
            throw std::bad_alloc();
        *pSid = *oSid;
        *ppSid = pSid.release();
    });
}

void win32::BuildTrusteeWithSidA(PTRUSTEEA pTrustee, PSID pSid)
{
    *pTrustee = {TRUSTEE_IS_SID, static_cast<char*>(pSid)};
}

DWORD win32::SetEntriesInAclA(ULONG nEntries, PEXPLICIT_ACCESSA pEntries, PACL pOld, PACL* ppNew)
{
    return ErrorOf([&] {
        RequireSupported(nEntries == 1 && pEntries->grfAccessPermissions == GENERIC_ALL &&
                         pEntries->grfAccessMode == SET_ACCESS &&
                         pEntries->grfInheritance == SUB_CONTAINERS_AND_OBJECTS_INHERIT);
        Lists oLists = Unpack(pOld);
        oLists.oGranted[FindAccount(pEntries->Trustee)] = nFullAccess;
        *ppNew = Pack(oLists);
    });
}

DWORD win32::GetNamedSecurityInfoA(LPCSTR pszPath, SE_OBJECT_TYPE eType, SECURITY_INFORMATION nParts, PSID* ppOwner,
                                   PSID* ppGroup, PACL* ppList, PACL* ppSystemList, PSECURITY_DESCRIPTOR* ppDescriptor)
{
    return ErrorOf([&] {
        RequireSupported(eType == SE_FILE_OBJECT && nParts == DACL_SECURITY_INFORMATION && !ppOwner && !ppGroup &&
                         !ppSystemList);
        const NativePath oPath(pszPath);
        struct stat oStatus;
        Lists oLists;
        if (::stat(oPath, &oStatus) != 0 || !Read(oPath, S_ISDIR(oStatus.st_mode), oLists))
            ThrowOnPath(oPath);
        *ppList = Pack(oLists);
        *ppDescriptor = *ppList;
    });
}

DWORD win32::SetNamedSecurityInfoA(LPSTR pszPath, SE_OBJECT_TYPE eType, SECURITY_INFORMATION nParts, PSID pOwner,
                                   PSID pGroup, PACL pList, PACL pSystemList)
{
    return ErrorOf([&] {
        RequireSupported(eType == SE_FILE_OBJECT &&
                         (nParts & ~PROTECTED_DACL_SECURITY_INFORMATION) == DACL_SECURITY_INFORMATION && !pOwner &&
                         !pGroup && pList && !pSystemList);
        const NativePath oPath(pszPath);
        struct stat oStatus;
        OrThrowOnPath(oPath, ::stat(oPath, &oStatus));
        Lists oLists = Unpack(pList);
        const AccessEntries oGranted = oLists.oGranted;
        if (oLists.oAccess.empty())
        {
            const bool bProtected = nParts & PROTECTED_DACL_SECURITY_INFORMATION;
            oLists = bProtected ? Lists{NoAccess(), {}, {}} : Inherited(oPath, oStatus);
            oLists.oGranted = oGranted;
        }
        if (!Write(oPath, oStatus, std::move(oLists)))
            ThrowOnPath(oPath);
        if (S_ISDIR(oStatus.st_mode))   // and a want of memory in it does not undo what is done
            static_cast<void>(ErrorOf([&] { HandDown(static_cast<const char*>(oPath), oGranted); }));
    });
}

LPVOID win32::FreeSid(PSID pSid)
{
    std::free(pSid);
    return nullptr;
}
