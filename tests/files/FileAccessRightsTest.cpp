// Access rights are given to a real file, and a failed step is named.
#include "ZevrinUtils/FileAccessRights.h"

#include "platform/AccessLists.h"
#include "support/FaultSweep.h"
#include "support/ScratchFolder.h"

#include "NativeRights.h"

#include <gtest/gtest.h>

namespace
{
std::string SetText(const std::string& strModule, const std::string& strPath, const char* pszCode)
{
    return "Failed to set full access rights of the account S-1-1-0 for the folder " + strPath +
           ".\nPlease update permissions for the folder " + strPath + " manually.\n\n(Module: '" + strModule +
           "', Error: " + pszCode + ")";
}
}

TEST(FileAccessRights, SayWhichStepFailed)
{
    const ScratchFolder oFolder;
    ScratchFolder::Write(oFolder / "file", "x");
    const std::string strPath = oFolder / "file";
    for (const std::string strModule : {"ZVUSetFileAccessRights", "ZVUAddFileAccessRights"})
    {
        const bool bAdds = strModule == "ZVUAddFileAccessRights";
        std::map<std::string, std::string> oTexts{
            {"", "before"},
            {"GetNamedSecurityInfoA", "Failed to get current permissions for the folder " + strPath +
                                          ".\nPlease update permissions for the folder " + strPath +
                                          " manually.\n\n(Module: 'ZVUAddFileAccessRights', Error: 0x20000005)"},
            {"ConvertStringSidToSidA", SetText(strModule, strPath, "0x0")},
            {"SetEntriesInAclA", SetText(strModule, strPath, "0x20000005")},
            {"SetNamedSecurityInfoA", SetText(strModule, strPath, "0x20000005")}};
        const auto watch = [](AccessListCalls& o) {
            const DWORD nFailure = 0x20000005;
            FaultSweep::Watch<&AccessListCalls::GetNamedSecurityInfoA>(o, "GetNamedSecurityInfoA", nFailure);
            FaultSweep::Watch<&AccessListCalls::ConvertStringSidToSidA>(o, "ConvertStringSidToSidA", FALSE);
            FaultSweep::Watch<&AccessListCalls::SetEntriesInAclA>(o, "SetEntriesInAclA", nFailure);
            FaultSweep::Watch<&AccessListCalls::SetNamedSecurityInfoA>(o, "SetNamedSecurityInfoA", nFailure);
        };
        const int nCalls = FaultSweep::Over<AccessListCalls>(watch, [&] {
            CString strError("before");
            const int nResult = bAdds ? ZVUAddFileAccessRights(strPath.c_str(), "S-1-1-0", 1, strError)
                                      : ZVUSetFileAccessRights(strPath.c_str(), "S-1-1-0", 1, 0, strError);
            EXPECT_EQ(nResult, FaultSweep::s_strStruck.empty());
            EXPECT_EQ(strError, oTexts[FaultSweep::s_strStruck].c_str());
        });
        EXPECT_EQ(nCalls, bAdds ? 4 : 3);
    }
}

TEST(FileAccessRights, GiveTheAccountFullAccessAndProtectIfTold)
{
    static SECURITY_INFORMATION s_nParts;
    const Substitution<AccessListCalls> oNoted([](AccessListCalls& o) {
        o.SetNamedSecurityInfoA = [](LPSTR psz, SE_OBJECT_TYPE e, SECURITY_INFORMATION n, PSID pOwner, PSID pGroup,
                                     PACL p, PACL pSystem) WINAPI -> DWORD {
            s_nParts = n;
            return PlatformService<AccessListCalls>::s_oNative.SetNamedSecurityInfoA(psz, e, n, pOwner, pGroup, p,
                                                                                     pSystem);
        };
    });
    constexpr SECURITY_INFORMATION nList = DACL_SECURITY_INFORMATION;
    for (const auto& [bAdd, bKeep, nParts] :
         {std::tuple{0, 0, nList | PROTECTED_DACL_SECURITY_INFORMATION}, {0, 1, nList}, {1, 1, nList}})
    {
        const ScratchFolder oFolder;
        const std::string strPath = oFolder / "file";
        ScratchFolder::Write(strPath, "x");
        EXPECT_FALSE(EveryoneMayAll(strPath));
        CString strError;
        EXPECT_EQ(bAdd ? ZVUAddFileAccessRights(strPath.c_str(), "S-1-1-0", 1, strError)
                       : ZVUSetFileAccessRights(strPath.c_str(), "S-1-1-0", 1, bKeep, strError),
                  1);
        EXPECT_TRUE(EveryoneMayAll(strPath) && s_nParts == nParts);
    }
}
