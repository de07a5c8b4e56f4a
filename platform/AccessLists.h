// Access lists of files and folders.
#pragma once

#include "platform/Service.h"
#include "win32/AccessLists.h"

// These give the error themselves, 0 for none, but for the string of a SID.
struct AccessListCalls
{
    // Fills an entry for an account by its name, which it borrows.
    PLATFORM_CALL(BuildExplicitAccessWithNameA);
    // Makes a SID from its string form, to be released by FreeSid; FALSE for a malformed one.
    PLATFORM_CALL(ConvertStringSidToSidA);
    // Makes a SID, which it borrows, the account of an entry.
    PLATFORM_CALL(BuildTrusteeWithSidA);
    // Makes a list, to be released by LocalFree of System.h, of an old one, if there is one, with the entries put in;
    // an unknown account is error 1332. Linux takes one entry that gives full access and is inherited.
    PLATFORM_CALL(SetEntriesInAclA);
    // The list of a file or folder, in a descriptor that LocalFree releases.
    PLATFORM_CALL(GetNamedSecurityInfoA);
    // Gives a file or folder a list, and what is below a folder the entries that it inherits. A protected one takes
    // no entries from its parent.
    PLATFORM_CALL(SetNamedSecurityInfoA);
    // Releases a SID.
    PLATFORM_CALL(FreeSid);
};

inline const AccessListCalls& AccessLists() noexcept
{
    return PlatformService<AccessListCalls>::InForce();
}
