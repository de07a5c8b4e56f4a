// The contract of windows, their messages and the message box, the same on every target.
#include "platform/UserInterface.h"

#include "Own.h"

#include <string>

#include <gtest/gtest.h>

namespace
{
std::string s_strMessages;   // of the procedure below

LRESULT CALLBACK NoteMessage(HWND, UINT nMessage, WPARAM wParam, LPARAM lParam)
{
    s_strMessages += std::to_string(nMessage) + ' ' + std::to_string(wParam) + ' ' + std::to_string(lParam) + ';';
    return 7;
}

const auto nOfNoting = reinterpret_cast<LONG_PTR>(&NoteMessage);
const HANDLE hValue = &s_strMessages;
constexpr UINT nOwnMessage = 0x400;

// With what ends it, and the first byte behind the buffer.
std::string CaptionOf(HWND hWindow, int nSize)
{
    char achText[] = "##########";
    const int nLength = UserInterface().GetWindowTextA(hWindow, achText, nSize);
    return std::string(achText, achText + nLength + 1) + achText[nSize];
}
}

TEST(Windows, HaveACaptionAProcedureAndProperties)
{
    const auto& o = UserInterface();
    const HWND hWindow = OpenOwnWindow();
    ASSERT_NE(hWindow, nullptr);
    EXPECT_EQ(o.GetWindowTextLengthA(hWindow), 7);
    EXPECT_EQ(CaptionOf(hWindow, 8) + CaptionOf(hWindow, 4), std::string("Caption\0#Cap\0#", 14));

    EXPECT_EQ(o.GetPropA(hWindow, "name"), nullptr);
    EXPECT_TRUE(o.SetPropA(hWindow, "name", hValue));
    EXPECT_EQ(o.GetPropA(hWindow, "name"), hValue);
    EXPECT_EQ(o.RemovePropA(hWindow, "other"), nullptr);
    EXPECT_EQ(o.RemovePropA(hWindow, "name"), hValue);
    EXPECT_EQ(o.RemovePropA(hWindow, "name"), nullptr);

    const LONG_PTR nBefore = o.SetWindowLongPtrA(hWindow, GWLP_WNDPROC, nOfNoting);
    EXPECT_NE(nBefore, 0);
    EXPECT_EQ(o.SendMessageA(hWindow, nOwnMessage, 1, -2), 7);
    EXPECT_EQ(o.CallWindowProcA(reinterpret_cast<WNDPROC>(nBefore), hWindow, nOwnMessage, 3, 4), 0);
    EXPECT_EQ(o.CallWindowProcA(&NoteMessage, hWindow, nOwnMessage, 5, 6), 7);
    EXPECT_EQ(o.DefWindowProcA(hWindow, nOwnMessage, 1, 2), 0);
    EXPECT_EQ(s_strMessages, "1024 1 -2;1024 5 6;");
    CloseOwnWindow(hWindow);
    EXPECT_TRUE(s_strMessages.ends_with(std::to_string(WM_NCDESTROY) + " 0 0;")) << s_strMessages;   // the last one
    for (const HWND hNone : {hWindow, HWND{}})
    {
        EXPECT_EQ(o.SendMessageA(hNone, nOwnMessage, 0, 0) + o.DefWindowProcA(hNone, nOwnMessage, 0, 0), 0);
        EXPECT_EQ(o.GetWindowTextLengthA(hNone), 0);
        EXPECT_EQ(CaptionOf(hNone, 1), std::string("\0#", 2));
        EXPECT_EQ(o.SetWindowLongPtrA(hNone, GWLP_WNDPROC, nOfNoting), 0);
        EXPECT_FALSE(o.SetPropA(hNone, "name", hValue) || o.GetPropA(hNone, "name") || o.RemovePropA(hNone, "name"));
    }
}

TEST(Windows, AreNotShownWhereNoneCanBe)
{
    if (sizeof(wchar_t) == 2)
        GTEST_SKIP() << "a message that nobody sees waits for its user here";
    // The module for windows is beside the library, not beside the tests.
    EXPECT_EQ(UserInterface().MessageBoxA(nullptr, "text", "caption", MB_OK | MB_ICONHAND), 0);
}
