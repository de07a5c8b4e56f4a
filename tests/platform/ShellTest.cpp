// The contract of the shell's items and their texts, and of its browser without a display.
#include "platform/Shell.h"
#include "ZevrinUtils/framework/InterfacePtr.h"

#include "Environment.h"

#include <cstring>
#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace
{
constexpr bool bShellOfWindows = sizeof(wchar_t) == 2;

// A list that the caller frees; null if the path leads nowhere.
ITEMIDLIST* Parse(const char* pszPath)
{
    std::vector<WCHAR> aPath(pszPath, pszPath + std::strlen(pszPath) + 1);
    CInterfacePtr<IShellFolder> pDesktop;
    EXPECT_TRUE(SUCCEEDED(ShellService().SHGetDesktopFolder(&pDesktop)));
    ITEMIDLIST* pItem = nullptr;
    pDesktop->ParseDisplayName(nullptr, nullptr, aPath.data(), nullptr, &pItem, nullptr);
    return pItem;
}
}

TEST(ShellItems, NameWhatLiesAtAPathAndAreOfTheShellsMemory)
{
    CInterfacePtr<IMalloc> pMalloc;
    CInterfacePtr<IShellFolder> pDesktop;
    ASSERT_TRUE(SUCCEEDED(ShellService().SHGetMalloc(&pMalloc)));
    ASSERT_TRUE(SUCCEEDED(ShellService().SHGetDesktopFolder(&pDesktop)));
    const char* const pszFolder = bShellOfWindows ? "C:\\windows\\system32" : "/usr/share";
    ITEMIDLIST* const pItem = Parse(pszFolder);
    ASSERT_NE(pItem, nullptr);
    char achPath[260] = "before";
    EXPECT_TRUE(ShellService().SHGetPathFromIDListA(pItem, achPath));
    EXPECT_STREQ(achPath, pszFolder);
    STRRET oName{};
    oName.uType = STRRET_CSTR;
    EXPECT_TRUE(SUCCEEDED(pDesktop->GetDisplayNameOf(pItem, SHGDN_FORPARSING, &oName)));
    EXPECT_TRUE(SUCCEEDED(ShellService().StrRetToBufA(&oName, pItem, achPath, sizeof achPath)));
    EXPECT_STREQ(achPath, pszFolder);
    for (const auto& [nSize, pszCut] : {std::pair{12u, "text"}, {5, "text"}, {4, "tex"}, {1, ""}})
    {
        oName.uType = STRRET_CSTR;
        std::strcpy(oName.cStr, "text");
        char achCut[] = "###########";
        ShellService().StrRetToBufA(&oName, pItem, achCut, nSize);
        EXPECT_STREQ(achCut, pszCut);
        EXPECT_EQ(achCut[6], '#');
    }
    pMalloc->Free(pItem);
    pMalloc->Free(nullptr);

    EXPECT_EQ(Parse(bShellOfWindows ? "C:\\no such" : "/no such"), nullptr);
    EXPECT_FALSE(ShellService().SHGetPathFromIDListA(nullptr, achPath));
    EXPECT_STREQ(achPath, "");
}

TEST(ShellBrowser, IsCanceledWithoutADisplay)
{
    if (!bShowsNothingWithoutDisplay)
        GTEST_SKIP() << "a browser that nobody sees waits for its user here";
    for (const char* pszName : {"DISPLAY", "WAYLAND_DISPLAY"})
        Unset(pszName);
    BROWSEINFOA oInfo{};
    oInfo.lpfn = [](HWND, UINT, LPARAM, LPARAM) CALLBACK -> int { return ADD_FAILURE(), 0; };
    EXPECT_EQ(ShellService().SHBrowseForFolderA(&oInfo), nullptr);
}
