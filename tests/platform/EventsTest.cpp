// The contract of events and waits, the same on every target.
#include "platform/Errors.h"
#include "platform/Threads.h"

#include <chrono>
#include <thread>

#include <gtest/gtest.h>

namespace
{
HANDLE MakeEvent(bool bSet = false)
{
    const HANDLE hEvent = Threads().CreateEventA(nullptr, TRUE, bSet, nullptr);
    EXPECT_NE(hEvent, nullptr);
    return hEvent;
}

DWORD Ask(HANDLE hObject)
{
    return Threads().WaitForSingleObject(hObject, 0);
}
}

TEST(Events, StaySetUntilTheyAreReset)
{
    const HANDLE hEvent = MakeEvent();
    EXPECT_EQ(Ask(hEvent), WAIT_TIMEOUT);
    EXPECT_TRUE(Threads().SetEvent(hEvent));
    EXPECT_EQ(Ask(hEvent), WAIT_OBJECT_0);
    EXPECT_EQ(Ask(hEvent), WAIT_OBJECT_0);
    EXPECT_TRUE(Threads().ResetEvent(hEvent));
    EXPECT_EQ(Ask(hEvent), WAIT_TIMEOUT);
    EXPECT_TRUE(Threads().CloseHandle(hEvent));

    const HANDLE hSet = MakeEvent(true);
    EXPECT_EQ(Ask(hSet), WAIT_OBJECT_0);
    Threads().CloseHandle(hSet);
}

TEST(Waits, ReportTheLowestIndexThatIsSet)
{
    const HANDLE ah[] = {MakeEvent(), MakeEvent(), MakeEvent()};
    const auto ask = [&] { return Threads().WaitForMultipleObjects(3, ah, FALSE, 0); };
    EXPECT_EQ(ask(), WAIT_TIMEOUT);
    for (const DWORD nIndex : {2u, 1u, 0u})
    {
        Threads().SetEvent(ah[nIndex]);
        EXPECT_EQ(ask(), WAIT_OBJECT_0 + nIndex);
    }
    for (const HANDLE h : ah)
        Threads().CloseHandle(h);
}

TEST(Waits, WakeWhenAnotherThreadSetsAnEvent)
{
    const HANDLE ah[] = {MakeEvent(), MakeEvent()};
    const DWORD anLimits[] = {INFINITE, 60000};
    for (const DWORD nLimit : anLimits)
    {
        std::thread oSetter([&] {
            std::this_thread::sleep_for(std::chrono::milliseconds(20));
            Threads().SetEvent(ah[1]);
        });
        EXPECT_EQ(Threads().WaitForMultipleObjects(2, ah, FALSE, nLimit), WAIT_OBJECT_0 + 1);
        oSetter.join();
        Threads().ResetEvent(ah[1]);
    }
    for (const HANDLE h : ah)
        Threads().CloseHandle(h);
}

TEST(Waits, EndWhenTheTimeIsUp)
{
    const HANDLE hEvent = MakeEvent();
    const auto nStart = std::chrono::steady_clock::now();
    EXPECT_EQ(Threads().WaitForSingleObject(hEvent, 50), WAIT_TIMEOUT);
    EXPECT_GE(std::chrono::steady_clock::now() - nStart, std::chrono::milliseconds(45));
    Threads().CloseHandle(hEvent);
}

TEST(Handles, NullAndClosedOnesFailAtOnce)
{
    const HANDLE hGood = MakeEvent(true);
    const HANDLE hClosed = MakeEvent();
    ASSERT_TRUE(Threads().CloseHandle(hClosed));

    const auto failsAsInvalid = [](auto call, auto failure) {
        Errors().SetLastError(0);
        EXPECT_EQ(call(), failure);
        EXPECT_EQ(Errors().GetLastError(), DWORD{ERROR_INVALID_HANDLE});
    };
    for (const HANDLE hBad : {HANDLE{}, hClosed})
    {
        const HANDLE ah[] = {hGood, hBad};
        failsAsInvalid([&] { return Threads().WaitForSingleObject(hBad, INFINITE); }, WAIT_FAILED);
        failsAsInvalid([&] { return Threads().WaitForMultipleObjects(2, ah, FALSE, INFINITE); }, WAIT_FAILED);
        failsAsInvalid([&] { return Threads().SetEvent(hBad); }, FALSE);
        failsAsInvalid([&] { return Threads().ResetEvent(hBad); }, FALSE);
        failsAsInvalid([&] { return Threads().CloseHandle(hBad); }, FALSE);
    }
    Threads().CloseHandle(hGood);
}
