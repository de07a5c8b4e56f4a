// The contract of access lists, the same on every target.
#include "platform/AccessLists.h"
#include "platform/System.h"
#include "support/ErrorOf.h"
#include "support/ScratchFolder.h"
#include "support/Wine.h"

#include "NativeRights.h"

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
    const ScratchFolder oFolder;
    for (const auto& [nParts, bKeepOld] : {std::pair{nProtected, false},
                                           {SECURITY_INFORMATION{DACL_SECURITY_INFORMATION}, false},
                                           {SECURITY_INFORMATION{DACL_SECURITY_INFORMATION}, true}})
    {
        SCOPED_TRACE(std::to_string(nParts) + (bKeepOld ? " old" : " new"));
        const std::string strTop = oFolder / (std::to_string(nParts) + (bKeepOld ? "old" : "new"));
        std::filesystem::create_directory(ScratchFolder::Native(strTop));
        for (const char* pszFile : {"\\file", "\\below"})
        {
            ScratchFolder::Write(strTop + pszFile, "x");
            std::filesystem::permissions(ScratchFolder::Native(strTop + pszFile), std::filesystem::perms(0600));
        }
        EXPECT_FALSE(EveryoneMayAll(strTop) || EveryoneMayAll(strTop + "\\file"));
        EXPECT_EQ(Grant(strTop + "\\file", "S-1-1-0", nParts, bKeepOld), 0u);
        EXPECT_TRUE(EveryoneMayAll(strTop + "\\file") && !EveryoneMayAll(strTop + "\\below"));
        EXPECT_EQ(Grant(strTop, "S-1-1-0", nParts, bKeepOld), 0u);
        EXPECT_TRUE(EveryoneMayAll(strTop));
        EXPECT_TRUE(EveryoneMayAll(strTop + "\\below") || UnderWine());   // which hands nothing down
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
              {oFolder / "file", "S-1-1-x", ERROR_INVALID_SID},
              {oFolder / "missing", "S-1-1-0", ERROR_FILE_NOT_FOUND},
              {oFolder / "no\\such", "S-1-1-0", ERROR_PATH_NOT_FOUND}})
            EXPECT_EQ(Grant(strPath, pszAccount, nProtected, bKeepOld), DWORD(nError)) << strPath << pszAccount;
    EXPECT_EQ(ScratchFolder::Read(oFolder / "file"), "x");
}
