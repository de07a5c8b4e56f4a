// The contract of access lists, the same on every target.
#include "platform/AccessLists.h"
#include "platform/System.h"
#include "support/ErrorOf.h"
#include "support/ScratchFolder.h"

#include "Native.h"

#include <gtest/gtest.h>

namespace
{
constexpr SECURITY_INFORMATION nProtected = DACL_SECURITY_INFORMATION | PROTECTED_DACL_SECURITY_INFORMATION;

// Gives an account full access, in a list of its own or put into the old one: the error of the first call that fails.
DWORD Grant(std::string strPath, std::string strAccount, SECURITY_INFORMATION nParts, bool bKeepOld)
{
    const auto& o = AccessLists();
    EXPLICIT_ACCESSA oEntry{};
    o.BuildExplicitAccessWithNameA(&oEntry, strAccount.data(), GENERIC_ALL, SET_ACCESS,
                                   SUB_CONTAINERS_AND_OBJECTS_INHERIT);
    EXPECT_TRUE(oEntry.Trustee.TrusteeForm == TRUSTEE_IS_NAME && oEntry.Trustee.ptstrName == strAccount.data());
    PSID pSid = nullptr;
    if (strAccount.starts_with("S-"))
    {
        if (!o.ConvertStringSidToSidA(strAccount.c_str(), &pSid))
            return Errors().GetLastError();
        o.BuildTrusteeWithSidA(&oEntry.Trustee, pSid);
        EXPECT_TRUE(oEntry.Trustee.TrusteeForm == TRUSTEE_IS_SID && oEntry.Trustee.ptstrName == pSid);
    }
    PACL pOld = nullptr, pNew = nullptr;
    PSECURITY_DESCRIPTOR pDescriptor = nullptr;
    DWORD nError = 0;
    if (bKeepOld)
        nError = o.GetNamedSecurityInfoA(strPath.data(), SE_FILE_OBJECT, DACL_SECURITY_INFORMATION, nullptr, nullptr,
                                         &pOld, nullptr, &pDescriptor);
    if (nError == 0)
        nError = o.SetEntriesInAclA(1, &oEntry, pOld, &pNew);
    if (nError == 0)
        nError = o.SetNamedSecurityInfoA(strPath.data(), SE_FILE_OBJECT, nParts, nullptr, nullptr, pNew, nullptr);
    EXPECT_EQ(System().LocalFree(pNew), nullptr);
    EXPECT_EQ(System().LocalFree(pDescriptor), nullptr);
    EXPECT_EQ(pSid ? o.FreeSid(pSid) : nullptr, nullptr);
    return nError;
}
}

TEST(AccessLists, GrantAnAccountFullAccessToFilesAndWhatIsBelowFolders)
{
    constexpr SECURITY_INFORMATION nList = DACL_SECURITY_INFORMATION;
    for (const auto& [nParts, bKeepOld] : {std::pair{nProtected, false}, {nList, false}, {nList, true}})
    {
        const ScratchFolder oFolder;
        const std::string strFile = oFolder / "file", strBelow = oFolder / "below", strTop = oFolder / ".";
        ScratchFolder::Write(strFile, "x");
        ScratchFolder::Write(strBelow, "x");
        EXPECT_FALSE(EveryoneMayAll(strTop) || EveryoneMayAll(strFile));
        EXPECT_EQ(Grant(strFile, "S-1-1-0", nParts, bKeepOld), 0u);
        EXPECT_TRUE(EveryoneMayAll(strFile) && !EveryoneMayAll(strBelow)) << nParts << bKeepOld;
        EXPECT_EQ(Grant(strTop, "S-1-1-0", nParts, bKeepOld), 0u);
        EXPECT_TRUE(EveryoneMayAll(strTop)) << nParts << bKeepOld;
        EXPECT_TRUE(EveryoneMayAll(strBelow) || UnderWine()) << nParts << bKeepOld;   // which hands nothing down
    }
}

TEST(AccessLists, SayWhatIsUnknownMalformedOrMissing)
{
    const ScratchFolder oFolder;
    ScratchFolder::Write(oFolder / "file", "x");
    for (const bool bKeepOld : {false, true})
        for (const auto& [strPath, pszAccount, nError] :
             {std::tuple{oFolder / "file", "no such account",
                         UnderWine() ? ERROR_INVALID_PARAMETER : ERROR_NONE_MAPPED},
              {oFolder / "file", "S-1-", ERROR_INVALID_SID},
              {oFolder / "missing", "S-1-1-0", ERROR_FILE_NOT_FOUND},
              {oFolder / "no\\such", "S-1-1-0", ERROR_PATH_NOT_FOUND}})
            EXPECT_EQ(Grant(strPath, pszAccount, nProtected, bKeepOld), DWORD(nError)) << strPath << pszAccount;
    EXPECT_EQ(ScratchFolder::Read(oFolder / "file"), "x");
}
