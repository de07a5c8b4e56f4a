// Accounts, by name and by SID, as the entries of an access list know them.
#pragma once

#include "ZevrinUtils/Types.h"

#include <compare>
#include <optional>
#include <string>

#include <sys/acl.h>
#include <sys/types.h>

// A user or group with its number, or one of those without: the owner, the owning group, all others.
struct Account
{
    acl_tag_t nTag;
    id_t nId = 0;

    auto operator<=>(const Account&) const = default;   // NOLINT(modernize-use-nullptr): of the compiler's own
};

// A SID in its binary form.
struct SID
{
    static constexpr std::size_t nMostSubAuthorities = 15;

    BYTE Revision;
    BYTE SubAuthorityCount;
    BYTE IdentifierAuthority[6];   // the highest byte first
    DWORD SubAuthority[nMostSubAuthorities];
};

// From its text, S-1-..., or the two letters of a well-known one; none if it is malformed.
std::optional<SID> ParseSid(std::string strText);

// Fails with ERROR_NONE_MAPPED if there is no such account here. Users and groups have the SIDs S-1-22-1 and S-1-22-2
// with their number.
Account FindAccount(const SID& oSid);
Account FindAccount(const char* pszName);
