// The contract of threads, critical sections, COM starts and the last error, the same on every target.
#include "platform/Threads.h"
#include "platform/Errors.h"
#include "platform/Modules.h"

#include <atomic>
#include <thread>

#include <gtest/gtest.h>

namespace
{
struct Work
{
    HANDLE hGo = Threads().CreateEventA(nullptr, TRUE, FALSE, nullptr);
    HANDLE hDone = Threads().CreateEventA(nullptr, TRUE, FALSE, nullptr);

    static DWORD WINAPI Run(LPVOID pWork)
    {
        Threads().WaitForSingleObject(static_cast<Work*>(pWork)->hGo, INFINITE);
        Threads().SetEvent(static_cast<Work*>(pWork)->hDone);
        return 7;
    }
};
}

TEST(Threads, SetTheirHandleWhenTheyEnd)
{
    Work oWork;
    const HANDLE hThread = Threads().CreateThread(nullptr, 0, &Work::Run, &oWork, 0, nullptr);
    ASSERT_NE(hThread, nullptr);
    EXPECT_EQ(Threads().WaitForSingleObject(hThread, 0), WAIT_TIMEOUT);
    EXPECT_FALSE(Threads().SetEvent(hThread));   // a thread is no event
    Threads().SetEvent(oWork.hGo);
    EXPECT_EQ(Threads().WaitForSingleObject(hThread, INFINITE), WAIT_OBJECT_0);
    EXPECT_EQ(Threads().WaitForSingleObject(hThread, 0), WAIT_OBJECT_0);
    EXPECT_TRUE(Threads().CloseHandle(hThread));
}

TEST(Threads, RunOnWhenTheirHandleIsClosed)
{
    Work oWork;
    const HANDLE hThread = Threads().CreateThread(nullptr, 0, &Work::Run, &oWork, 0, nullptr);
    EXPECT_TRUE(Threads().CloseHandle(hThread));
    EXPECT_EQ(Threads().WaitForSingleObject(hThread, INFINITE), WAIT_FAILED);
    Threads().SetEvent(oWork.hGo);
    EXPECT_EQ(Threads().WaitForSingleObject(oWork.hDone, INFINITE), WAIT_OBJECT_0);
}

TEST(CriticalSections, LetTheHolderInAgainAndKeepOthersOut)
{
    CRITICAL_SECTION oSection;
    Threads().InitializeCriticalSection(&oSection);
    Threads().EnterCriticalSection(&oSection);
    Threads().EnterCriticalSection(&oSection);

    std::atomic<bool> bIn = false;
    std::thread oOther([&] {
        Threads().EnterCriticalSection(&oSection);
        bIn = true;
        Threads().LeaveCriticalSection(&oSection);
    });
    Threads().LeaveCriticalSection(&oSection);
    std::this_thread::sleep_for(std::chrono::milliseconds(30));
    EXPECT_FALSE(bIn);   // entered twice, left once
    Threads().LeaveCriticalSection(&oSection);
    oOther.join();
    EXPECT_TRUE(bIn);
    Threads().DeleteCriticalSection(&oSection);
}

TEST(Com, CountsItsStartsForEachThread)
{
    const auto startTwice = [] {
        EXPECT_EQ(Threads().CoInitialize(nullptr), S_OK);
        EXPECT_EQ(Threads().CoInitialize(nullptr), S_FALSE);
        Threads().CoUninitialize();
        Threads().CoUninitialize();
        EXPECT_EQ(Threads().CoInitialize(nullptr), S_OK);
        Threads().CoUninitialize();
    };
    startTwice();
    std::thread(startTwice).join();
}

TEST(LastError, BelongsToItsThread)
{
    std::atomic<int> nTurn = 0;   // handed over without a call that could set an error
    std::thread oOther([&] {
        while (nTurn != 1)
            continue;
        Errors().SetLastError(6);
        nTurn = 2;
    });
    Errors().SetLastError(5);
    nTurn = 1;
    while (nTurn != 2)
        continue;
    EXPECT_EQ(Errors().GetLastError(), 5u);
    oOther.join();
}

TEST(Modules, WhatIsNotThereIsNotLoaded)
{
    for (const char* pszName : {"no-such-module-anywhere", static_cast<const char*>(nullptr)})
        EXPECT_EQ(Modules().LoadLibraryA(pszName), nullptr);
    EXPECT_FALSE(Modules().FreeLibrary(nullptr));
}

TEST(Modules, TheProgramItselfCanBePinned)
{
    HMODULE hModule = nullptr;
    EXPECT_TRUE(Modules().GetModuleHandleExA(GET_MODULE_HANDLE_EX_FLAG_PIN | GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS,
                                             reinterpret_cast<LPCSTR>(&Work::Run), &hModule));
    EXPECT_NE(hModule, nullptr);
}
