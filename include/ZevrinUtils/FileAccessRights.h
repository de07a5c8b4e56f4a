/// @file
/// Full access to a folder or file for an account.
///
/// Both functions give 1 on success and 0 on failure. On failure the error text is replaced by one for the user,
/// which ends in the Win32 error in hexadecimal, and nothing has changed. They keep nothing, and no lock is taken
/// between the reading and the writing of a list. Any thread may call them.
///
/// On Linux the lists are POSIX ones, and these hold: a name is a user's or a group's, S-1-22-1 and S-1-22-2 with a
/// number are their SIDs, and of the well-known ones those for everyone, the creator, the system and the
/// administrators have a meaning. The owner of a file is judged by the owner's entry alone, so one for a group that he
/// is in does not help him. The entries that stand for the mode (owner, group, others) are neither inherited nor
/// explicit. When a list is replaced, they stay if inherited entries are kept and the folder above has no default
/// list; if it has one, they are as that says; if inherited entries are not kept, they are closed.
#pragma once

#include "ZevrinUtils/Export.h"
#include "ZevrinUtils/framework/String.h"

/// Replaces the access list of a folder or file by one entry, which everything below a folder inherits.
///
/// @param pszPath         the folder or file; not null
/// @param pszAccount      name of an account, or the string form of its SID; not null
/// @param bIsSid          non-zero: it is a SID
/// @param bKeepInherited  zero: the object no longer takes entries from the folder that it is in
/// @param strError        receives the text of a failure; stays as it is on success
ZEVRINUTILS_API int ZVUSetFileAccessRights(const char* pszPath, const char* pszAccount, int bIsSid, int bKeepInherited,
                                           CString& strError);

/// Puts that entry into the list that the folder or file has, in the place of what the account had there. The
/// arguments are as above.
ZEVRINUTILS_API int ZVUAddFileAccessRights(const char* pszPath, const char* pszAccount, int bIsSid, CString& strError);
