// System information keeps its answer about the disk, and looks into the command line.
#include "ZevrinUtils/SystemInfo.h"

#include "platform/System.h"
#include "support/Substitution.h"

#include <utility>

#include <gtest/gtest.h>

namespace
{
struct Step
{
    std::uint32_t tNow;
    ULONGLONG nFree, nTotal;
    BOOL bAnswers;
    int nCalls;
    double dPercent;   // -1: there is no answer
    unsigned long ulMegabytes;
};
const Step* s_pStep;
int s_nCalls;
const char* s_pszCommandLine;

void Fake(SystemCalls& o)
{
    o.time = [](std::time_t*) { return static_cast<std::time_t>(s_pStep->tNow); };
    o.GetCommandLineA = []() WINAPI -> LPSTR { return const_cast<LPSTR>(s_pszCommandLine); };
    o.GetDiskFreeSpaceExA = [](LPCSTR psz, PULARGE_INTEGER pnFree, PULARGE_INTEGER pnTotal, PULARGE_INTEGER)
                                WINAPI -> BOOL {
        EXPECT_EQ(psz, nullptr);
        pnFree->QuadPart = s_pStep->nFree;
        pnTotal->QuadPart = s_pStep->nTotal;
        return ++s_nCalls, s_pStep->bAnswers;
    };
}
}

TEST(SystemInfo, KeepsItsAnswerForTenSeconds)
{
    const Substitution<SystemCalls> oFake(&Fake);
    CSystemInfo oInfo;
    const ULONGLONG nTotal = 4000'000'000'000;
    const Step aSteps[] = {{1000, nTotal / 4, nTotal, FALSE, 1, -1, 99},   // nothing is kept of a failure
                           {1000, nTotal / 4, nTotal, TRUE, 2, 25, 953674},
                           {1009, nTotal / 2, nTotal, TRUE, 2, 25, 953674},
                           {500, nTotal / 2, nTotal, TRUE, 2, 25, 953674},   // set back
                           {1010, nTotal / 2, nTotal, TRUE, 3, 50, 1907348},
                           {1020, 0x100000007 * 1048576, 0, TRUE, 4, -1, 7},   // a disk without a size
                           {0x7fffffff, nTotal, nTotal, TRUE, 5, 100, 3814697},
                           {0x80000005, 0, nTotal, TRUE, 5, 100, 3814697}};   // across the end of 31 bits
    for (const Step& o : aSteps)
    {
        SCOPED_TRACE(&o - aSteps);
        s_pStep = &o;
        double dPercent = -1;
        unsigned long ulMegabytes = 99;
        EXPECT_EQ(oInfo.GetFreeDiskSpacePercent(dPercent, ulMegabytes), o.dPercent >= 0);
        EXPECT_DOUBLE_EQ(dPercent, o.dPercent);
        EXPECT_EQ(ulMegabytes, o.ulMegabytes);
        EXPECT_EQ(s_nCalls, o.nCalls);
    }
}

TEST(SystemInfo, LooksForTheManagerAnywhereInTheCommandLine)
{
    const Substitution<SystemCalls> oFake(&Fake);
    for (const auto& [pszLine, bInside] :
         {std::pair{"C:\\VdManager.EXE", true}, {"host --of xvdmanager.exex", true}, {"vdmanager .exe", false}})
    {
        s_pszCommandLine = pszLine;
        EXPECT_EQ(CSystemInfo::IsExecutionInsideVDManager(), bInside) << pszLine;
    }
}
