#include "ZevrinUtils/SystemInfo.h"

#include "platform/System.h"
#include "support/ScratchFolder.h"
#include "support/Substitution.h"

#include <cstring>
#include <set>

#include <gtest/gtest.h>

namespace
{
struct
{
    std::uint32_t tNow;
    ULONGLONG nFree, nTotal;
    BOOL bAnswers;
    int nCalls;
    std::string strAsked;
    const char* pszCommandLine;
} s_o;

void Fake(SystemCalls& o)
{
    o.time = [](std::time_t*) { return static_cast<std::time_t>(s_o.tNow); };
    o.GetCommandLineA = []() WINAPI -> LPSTR { return const_cast<LPSTR>(s_o.pszCommandLine); };
    o.GetDiskFreeSpaceExA = [](LPCSTR psz, PULARGE_INTEGER pnFree, PULARGE_INTEGER pnTotal, PULARGE_INTEGER)
                                WINAPI -> BOOL {
        s_o.strAsked = psz ? psz : "null";
        pnFree->QuadPart = s_o.nFree;
        pnTotal->QuadPart = s_o.nTotal;
        return ++s_o.nCalls, s_o.bAnswers;
    };
}
}

TEST(SystemInfo, KeepsItsAnswerForTenSeconds)
{
    const Substitution<SystemCalls> oFake(&Fake);
    CSystemInfo oInfo;
    const ULONGLONG nTotal = 4000'000'000'000;
    const struct
    {
        std::uint32_t tNow;
        ULONGLONG nFree, nTotal;
        BOOL bAnswers;
        int nCalls;
        double dPercent;
        unsigned long ulMegabytes;
    } aSteps[] = {
        {1000, nTotal / 4, nTotal, FALSE, 1, -1, 99},   // nothing is kept of a failure
        {1000, nTotal / 4, nTotal, TRUE, 2, 25, 953674},
        {1009, nTotal / 2, nTotal, TRUE, 2, 25, 953674},
        {500, nTotal / 2, nTotal, TRUE, 2, 25, 953674},   // set back
        {1010, nTotal / 2, nTotal, TRUE, 3, 50, 1907348},
        {1020, 0x100000007 * 1048576, 0, TRUE, 4, -1, 7},   // a disk without a size
        {0x7fffffff, nTotal, nTotal, TRUE, 5, 100, 3814697},
        {0x80000005, 0, nTotal, TRUE, 5, 100, 3814697},   // across the end of 31 bits
    };
    for (const auto& o : aSteps)
    {
        s_o.tNow = o.tNow;
        s_o.nFree = o.nFree;
        s_o.nTotal = o.nTotal;
        s_o.bAnswers = o.bAnswers;
        double dPercent = -1;
        unsigned long ulMegabytes = 99;
        EXPECT_EQ(oInfo.GetFreeDiskSpacePercent(dPercent, ulMegabytes), o.dPercent >= 0) << &o - aSteps;
        EXPECT_DOUBLE_EQ(dPercent, o.dPercent) << &o - aSteps;
        EXPECT_EQ(ulMegabytes, o.ulMegabytes) << &o - aSteps;
        EXPECT_EQ(s_o.nCalls, o.nCalls) << &o - aSteps;
    }
    EXPECT_EQ(s_o.strAsked, "null");
}

TEST(SystemInfo, AnswersForTheDisk)
{
    const ScratchFolder oFolder;
    const auto oSpace = std::filesystem::space(ScratchFolder::Native(oFolder / ""));
    double dPercent = -1;
    unsigned long ulMegabytes = 0;
    CSystemInfo oInfo, oMissing;
    oInfo.SetDiskSpaceDirectory(oFolder / "");
    EXPECT_TRUE(oInfo.GetFreeDiskSpacePercent(dPercent, ulMegabytes));
    EXPECT_NEAR(dPercent, 100.0 * static_cast<double>(oSpace.available) / static_cast<double>(oSpace.capacity), 1);
    EXPECT_NEAR(static_cast<double>(ulMegabytes), static_cast<double>(oSpace.available) / 1048576, 2000);
    oMissing.SetDiskSpaceDirectory(oFolder / "missing\\one");
    EXPECT_FALSE(oMissing.GetFreeDiskSpacePercent(dPercent, ulMegabytes));
}

TEST(SystemInfo, GivesTheSystemsTextOrTheNumber)
{
    std::string sUnknown;
    CSystemInfo::GetFormatedMessageForWin32ErrCode(0xDEADBEEF, sUnknown);
    EXPECT_EQ(sUnknown, "Win32 error code: -559038737");
    std::set<std::string> oTexts;
    for (const unsigned long nError : {2, 3, 5, 32, 112})
    {
        std::string sText;
        CSystemInfo::GetFormatedMessageForWin32ErrCode(nError, sText);
        EXPECT_EQ(sText.find("\r\n"), sText.size() - 2) << sText;
        oTexts.insert(sText);
    }
    EXPECT_GE(oTexts.size(), 4u);   // on Linux 2 and 3 are the same
}

TEST(SystemInfo, LooksForTheManagerInTheWholeCommandLine)
{
    const std::string strOwn = System().GetCommandLineA();
    EXPECT_NE(strOwn.find("config_tests"), std::string::npos) << strOwn;
    EXPECT_FALSE(CSystemInfo::IsExecutionInsideVDManager());
    const Substitution<SystemCalls> oFake(&Fake);
    for (const char* pszInside : {"C:\\VdManager.EXE", "host --of xvdmanager.exex"})
        EXPECT_TRUE((s_o.pszCommandLine = pszInside, CSystemInfo::IsExecutionInsideVDManager())) << pszInside;
    s_o.pszCommandLine = "vdmanager .exe";
    EXPECT_FALSE(CSystemInfo::IsExecutionInsideVDManager());
}
