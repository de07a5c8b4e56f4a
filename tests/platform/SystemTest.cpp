// The contract of what the system tells of itself and of the process, and of identifiers, the same on every target.
#include "platform/System.h"
#include "platform/Identifiers.h"
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

std::string TextOf(UUID oId)
{
    RPC_CSTR pszText = nullptr;
    EXPECT_EQ(Identifiers().UuidToStringA(&oId, &pszText), RPC_S_OK);
    const std::string strText = reinterpret_cast<const char*>(pszText);
    EXPECT_EQ(Identifiers().RpcStringFreeA(&pszText), RPC_S_OK);
    return strText;
}
}

TEST(System, HasATextWithALineEndForItsErrors)
{
    std::set<std::string> oTexts;
    for (const DWORD nError : {2u, 5u, 32u, 112u, 183u})
    {
        const std::string strText = TextOfError(nError);
        EXPECT_TRUE(strText.size() > 2 && strText.ends_with("\r\n") && oTexts.insert(strText).second) << strText;
    }
    EXPECT_EQ(TextOfError(0x20000005), "");
    EXPECT_EQ(Errors().GetLastError(), DWORD{ERROR_MR_MID_NOT_FOUND});
}

TEST(System, TellsTheTimeTheDiskAndTheCommandLine)
{
    const time_t nBefore = std::time(nullptr);
    EXPECT_TRUE(nBefore <= System().time(nullptr) && System().time(nullptr) <= std::time(nullptr));
    EXPECT_NE(std::strstr(System().GetCommandLineA(), "platform_tests"), nullptr);

    const ScratchFolder oFolder;
    ULARGE_INTEGER nToCaller{}, nTotal{}, nFree{};
    for (const std::string& strFolder : {std::string(), oFolder / "."})
    {
        const char* const pszFolder = strFolder.empty() ? nullptr : strFolder.c_str();
        EXPECT_TRUE(System().GetDiskFreeSpaceExA(pszFolder, &nToCaller, &nTotal, &nFree));
        EXPECT_TRUE(nToCaller.QuadPart <= nFree.QuadPart && nFree.QuadPart <= nTotal.QuadPart && nTotal.QuadPart > 0);
    }
    const std::string strMissing = oFolder / "no\\such";
    EXPECT_EQ(ErrorOf(System().GetDiskFreeSpaceExA(strMissing.c_str(), &nToCaller, &nTotal, &nFree)),
              DWORD{ERROR_PATH_NOT_FOUND});
}

TEST(Identifiers, AreNewAndHaveATextOfTheirFieldsInOrder)
{
    EXPECT_EQ(TextOf({0xA1B2C3D4, 0x0506, 0x0708, {9, 10, 11, 12, 13, 14, 15, 16}}),
              "a1b2c3d4-0506-0708-090a-0b0c0d0e0f10");
    std::set<std::string> oTexts;
    for (int n = 0; n < 100; ++n)
    {
        UUID oId{};
        const RPC_STATUS nStatus = Identifiers().UuidCreate(&oId);
        EXPECT_TRUE(nStatus == RPC_S_OK || nStatus == RPC_S_UUID_LOCAL_ONLY) << nStatus;
        oTexts.insert(TextOf(oId));
    }
    EXPECT_EQ(oTexts.size(), 100u);
}
