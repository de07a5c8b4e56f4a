// The contract of handles, events, waits, threads, their errors, locks and COM starts, the same on every target.
#include "platform/Threads.h"
#include "platform/Errors.h"
#include "platform/Files.h"
#include "platform/Handles.h"
#include "support/ScratchFolder.h"

#include "Native.h"

#include <array>
#include <atomic>
#include <chrono>
#include <thread>
#include <vector>

#include <gtest/gtest.h>

namespace
{
HANDLE MakeEvent(bool bSet = false)
{
    return Threads().CreateEventA(nullptr, TRUE, bSet, nullptr);
}

DWORD Ask(HANDLE hObject)
{
    return Threads().WaitForSingleObject(hObject, 0);
}

template <class Handles>
DWORD WaitForAny(const Handles& ah, DWORD nMilliseconds)
{
    return Threads().WaitForMultipleObjects(static_cast<DWORD>(ah.size()), ah.data(), FALSE, nMilliseconds);
}

// Ends when the first event is set, and sets the second before that.
DWORD WINAPI EndWhenTold(LPVOID pEvents)
{
    const auto& ahEvents = *static_cast<std::array<HANDLE, 2>*>(pEvents);
    Threads().WaitForSingleObject(ahEvents[0], INFINITE);
    Threads().SetEvent(ahEvents[1]);
    return 7;
}
}

TEST(Waits, ReportTheLowestIndexThatIsSetAndStaysSet)
{
    const std::array ah{MakeEvent(), MakeEvent(), MakeEvent(true)};
    EXPECT_EQ(WaitForAny(ah, INFINITE), WAIT_OBJECT_0 + 2);
    for (const DWORD nIndex : {1u, 0u})
    {
        EXPECT_EQ(Ask(ah[nIndex]), WAIT_TIMEOUT);
        EXPECT_TRUE(Threads().SetEvent(ah[nIndex]));
        EXPECT_EQ(WaitForAny(ah, 0), WAIT_OBJECT_0 + nIndex);
        EXPECT_EQ(WaitForAny(ah, INFINITE), WAIT_OBJECT_0 + nIndex);   // manual reset: a wait clears nothing
    }
    EXPECT_TRUE(Threads().ResetEvent(ah[0]));
    EXPECT_EQ(WaitForAny(ah, 0), WAIT_OBJECT_0 + 1);
}

TEST(Waits, WakeAllWhenAnEventIsSetAndEndWhenTheTimeIsUp)
{
    const std::array ah{MakeEvent(), MakeEvent()};
    const DWORD anLimits[] = {INFINITE, 60000};
    std::thread aoWaiting[2];
    for (int n = 0; n < 2; ++n)
        aoWaiting[n] = std::thread([&, n] { EXPECT_EQ(WaitForAny(ah, anLimits[n]), WAIT_OBJECT_0 + 1); });
    const auto nStart = std::chrono::steady_clock::now();
    EXPECT_EQ(WaitForAny(ah, 50), WAIT_TIMEOUT);
    EXPECT_GE(std::chrono::steady_clock::now() - nStart, std::chrono::milliseconds(45));
    Threads().SetEvent(ah[1]);
    for (auto& oWaiting : aoWaiting)
        oWaiting.join();
}

TEST(HandleChecks, NullAndClosedOnesFailAtOnce)
{
    const ScratchFolder oFolder;
    const std::string strFile = oFolder / "file";
    const HANDLE hGood = MakeEvent(true);
    const HANDLE ah[] = {
        MakeEvent(),
        Threads().CreateThread(
            nullptr, 0, [](LPVOID) WINAPI -> DWORD { return 0; }, nullptr, 0, nullptr),
        Files().CreateFileA(strFile.c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr)};
    for (const HANDLE hObject : ah)
        EXPECT_TRUE(Handles().CloseHandle(hObject));
    EXPECT_TRUE(Files().DeleteFileA(strFile.c_str()));   // nobody has it open any more
    const auto failsAsInvalid = [](auto call, auto failure) {
        Errors().SetLastError(0);
        EXPECT_EQ(call(), failure);
        EXPECT_EQ(Errors().GetLastError(), DWORD{ERROR_INVALID_HANDLE});
    };
    for (const HANDLE hBad : {HANDLE{}, ah[0], ah[1], ah[2]})
    {
        failsAsInvalid([&] { return Threads().WaitForSingleObject(hBad, INFINITE); }, WAIT_FAILED);
        failsAsInvalid([&] { return WaitForAny(std::array{hGood, hBad}, INFINITE); }, WAIT_FAILED);
        failsAsInvalid([&] { return Threads().SetEvent(hBad); }, FALSE);
        failsAsInvalid([&] { return Threads().ResetEvent(hBad); }, FALSE);
        failsAsInvalid([&] { return Handles().CloseHandle(hBad); }, FALSE);
    }
}

