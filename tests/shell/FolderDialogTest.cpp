// The folder dialog asks, remembers and answers over a shell of the test's own.
#include "ZevrinUtils/FolderDialog.h"

#include "platform/Files.h"
#include "platform/Shell.h"
#include "platform/UserInterface.h"
#include "shell/LastFolder.h"
#include "support/Substitution.h"

#include "Native.h"
#include "Own.h"

#include <cstdint>
#include <cstring>
#include <functional>

#include <gtest/gtest.h>

namespace
{
std::function<const ITEMIDLIST*(BROWSEINFOA&)> s_browse;
std::string s_strSeen;   // by the shell and the windows
HWND s_hWindow;

// An item of this shell is its path.
const ITEMIDLIST* Item(const char* pszPath)
{
    return reinterpret_cast<const ITEMIDLIST*>(pszPath);
}

int Tell(const BROWSEINFOA& oInfo, UINT nMessage, const void* pValue = nullptr)
{
    return oInfo.lpfn(s_hWindow, nMessage, reinterpret_cast<LPARAM>(pValue), oInfo.lParam);
}

LRESULT CALLBACK Own(HWND, UINT nMessage, WPARAM, LPARAM)
{
    s_strSeen += "own " + std::to_string(nMessage) + ';';
    return 5;
}

// A shell without a display, and a window that nobody sees: the browser of a run is a function of the test's.
class FolderDialog : public testing::Test
{
protected:
    FolderDialog()
    {
        s_strSeen.clear();
        g_strLastFolder.Empty();
        s_hWindow = OpenOwnWindow();
        s_browse = [](BROWSEINFOA&) { return nullptr; };
    }

    const Substitution<ShellCalls> m_oShell{[](ShellCalls& oCalls) {
        oCalls.SHBrowseForFolderA = [](BROWSEINFOA* pInfo) WINAPI {
            char szFlags[16];
            std::snprintf(szFlags, sizeof szFlags, "%x", static_cast<unsigned>(pInfo->ulFlags));
            s_strSeen += std::string("browse ") + pInfo->lpszTitle + ' ' + szFlags + ';';
            return const_cast<ITEMIDLIST*>(s_browse(*pInfo));
        };
        oCalls.SHGetPathFromIDListA = [](const ITEMIDLIST* pItem, LPSTR pszPath) WINAPI -> BOOL {
            std::strcpy(pszPath, pItem ? reinterpret_cast<const char*>(pItem) : "");
            return pItem != nullptr;
        };
    }};
    const Substitution<UserInterfaceCalls> m_oWindows{[](UserInterfaceCalls& oCalls) {
        oCalls.SendMessageA = [](HWND, UINT nMessage, WPARAM wParam, LPARAM lParam) WINAPI {
            const bool bText = nMessage == BFFM_SETSELECTIONA;
            s_strSeen += "send " + std::to_string(nMessage) + ' ' + std::to_string(wParam) + ' ' +
                         (bText ? reinterpret_cast<const char*>(lParam) : std::to_string(lParam)) + ';';
            return LRESULT{0};
        };
        oCalls.MessageBoxA = [](HWND hOwner, LPCSTR pszText, LPCSTR pszCaption, UINT nStyle) WINAPI {
            EXPECT_EQ(hOwner, s_hWindow);
            s_strSeen += std::string(pszText) + '|' + pszCaption + '|' + std::to_string(nStyle) + ';';
            return 1;
        };
    }};
    const Substitution<FileCalls> m_oFiles{&FileCalls::GetFileAttributesA, [](LPCSTR psz) WINAPI -> DWORD {
                                               return std::strstr(psz, "missing") ? INVALID_FILE_ATTRIBUTES : 1;
                                           }};
    CWnd m_oParent;
    CFolderDialog m_oDialog{&m_oParent};
};

const ITEMIDLIST* const s_pPicked = Item("C:\\picked");
const std::string s_strMissing = "The folder %missing%s could not be found.\r\nPlease check the path and folder name "
                                 "or select an existing folder, then try again.|Caption|16;";
}

TEST_F(FolderDialog, EachEntryPointBrowsesInItsOwnWay)
{
    EXPECT_EQ(m_oDialog.GetFolder(), "");
    s_browse = [](BROWSEINFOA& oInfo) {
        Tell(oInfo, BFFM_INITIALIZED);
        std::strcpy(oInfo.pszDisplayName, "shown");
        EXPECT_EQ(Tell(oInfo, 4, "x"), 0);
        return s_pPicked;
    };
    EXPECT_EQ(m_oDialog.GetFolder("t"), "C:\\picked");
    EXPECT_EQ(m_oDialog.GetFolder("t", "C:\\start"), "C:\\picked");
    EXPECT_EQ(m_oDialog.BrowseForFolder("b"), s_pPicked);
    m_oDialog.BrowseForFolder("r", CString(""));
    m_oDialog.BrowseForFolder("f", 3, nullptr, 1);
    EXPECT_EQ(m_oDialog.GetDisplayName(), "shown");
    EXPECT_EQ(s_strSeen, "browse Pick a folder, dude! 5;browse t 75;browse t 75;send 1126 1 C:\\start;browse b 75;send "
                         "1126 1 C:\\start;browse r 8055;send 1126 1 C:\\start;browse f 3;send 1126 1 C:\\start;");
    EXPECT_EQ(g_strLastFolder, "");
}

