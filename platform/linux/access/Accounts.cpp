// SIDs and accounts: the numbers of Linux stand in SIDs as file servers on Linux write them, and the well-known SIDs
// have the meaning that comes nearest here.
#include "Accounts.h"

#include "platform/linux/base/AccountRecord.h"
#include "platform/linux/base/Failure.h"

#include <algorithm>
#include <charconv>
#include <cstdint>
#include <iterator>
#include <vector>

#include <grp.h>
#include <pwd.h>

namespace
{
constexpr DWORD nUnixAuthority = 22;
constexpr DWORD nUnixUser = 1;
constexpr DWORD nUnixGroup = 2;

struct WellKnown
{
    const char* pszLetters;
    const char* pszSid;
    Account oAccount;
};
constexpr WellKnown s_aWellKnown[] = {
    {"WD", "S-1-1-0", {ACL_OTHER}},           // everyone
    {"CO", "S-1-3-0", {ACL_USER_OBJ}},        // the creator, and owner
    {"CG", "S-1-3-1", {ACL_GROUP_OBJ}},       // the creator's group
    {"AU", "S-1-5-11", {ACL_OTHER}},          // authenticated users: all are
    {"SY", "S-1-5-18", {ACL_USER, 0}},        // the system itself
    {"BA", "S-1-5-32-544", {ACL_GROUP, 0}},   // administrators
    {"BU", "S-1-5-32-545", {ACL_OTHER}},      // users
};

std::string TextOf(const SID& oSid)
{
    std::uint64_t nAuthority = 0;
    for (const BYTE n : oSid.IdentifierAuthority)
        nAuthority = nAuthority << 8 | n;
    std::string strText = "S-1-" + std::to_string(nAuthority);
    for (std::size_t n = 0; n < oSid.SubAuthorityCount; ++n)
        strText += '-' + std::to_string(oSid.SubAuthority[n]);
    return strText;
}

// The numbers behind "S-"; none if there is anything else between their dashes.
std::vector<std::uint64_t> NumbersOf(const std::string& strText)
{
    std::vector<std::uint64_t> oNumbers;
    const char* p = strText.data() + 1;
    for (const char* const pEnd = strText.data() + strText.size(); p != pEnd;)
    {
        std::uint64_t nNumber = 0;
        const auto [pStop, eError] = *p == '-' ? std::from_chars(p + 1, pEnd, nNumber) : std::from_chars_result{p, {}};
        if (pStop == p || pStop == p + 1 || eError != std::errc())
            return {};
        oNumbers.push_back(nNumber);
        p = pStop;
    }
    return oNumbers;
}
}

std::optional<SID> ParseSid(std::string strText)
{
    for (const auto& oKnown : s_aWellKnown)
        if (strText == oKnown.pszLetters)
            strText = oKnown.pszSid;
    if (!strText.starts_with('S') && !strText.starts_with('s'))
        return {};
    const auto oNumbers = NumbersOf(strText);
    const auto isTooLarge = [](std::uint64_t n) { return n > UINT32_MAX; };
    if (oNumbers.size() < 3 || oNumbers.size() > 2 + SID::nMostSubAuthorities || oNumbers[0] != 1 ||
        oNumbers[1] >> 48 || std::any_of(oNumbers.begin() + 2, oNumbers.end(), isTooLarge))
        return {};
    SID oSid{1, static_cast<BYTE>(oNumbers.size() - 2), {}, {}};
    for (std::size_t n = 0; n < std::size(oSid.IdentifierAuthority); ++n)
        oSid.IdentifierAuthority[n] = static_cast<BYTE>(oNumbers[1] >> (40 - 8 * n));
    std::transform(oNumbers.begin() + 2, oNumbers.end(), oSid.SubAuthority,
                   [](std::uint64_t n) { return static_cast<DWORD>(n); });
    return oSid;
}

Account FindAccount(const SID& oSid)
{
    const std::string strText = TextOf(oSid);
    for (const auto& oKnown : s_aWellKnown)
        if (strText == oKnown.pszSid)
            return oKnown.oAccount;
    const BYTE anAuthority[] = {0, 0, 0, 0, 0, nUnixAuthority};
    const DWORD nKind = oSid.SubAuthority[0];
    Require(std::ranges::equal(oSid.IdentifierAuthority, anAuthority) && oSid.SubAuthorityCount == 2 &&
                (nKind == nUnixUser || nKind == nUnixGroup),
            ERROR_NONE_MAPPED);
    return {nKind == nUnixUser ? ACL_USER : ACL_GROUP, oSid.SubAuthority[1]};
}

Account FindAccount(const char* pszName)
{
    const AccountRecord oUser(&::getpwnam_r, pszName);
    if (oUser)
        return {ACL_USER, oUser->pw_uid};
    const AccountRecord oGroup(&::getgrnam_r, pszName);
    const int nErrno = oUser.Errno() ? oUser.Errno() : oGroup.Errno();
    Require(bool{oGroup}, nErrno ? ErrorOfErrno(nErrno) : ERROR_NONE_MAPPED);
    return {ACL_GROUP, oGroup->gr_gid};
}
