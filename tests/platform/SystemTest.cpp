// The contract of what the system tells of itself and of the process, the same on every target.
#include "platform/System.h"
#include "support/ErrorOf.h"
#include "support/ScratchFolder.h"

#include <cstring>
#include <set>

#include <gtest/gtest.h>

namespace
{
// The text that the system has for an error; empty if there is none.
std::string TextOfError(DWORD nError)
{
    constexpr DWORD nFlags =
        FORMAT_MESSAGE_ALLOCATE_BUFFER | FORMAT_MESSAGE_IGNORE_INSERTS | FORMAT_MESSAGE_FROM_SYSTEM;
    char* pszText = nullptr;
    const DWORD nLength =
        System().FormatMessageA(nFlags, nullptr, nError, 0x400, reinterpret_cast<LPSTR>(&pszText), 0, nullptr);
    const std::string strText = nLength ? pszText : "";
    EXPECT_EQ(strText.size(), nLength);
    EXPECT_EQ(System().LocalFree(pszText), nullptr);
    return strText;
}
}

TEST(System, HasATextWithALineEndForItsErrors)
{
    const DWORD anErrors[] = {2, 5, 32, 112, 183};
    std::set<std::string> oTexts;
    for (const DWORD nError : anErrors)
    {
        const std::string strText = TextOfError(nError);
        EXPECT_TRUE(strText.size() > 2 && strText.ends_with("\r\n")) << strText;
        oTexts.insert(strText);
    }
    EXPECT_EQ(oTexts.size(), std::size(anErrors));
    EXPECT_EQ(TextOfError(0x20000005), "");
    EXPECT_EQ(Errors().GetLastError(), DWORD{ERROR_MR_MID_NOT_FOUND});
    EXPECT_EQ(System().LocalFree(nullptr), nullptr);
}

TEST(System, TellsTheTimeTheDiskAndTheCommandLine)
{
    const time_t nBefore = std::time(nullptr);
    EXPECT_TRUE(nBefore <= System().time(nullptr) && System().time(nullptr) <= std::time(nullptr));

    const ScratchFolder oFolder;
    for (const std::string& strFolder : {std::string(), oFolder / "."})
    {
        ULARGE_INTEGER nToCaller{}, nTotal{}, nFree{};
        EXPECT_TRUE(
            System().GetDiskFreeSpaceExA(strFolder.empty() ? nullptr : strFolder.c_str(), &nToCaller, &nTotal, &nFree));
        EXPECT_TRUE(nToCaller.QuadPart <= nFree.QuadPart && nFree.QuadPart <= nTotal.QuadPart && nTotal.QuadPart > 0);
    }
    ULARGE_INTEGER nNone;
    const DWORD nError = ErrorOf(System().GetDiskFreeSpaceExA((oFolder / "no\\such").c_str(), &nNone, &nNone, &nNone));
    EXPECT_EQ(nError, DWORD{ERROR_PATH_NOT_FOUND});
    EXPECT_NE(std::strstr(System().GetCommandLineA(), "platform_tests"), nullptr);
}