TEST(LastError, BelongsToItsThread)
{
    for (const DWORD nError : {DWORD{ERROR_NO_MORE_ITEMS}, ~DWORD{0}, DWORD{ERROR_SUCCESS}, DWORD{ERROR_BADDB}})
    {
        Errors().SetLastError(nError);
        EXPECT_EQ(Errors().GetLastError(), nError);
    }
    std::atomic<int> nStep = 0;
    std::thread oOther([&] {
        while (nStep != 1)
            continue;
        EXPECT_NE(Errors().GetLastError(), DWORD{ERROR_BADDB});
        Errors().SetLastError(ERROR_DISK_FULL);
        nStep = 2;
    });
    Errors().SetLastError(ERROR_BADDB);
    nStep = 1;
    while (nStep != 2)   // by no call that could set an error of its own
        continue;
    EXPECT_EQ(Errors().GetLastError(), DWORD{ERROR_BADDB});
    oOther.join();
}

TEST(ThreadHandles, AreSetWhenTheThreadEndsAndMayBeClosedBefore)
{
    static std::array ahEvents{MakeEvent(), MakeEvent()};   // outlives the thread that nobody waits for
    HANDLE ahThreads[2];
    for (HANDLE& hThread : ahThreads)
        ASSERT_NE(hThread = Threads().CreateThread(nullptr, 0, &EndWhenTold, &ahEvents, 0, nullptr), nullptr);
    EXPECT_EQ(Ask(ahThreads[0]), WAIT_TIMEOUT);
    DWORD nExitCode = 0;
    EXPECT_TRUE(Threads().GetExitCodeThread(ahThreads[0], &nExitCode));
    EXPECT_EQ(nExitCode, DWORD{STILL_ACTIVE});
    EXPECT_FALSE(Threads().SetEvent(ahThreads[0]));   // a thread is no event
    EXPECT_TRUE(Handles().CloseHandle(ahThreads[1]));

    Threads().SetEvent(ahEvents[0]);
    EXPECT_EQ(Threads().WaitForSingleObject(ahThreads[0], INFINITE), WAIT_OBJECT_0);
    EXPECT_EQ(Ask(ahThreads[0]), WAIT_OBJECT_0);
    EXPECT_TRUE(Threads().GetExitCodeThread(ahThreads[0], &nExitCode));
    EXPECT_EQ(nExitCode, 7u);
    EXPECT_FALSE(Threads().GetExitCodeThread(ahThreads[1], &nExitCode));
    EXPECT_EQ(Threads().WaitForSingleObject(ahEvents[1], INFINITE), WAIT_OBJECT_0);
}

TEST(ThreadHandles, TerminateTheirThreadOrAreNotSupported)
{
    const auto waitBetween = [](LPVOID pEvents) WINAPI -> DWORD {
        const auto& ah = *static_cast<std::array<HANDLE, 2>*>(pEvents);
        Threads().SetEvent(ah[1]);   // by now it is well under way
        Threads().WaitForSingleObject(ah[0], INFINITE);
        Threads().ResetEvent(ah[1]);
        return 7;
    };
    std::array ahEvents{MakeEvent(), MakeEvent()};
    const HANDLE hThread = Threads().CreateThread(nullptr, 0, waitBetween, &ahEvents, 0, nullptr);
    EXPECT_EQ(Threads().WaitForSingleObject(ahEvents[1], INFINITE), WAIT_OBJECT_0);
    const bool bTerminated = Threads().TerminateThread(hThread, 9);
    EXPECT_EQ(bTerminated ? 0 : Errors().GetLastError(), bWindows ? 0 : DWORD{ERROR_NOT_SUPPORTED});
    EXPECT_TRUE(bTerminated || Threads().SetEvent(ahEvents[0]));   // it runs on
    EXPECT_EQ(Threads().WaitForSingleObject(hThread, INFINITE), WAIT_OBJECT_0);
    DWORD nExitCode = 0;
    EXPECT_TRUE(Threads().GetExitCodeThread(hThread, &nExitCode));
    EXPECT_EQ(nExitCode, bTerminated ? 9u : 7u);
    EXPECT_EQ(Ask(ahEvents[1]), bTerminated ? DWORD{WAIT_OBJECT_0} : DWORD{WAIT_TIMEOUT});
}

// Each counts within two entries, of which one is left in between: a lock that let others in by then would lose counts.
TEST(CriticalSections, LetTheHolderInAgainAndKeepOthersOut)
{
    CRITICAL_SECTION oSection;
    Threads().InitializeCriticalSection(&oSection);
    int nCount = 0;
    std::vector<std::jthread> oThreads;
    for (int nThread = 0; nThread < 4; ++nThread)
        oThreads.emplace_back([&] {
            for (int n = 0; n < 5000; ++n)
            {
                Threads().EnterCriticalSection(&oSection);
                Threads().EnterCriticalSection(&oSection);
                const int nBefore = nCount;
                Threads().LeaveCriticalSection(&oSection);
                if (n % 100 == 0)
                    std::this_thread::yield();
                nCount = nBefore + 1;
                Threads().LeaveCriticalSection(&oSection);
            }
        });
    oThreads.clear();   // waits
    EXPECT_EQ(nCount, 4 * 5000);
    Threads().DeleteCriticalSection(&oSection);
}

TEST(Com, CountsItsStartsForEachThread)
{
    const auto startTwice = [] {
        for (const HRESULT nExpected : {S_OK, S_FALSE})
            EXPECT_EQ(Threads().CoInitialize(nullptr), nExpected);
        for (int n = 0; n < 2; ++n)
            Threads().CoUninitialize();
        EXPECT_EQ(Threads().CoInitialize(nullptr), S_OK);
    };
    startTwice();
    std::thread(startTwice).join();
}
