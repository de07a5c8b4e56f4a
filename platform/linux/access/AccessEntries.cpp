// POSIX access lists by libacl, with the limit of a mask worked into the entries, as Windows knows no such thing.
#include "AccessEntries.h"

#include "util/Owned.h"

#include <new>

#include <acl/libacl.h>

namespace
{
using List = Owned<std::remove_pointer_t<acl_t>, acl_free>;

constexpr Account oMask{ACL_MASK};
constexpr acl_perm_t s_anBits[] = {ACL_READ, ACL_WRITE, ACL_EXECUTE};

Account AccountOfEntry(acl_entry_t pEntry)
{
    Account oAccount{};
    acl_get_tag_type(pEntry, &oAccount.nTag);
    if (oAccount.nTag != ACL_USER && oAccount.nTag != ACL_GROUP)
        return oAccount;
    void* const pNumber = acl_get_qualifier(pEntry);
    if (!pNumber)
        throw std::bad_alloc();
    oAccount.nId = *static_cast<id_t*>(pNumber);
    acl_free(pNumber);
    return oAccount;
}

unsigned BitsOfEntry(acl_entry_t pEntry)
{
    acl_permset_t pBits;
    acl_get_permset(pEntry, &pBits);
    unsigned nBits = 0;
    for (const acl_perm_t nBit : s_anBits)
        nBits |= acl_get_perm(pBits, nBit) == 1 ? nBit : 0;
    return nBits;
}

bool AddEntry(acl_t& pList, const Account& oAccount, unsigned nBits)
{
    acl_entry_t pEntry;
    acl_permset_t pBits;
    if (acl_create_entry(&pList, &pEntry) != 0 || acl_set_tag_type(pEntry, oAccount.nTag) != 0 ||
        acl_get_permset(pEntry, &pBits) != 0)
        return false;
    for (const acl_perm_t nBit : s_anBits)
        if (nBits & nBit)
            acl_add_perm(pBits, nBit);
    return (oAccount.nTag != ACL_USER && oAccount.nTag != ACL_GROUP) || acl_set_qualifier(pEntry, &oAccount.nId) == 0;
}
}

void Grant(AccessEntries& oEntries, const Account& oAccount, uid_t nOwner)
{
    oEntries[oAccount] = nFullAccess;
    if (oAccount == Account{ACL_USER, nOwner} || oAccount.nTag == ACL_OTHER)
        oEntries[{ACL_USER_OBJ}] = nFullAccess;
    if (oAccount.nTag == ACL_OTHER)   // which means everyone
        oEntries[{ACL_GROUP_OBJ}] = nFullAccess;
}

AccessEntries NoAccess()
{
    return {{{ACL_USER_OBJ}, 0}, {{ACL_GROUP_OBJ}, 0}, {{ACL_OTHER}, 0}};
}

bool ReadEntries(const char* pszNativePath, acl_type_t nType, AccessEntries& oEntries)
{
    const List pList(acl_get_file(pszNativePath, nType));
    if (!pList)
        return false;
    acl_entry_t pEntry;
    for (int nWhich = ACL_FIRST_ENTRY; acl_get_entry(pList.get(), nWhich, &pEntry) == 1; nWhich = ACL_NEXT_ENTRY)
        oEntries[AccountOfEntry(pEntry)] = BitsOfEntry(pEntry);
    if (const auto oNode = oEntries.extract(oMask))
        for (auto& [oAccount, nBits] : oEntries)
            if (oAccount.nTag != ACL_USER_OBJ && oAccount.nTag != ACL_OTHER)
                nBits &= oNode.mapped();
    return true;
}

bool WriteEntries(const char* pszNativePath, acl_type_t nType, const AccessEntries& oEntries)
{
    acl_t pRaw = acl_init(static_cast<int>(oEntries.size() + 1));
    bool bMade = pRaw;
    for (const auto& [oAccount, nBits] : oEntries)
        bMade = bMade && AddEntry(pRaw, oAccount, nBits);
    // A list that names accounts must have a mask; this one limits none of them.
    const bool bHasMask = oEntries.size() > 3;   // where there is more than the three of the mode
    bMade = bMade && (!bHasMask || acl_calc_mask(&pRaw) == 0);
    const List pList(pRaw);
    return bMade && acl_set_file(pszNativePath, nType, pRaw) == 0;
}
