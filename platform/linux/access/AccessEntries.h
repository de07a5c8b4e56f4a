// The entries of access lists, as the file system keeps them.
#pragma once

#include "Accounts.h"

#include <map>

inline constexpr unsigned nFullAccess = ACL_READ | ACL_WRITE | ACL_EXECUTE;

// The access of each account. The limit that a mask sets is in the bits already.
using AccessEntries = std::map<Account, unsigned>;

// Gives an account full access. The owner of a file is judged by the owner's entry alone, so what is granted to the
// owner or to everyone goes into that one too.
void Grant(AccessEntries& oEntries, const Account& oAccount, uid_t nOwner);

// The entries that there are in every list, with no access.
AccessEntries NoAccess();

// False on failure, with errno; true with no entries for a folder that has nothing to be inherited.
bool ReadEntries(const char* pszNativePath, acl_type_t nType, AccessEntries& oEntries);
bool WriteEntries(const char* pszNativePath, acl_type_t nType, const AccessEntries& oEntries);
