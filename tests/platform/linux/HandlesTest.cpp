// Each operation that gives something up refuses what another service has opened, and leaves it open.
#include "platform/Handles.h"
#include "platform/Files.h"
#include "platform/Internet.h"
#include "platform/Registry.h"
#include "platform/Sockets.h"
#include "platform/Threads.h"
#include "platform/UserInterface.h"
#include "support/ScratchFolder.h"

#include "Own.h"

#include <gtest/gtest.h>

TEST(KindsOfHandles, AreToldApartWhenTheyAreGivenUp)
{
    const OwnRegistry oRegistry;
    const ScratchFolder oFolder;
    HKEY hKey = nullptr;
    Registry().RegCreateKeyExA(HKEY_LOCAL_MACHINE, "Software", 0, nullptr, 0, KEY_ALL_ACCESS, nullptr, &hKey, nullptr);
    WIN32_FIND_DATAA oFound{};
    const HWND hWindow = OpenOwnWindow();
    const SOCKET hSocket = Sockets().socket(AF_INET, SOCK_STREAM, IPPROTO_TCP);
    using Closer = bool (*)(HANDLE);
    const Closer aClosers[] = {[](HANDLE h) { return Handles().CloseHandle(h) != FALSE; },
                               [](HANDLE h) { return Files().FindClose(h) != FALSE; },
                               [](HANDLE h) { return Registry().RegCloseKey(static_cast<HKEY>(h)) == 0; },
                               [](HANDLE h) { return Internet().InternetCloseHandle(h) != FALSE; },
                               [](HANDLE) { return false; }};
    const struct
    {
        HANDLE hOpen;
        std::size_t nCloser;
    } aOpen[] = {{Threads().CreateEventA(nullptr, TRUE, FALSE, nullptr), 0},
                 {Files().FindFirstFileA((oFolder / "*.*").c_str(), &oFound), 1},
                 {hKey, 2},
                 {Internet().InternetOpenA("agent", INTERNET_OPEN_TYPE_PRECONFIG, nullptr, nullptr, 0), 3},
                 {hWindow, 4},
                 {reinterpret_cast<HANDLE>(std::uintptr_t{hSocket}), 4}};
    for (const auto& o : aOpen)
        for (std::size_t n = 0; n < std::size(aClosers); ++n)
            EXPECT_TRUE(n == o.nCloser || !aClosers[n](o.hOpen)) << "handle " << &o - aOpen << " by " << n;
    for (const auto& o : aOpen)
        EXPECT_EQ(aClosers[o.nCloser](o.hOpen), o.nCloser < 4) << "handle " << &o - aOpen;
    EXPECT_EQ(UserInterface().GetWindowTextLengthA(hWindow), 7);
    CloseOwnWindow(hWindow);
    EXPECT_EQ(Sockets().closesocket(hSocket), 0);
}