TEST_F(FolderDialog, GetValidFolder_HonoursTypedPathsAndRemembersTheLastFolder)
{
    // The acts: o the browser opens, s selects an item, t types a path that the shell does not know.
    const auto act = [](const BROWSEINFOA& oInfo, const std::string& strAct) {
        const char* const psz = strAct.c_str() + 1;
        EXPECT_TRUE(strAct[0] != 'o' || Tell(oInfo, BFFM_INITIALIZED) == 0);
        EXPECT_TRUE(strAct[0] != 's' || Tell(oInfo, BFFM_SELCHANGED, psz) == 0);
        EXPECT_TRUE(strAct[0] != 't' || Tell(oInfo, BFFM_VALIDATEFAILEDA, psz) == (*psz == '%'));
    };
    struct Row
    {
        std::vector<std::string> oActs;
        const char *pszChosen, *pszAnswer, *pszLast;
        std::string strSeen;
    };
    const Row aRows[] = {
        {{}, nullptr, "", "\\", ""},
        {{"o"}, nullptr, "", "\\", "send 1126 1 \\;"},
        {{"sC:\\Temp"}, "C:\\Temp", "C:\\Temp", "C:\\Temp\\", ""},
        {{"o"}, nullptr, "", "C:\\Temp\\", "send 1126 1 C:\\Temp\\;"},
        {{"sC:\\"}, "C:\\", "C:\\", "C:\\", ""},
        {{"tC:\\a file"}, nullptr, "C:\\a file", "C:\\a file\\", ""},
        {{"t%missing%s"}, nullptr, "", "C:\\a file\\", s_strMissing},
        {{"t%missing%s", "sD:\\clicked"}, "D:\\clicked", "D:\\clicked", "D:\\clicked\\", s_strMissing}};
    for (const Row& o : aRows)
    {
        s_browse = [&](BROWSEINFOA& oInfo) {
            s_strSeen.clear();
            for (const auto& strAct : o.oActs)
                act(oInfo, strAct);
            return o.pszChosen ? Item(o.pszChosen) : nullptr;
        };
        EXPECT_EQ(m_oDialog.GetValidFolder("t", true), o.pszAnswer);
        EXPECT_EQ(g_strLastFolder, o.pszLast);
        EXPECT_EQ(s_strSeen, o.strSeen);
    }
    // Typed, but asked for by an operation that looks at the item alone.
    s_browse = [&](BROWSEINFOA& oInfo) { return act(oInfo, "tC:\\a file"), nullptr; };
    EXPECT_EQ(m_oDialog.GetFolder("t"), "");
}

TEST_F(FolderDialog, TheBrowserIsTheObjectsWindowUntilItsEnd)
{
    static const auto* const s_pFar = reinterpret_cast<const ITEMIDLIST*>(UINTPTR_MAX / 3);   // as wide as any
    struct Hooked : CFolderDialog
    {
        using CFolderDialog::CFolderDialog;
        void OnSelChanged(const ITEMIDLIST* pItem) override
        {
            EXPECT_EQ(pItem, s_pFar);
            EnableOK(0);
            SetOKText(nullptr);
        }
    } oDialog(&m_oParent);
    const auto& oNative = PlatformService<UserInterfaceCalls>::s_oNative;
    const HWND ahWindows[] = {s_hWindow, OpenOwnWindow()};
    const auto nOwn = reinterpret_cast<LONG_PTR>(&Own);
    s_browse = [&](BROWSEINFOA& oInfo) {
        oNative.SetWindowLongPtrA(s_hWindow, GWLP_WNDPROC, nOwn);
        Tell(oInfo, BFFM_SELCHANGED, s_pFar);
        EXPECT_EQ(oDialog.m_hWnd, s_hWindow);
        EXPECT_EQ(oNative.SendMessageA(s_hWindow, 1024, 0, 0), 5);
        return nullptr;
    };
    for (const HWND hWindow : ahWindows)
    {
        s_hWindow = hWindow;
        s_strSeen.clear();
        EXPECT_EQ(oDialog.BrowseForFolder("t"), nullptr);
        EXPECT_EQ(s_strSeen, "browse t 75;send 1125 0 0;send 1129 0 0;own 1024;");
    }
    EXPECT_EQ(oNative.SetWindowLongPtrA(ahWindows[0], GWLP_WNDPROC, nOwn), nOwn);   // let go for the second one
    CloseOwnWindow(ahWindows[1]);
    EXPECT_EQ(oDialog.m_hWnd, nullptr);
}

// The system's own shell, as far as it needs no display.
TEST(OwnShell, FindsAnItemByItsPath)
{
    struct Dialog : CFolderDialog
    {
        using CFolderDialog::CFolderDialog;
        using CFolderDialog::ConvertPathToLpItemIdList;
    };
    CWnd oParent;
    const char* const pszFolder = bWindows ? "C:\\windows\\system32" : "/usr/share";
    const ITEMIDLIST* const pItem = Dialog(&oParent).ConvertPathToLpItemIdList(pszFolder);
    EXPECT_STREQ(CFolderDialog::GetPathName(pItem), pszFolder);
    CInterfacePtr<IShellFolder> pDesktop;
    ShellService().SHGetDesktopFolder(&pDesktop);
    EXPECT_EQ(CFolderDialog::GetDisplayNameOf(pDesktop.operator->(), pItem, 0x8000), pszFolder);
    CFolderDialog::FreePIDL(pItem);
}
