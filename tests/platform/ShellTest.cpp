// The contract of the shell's items and their texts, and of its browser where there is none.
#include "platform/Shell.h"
#include "ZevrinUtils/framework/InterfacePtr.h"

#include <cstring>
#include <string>
#include <vector>

#include <gtest/gtest.h>

TEST(ShellItems, NameWhatLiesAtAPathAndAreOfTheShellsMemory)
{
    const auto& oShell = ShellService();
    CInterfacePtr<IMalloc> pMalloc;
    CInterfacePtr<IShellFolder> pDesktop;
    ASSERT_TRUE(SUCCEEDED(oShell.SHGetMalloc(&pMalloc)) && SUCCEEDED(oShell.SHGetDesktopFolder(&pDesktop)));
    const auto parse = [&](const std::string& strPath) {
        std::vector<WCHAR> aPath(strPath.c_str(), strPath.c_str() + strPath.size() + 1);
        ITEMIDLIST* pItem = nullptr;
        pDesktop->ParseDisplayName(nullptr, nullptr, aPath.data(), nullptr, &pItem, nullptr);
        return pItem;
    };
    const std::string strFolder = sizeof(wchar_t) == 2 ? "C:\\windows\\system32" : "/usr/share";
    ITEMIDLIST* const pItem = parse(strFolder);
    ASSERT_NE(pItem, nullptr);
    EXPECT_EQ(parse(strFolder + "\\no such"), nullptr);
    char achText[260] = "before";
    EXPECT_TRUE(oShell.SHGetPathFromIDListA(pItem, achText));
    EXPECT_EQ(achText, strFolder);
    STRRET oName{};
    oName.uType = STRRET_CSTR;
    EXPECT_TRUE(SUCCEEDED(pDesktop->GetDisplayNameOf(pItem, SHGDN_FORPARSING, &oName)));
    EXPECT_TRUE(SUCCEEDED(oShell.StrRetToBufA(&oName, pItem, achText, sizeof achText)));
    EXPECT_EQ(achText, strFolder);
    for (const auto& [nSize, pszCut] : {std::pair{12u, "text"}, {5, "text"}, {4, "tex"}, {1, ""}})
    {
        oName.uType = STRRET_CSTR;
        std::strcpy(oName.cStr, "text");
        char achCut[] = "######";
        oShell.StrRetToBufA(&oName, pItem, achCut, nSize);
        EXPECT_STREQ(achCut, pszCut);
        EXPECT_EQ(achCut[5], '#');
    }
    pMalloc->Free(pItem);
    pMalloc->Free(nullptr);
    EXPECT_FALSE(oShell.SHGetPathFromIDListA(nullptr, achText));
    EXPECT_STREQ(achText, "");
}

TEST(ShellBrowser, IsCanceledWhereNoneCanBeShown)
{
    if (sizeof(wchar_t) == 2)
        GTEST_SKIP() << "a browser that nobody sees waits for its user here";
    BROWSEINFOA oInfo{};
    oInfo.lpfn = [](HWND, UINT, LPARAM, LPARAM) CALLBACK -> int { return ADD_FAILURE(), 0; };
    EXPECT_EQ(ShellService().SHBrowseForFolderA(&oInfo), nullptr);
}
