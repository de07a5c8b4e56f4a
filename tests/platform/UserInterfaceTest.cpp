// The contract of windows, their messages and the message box, the same on every target.
#include "platform/UserInterface.h"

#include "Environment.h"
#include "OwnWindow.h"

#include <cstdint>
#include <string>

#include <gtest/gtest.h>

namespace
{
std::string s_strMessages;   // of the procedure below

LRESULT CALLBACK NoteMessage(HWND, UINT nMessage, WPARAM wParam, LPARAM lParam)
{
    s_strMessages += std::to_string(nMessage) + ' ' + std::to_string(wParam) + ' ' + std::to_string(lParam) + ';';
    return nMessage == 0x400 ? 7 : 0;
}

const auto nOfNoting = reinterpret_cast<LONG_PTR>(&NoteMessage);
const HANDLE hValue = reinterpret_cast<HANDLE>(std::uintptr_t{0x1234});

std::string CaptionOf(HWND hWindow, int nSize)
{
    char achText[] = "##########";
    const int nLength = UserInterface().GetWindowTextA(hWindow, achText, nSize);
    EXPECT_EQ(achText[nSize], '#');
    return std::string(achText, achText + nLength + 1);   // with what ends it
}
}

TEST(Windows, HaveACaptionAProcedureAndProperties)
{
    const auto& o = UserInterface();
    {
        const OwnWindow oWindow("Caption");
        const HWND hWindow = oWindow.Get();
        ASSERT_NE(hWindow, nullptr);
        EXPECT_EQ(o.GetWindowTextLengthA(hWindow), 7);
        EXPECT_EQ(CaptionOf(hWindow, 8) + CaptionOf(hWindow, 4), std::string("Caption\0Cap\0", 12));

        EXPECT_EQ(o.GetPropA(hWindow, "name"), nullptr);
        EXPECT_TRUE(o.SetPropA(hWindow, "name", hValue));
        EXPECT_EQ(o.GetPropA(hWindow, "name"), hValue);
        EXPECT_EQ(o.GetPropA(hWindow, "other"), nullptr);
        EXPECT_EQ(o.RemovePropA(hWindow, "name"), hValue);
        EXPECT_EQ(o.RemovePropA(hWindow, "name"), nullptr);

        const LONG_PTR nBefore = o.SetWindowLongPtrA(hWindow, GWLP_WNDPROC, nOfNoting);
        EXPECT_NE(nBefore, 0);
        EXPECT_EQ(o.SendMessageA(hWindow, 0x400, 1, -2), 7);
        EXPECT_EQ(o.CallWindowProcA(reinterpret_cast<WNDPROC>(nBefore), hWindow, 0x400, 3, 4), 0);
        EXPECT_EQ(o.CallWindowProcA(&NoteMessage, hWindow, 0x400, 5, 6), 7);
        EXPECT_EQ(o.DefWindowProcA(hWindow, 0x400, 1, 2), 0);
    }
    EXPECT_EQ(s_strMessages.substr(0, 20), "1024 1 -2;1024 5 6;" + s_strMessages.substr(19, 1));
    EXPECT_NE(s_strMessages.find(std::to_string(WM_NCDESTROY) + " 0 0;"), std::string::npos);   // its end
}

TEST(Windows, ThatAreNotThereFail)
{
    const auto& o = UserInterface();
    EXPECT_EQ(o.SendMessageA(nullptr, 0x400, 0, 0), 0);
    EXPECT_EQ(o.GetWindowTextLengthA(nullptr), 0);
    EXPECT_EQ(CaptionOf(nullptr, 1), std::string(1, '\0'));
    EXPECT_EQ(o.SetWindowLongPtrA(nullptr, GWLP_WNDPROC, nOfNoting), 0);
    EXPECT_EQ(o.SetPropA(nullptr, "name", hValue), FALSE);
    EXPECT_EQ(o.GetPropA(nullptr, "name"), nullptr);
    EXPECT_EQ(o.RemovePropA(nullptr, "name"), nullptr);
    EXPECT_EQ(o.DefWindowProcA(nullptr, 0x400, 0, 0), 0);
}

TEST(Windows, AreNotShownWithoutADisplay)
{
    if (!bShowsNothingWithoutDisplay)
        GTEST_SKIP() << "a message that nobody sees waits for its user here";
    for (const char* pszName : {"DISPLAY", "WAYLAND_DISPLAY"})
        Unset(pszName);
    EXPECT_EQ(UserInterface().MessageBoxA(nullptr, "text", "caption", MB_OK | MB_ICONHAND), 0);
}
