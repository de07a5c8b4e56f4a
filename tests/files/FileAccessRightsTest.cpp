#include "ZevrinUtils/FileAccessRights.h"

#include "platform/AccessLists.h"
#include "support/FaultSweep.h"
#include "support/ScratchFolder.h"

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

TEST(FileAccessRights, AskForFullInheritedAccessAndProtectIfTold)
{
    const ScratchFolder oFolder;
    ScratchFolder::Write(oFolder / "file", "x");
    static std::string s_strAsked;
    const Substitution<AccessListCalls> oCapture([](AccessListCalls& o) {
        o.SetEntriesInAclA = [](ULONG n, PEXPLICIT_ACCESSA p, PACL pOld, PACL* ppNew) WINAPI -> DWORD {
            s_strAsked = std::to_string(p->grfAccessPermissions) + ' ' + std::to_string(p->grfAccessMode) + ' ' +
                         std::to_string(p->grfInheritance) + (pOld ? " old " : " new ");
            return PlatformService<AccessListCalls>::s_oNative.SetEntriesInAclA(n, p, pOld, ppNew);
        };
        o.SetNamedSecurityInfoA = [](LPSTR, SE_OBJECT_TYPE, SECURITY_INFORMATION nParts, PSID, PSID, PACL, PACL)
                                      WINAPI -> DWORD { return s_strAsked += std::to_string(nParts), ERROR_SUCCESS; };
    });
    CString strError;
    const std::string strPath = oFolder / "file";
    for (const auto& [bKeep, pszAsked] : {std::pair{0, "268435456 2 3 new 2147483652"}, {1, "268435456 2 3 new 4"}})
    {
        EXPECT_EQ(ZVUSetFileAccessRights(strPath.c_str(), "S-1-1-0", 1, bKeep, strError), 1);
        EXPECT_EQ(s_strAsked, pszAsked);
    }
    EXPECT_EQ(ZVUAddFileAccessRights(strPath.c_str(), "S-1-1-0", 1, strError), 1);
    EXPECT_EQ(s_strAsked, "268435456 2 3 old 4");
}
