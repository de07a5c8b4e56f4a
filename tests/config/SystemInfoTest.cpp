#include "ZevrinUtils/SystemInfo.h"

#include "platform/System.h"
#include "support/ScratchFolder.h"
#include "support/Substitution.h"

#include <cstring>
#include <set>

#include <gtest/gtest.h>

namespace
{
struct FakeSystem
{
    static inline std::time_t tNow;
    static inline int nCalls;
    static inline std::string strAsked;
    static inline ULONGLONG nFree, nTotal;
    static inline BOOL bAnswers;
    static inline const char* pszCommandLine;

    FakeSystem()
        : m_oFake([](SystemCalls& o) {
              o.time = [](std::time_t*) { return tNow; };
              o.GetDiskFreeSpaceExA = [](LPCSTR pszFolder, PULARGE_INTEGER pnFree, PULARGE_INTEGER pnTotal,
                                         PULARGE_INTEGER pnUnused) WINAPI -> BOOL {
                  ++nCalls;
                  strAsked = pszFolder ? pszFolder : "null";
                  pnFree->QuadPart = nFree;
                  pnTotal->QuadPart = nTotal;
                  pnUnused->QuadPart = 1;
                  return bAnswers;
              };
              o.GetCommandLineA = []() WINAPI -> LPSTR { return const_cast<LPSTR>(pszCommandLine); };
          })
    {
    }

private:
    const Substitution<SystemCalls> m_oFake;
};
}

TEST(SystemInfo, KeepsItsAnswerForTenSeconds)
{
    const FakeSystem oFake;
    CSystemInfo oInfo;
    FakeSystem::nTotal = 4000'000'000'000;
    const struct
    {
        std::uint32_t tNow;
        ULONGLONG nFree;
        BOOL bAnswers;
        int nCalls;
        double dPercent;
        unsigned long ulMegabytes;
        bool bResult;
    } aSteps[] = {
        {1000, 1000'000'000'000, FALSE, 1, -1, 99, false},   // nothing kept of a failure
        {1000, 1000'000'000'000, TRUE, 2, 25, 953674, true},
        {1009, 2000'000'000'000, TRUE, 2, 25, 953674, true},
        {500, 2000'000'000'000, TRUE, 2, 25, 953674, true},   // set back
        {1010, 2000'000'000'000, FALSE, 3, -1, 99, false},
        {1010, 2000'000'000'000, TRUE, 4, 50, 1907348, true},
        {0x7fffffff, 1048576, TRUE, 5, 100.0 * 1048576 / 4e12, 1, true},
        {0x80000005, 0, TRUE, 5, 100.0 * 1048576 / 4e12, 1, true},   // across the end of 31 bits
    };
    for (const auto& o : aSteps)
    {
        FakeSystem::tNow = static_cast<std::time_t>(o.tNow);
        FakeSystem::nFree = o.nFree;
        FakeSystem::bAnswers = o.bAnswers;
        double dPercent = -1;
        unsigned long ulMegabytes = 99;
        EXPECT_EQ(oInfo.GetFreeDiskSpacePercent(dPercent, ulMegabytes), o.bResult) << &o - aSteps;
        EXPECT_DOUBLE_EQ(dPercent, o.dPercent) << &o - aSteps;
        EXPECT_EQ(ulMegabytes, o.ulMegabytes) << &o - aSteps;
        EXPECT_EQ(FakeSystem::nCalls, o.nCalls) << &o - aSteps;
    }
    EXPECT_EQ(FakeSystem::strAsked, "null");
    EXPECT_TRUE(oInfo.SetDiskSpaceDirectory("a directory"));
    FakeSystem::tNow = static_cast<std::time_t>(0x80000010);
    FakeSystem::nTotal = 0;
    FakeSystem::nFree = 0x1'0000'0007'00000;
    double dPercent = -1;
    unsigned long ulMegabytes = 99;
    EXPECT_FALSE(oInfo.GetFreeDiskSpacePercent(dPercent, ulMegabytes));
    EXPECT_EQ(FakeSystem::strAsked, "a directory");
    EXPECT_EQ(dPercent, -1);
    EXPECT_EQ(ulMegabytes, 7u);   // of a disk without a size all the same
    std::string sDirectory;
    oInfo.GetDiskSpaceDirectory(sDirectory);
    EXPECT_EQ(sDirectory, "a directory");
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
    for (const auto& [nError, pszText] :
         {std::pair{0xDEADBEEFul, "Win32 error code: -559038737"}, {536870911ul, "Win32 error code: 536870911"}})
    {
        std::string sText;
        CSystemInfo::GetFormatedMessageForWin32ErrCode(nError, sText);
        EXPECT_EQ(sText, pszText);
    }
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
    const FakeSystem oFake;
    for (const char* pszInside : {"C:\\VdManager.EXE", "host --of xvdmanager.exex", "\"a b\" vdmanager.exe"})
        EXPECT_TRUE((FakeSystem::pszCommandLine = pszInside, CSystemInfo::IsExecutionInsideVDManager())) << pszInside;
    for (const char* pszOutside : {"", "vdmanager", "vdmanager .exe"})
        EXPECT_FALSE((FakeSystem::pszCommandLine = pszOutside, CSystemInfo::IsExecutionInsideVDManager()))
            << pszOutside;
}
