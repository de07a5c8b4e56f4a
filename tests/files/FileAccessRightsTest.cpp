// Access rights are given to a real file, and a failed step is named.
#include "ZevrinUtils/FileAccessRights.h"

#include "platform/AccessLists.h"
#include "support/FaultSweep.h"
#include "support/ScratchFolder.h"

#include "Native.h"

#include <gtest/gtest.h>

TEST(FileAccessRights, GiveTheAccountFullAccessAndProtectIfToldOrSayWhichStepFailed)
{
    static SECURITY_INFORMATION s_nParts;   // of the last list that was written
    constexpr DWORD nFailure = 0x20000005;
    constexpr SECURITY_INFORMATION nList = DACL_SECURITY_INFORMATION;
    const auto watch = [](AccessListCalls& o) {
        FaultSweep::Watch<&AccessListCalls::GetNamedSecurityInfoA>(o, "GetNamedSecurityInfoA", nFailure);
        FaultSweep::Watch<&AccessListCalls::ConvertStringSidToSidA>(o, "ConvertStringSidToSidA", FALSE);
        FaultSweep::Watch<&AccessListCalls::SetEntriesInAclA>(o, "SetEntriesInAclA", nFailure);
        o.SetNamedSecurityInfoA = [](LPSTR psz, SE_OBJECT_TYPE e, SECURITY_INFORMATION n, PSID pOwner, PSID pGroup,
                                     PACL p, PACL pSystem) WINAPI -> DWORD {
            if (FaultSweep::Strikes("SetNamedSecurityInfoA"))
                return nFailure;
            s_nParts = n;
            return PlatformService<AccessListCalls>::s_oNative.SetNamedSecurityInfoA(psz, e, n, pOwner, pGroup, p,
                                                                                     pSystem);
        };
    };
    for (const auto& [bAdd, bKeep, nParts] :
         {std::tuple{false, 0, nList | PROTECTED_DACL_SECURITY_INFORMATION}, {false, 1, nList}, {true, 1, nList}})
    {
        const ScratchFolder oFolder;
        const std::string strPath = oFolder / "file";
        const std::string strUpdate = strPath + ".\nPlease update permissions for the folder " + strPath +
                                      " manually.\n\n(Module: 'ZVU" + (bAdd ? "Add" : "Set") +
                                      "FileAccessRights', Error: 0x";
        const std::string strSet =
            "Failed to set full access rights of the account S-1-1-0 for the folder " + strUpdate;
        std::map<std::string, std::string> oTexts{
            {"", "before"},
            {"GetNamedSecurityInfoA", "Failed to get current permissions for the folder " + strUpdate + "20000005)"},
            {"ConvertStringSidToSidA", strSet + "0)"},
            {"SetEntriesInAclA", strSet + "20000005)"},
            {"SetNamedSecurityInfoA", strSet + "20000005)"}};
        ScratchFolder::Write(strPath, "x");
        EXPECT_FALSE(EveryoneMayAll(strPath));
        const int nCalls = FaultSweep::Over<AccessListCalls>(watch, [&, bAdd = bAdd, bKeep = bKeep] {
            CString strError("before");
            const int nResult = bAdd ? ZVUAddFileAccessRights(strPath.c_str(), "S-1-1-0", 1, strError)
                                     : ZVUSetFileAccessRights(strPath.c_str(), "S-1-1-0", 1, bKeep, strError);
            EXPECT_EQ(nResult, FaultSweep::s_strStruck.empty());
            EXPECT_EQ(strError, oTexts[FaultSweep::s_strStruck].c_str());
        });
        EXPECT_EQ(nCalls, bAdd ? 4 : 3);
        EXPECT_TRUE(EveryoneMayAll(strPath) && s_nParts == nParts);
    }
}
