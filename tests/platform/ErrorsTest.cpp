// The contract of the last error, the same on every target.
#include "platform/Errors.h"

#include <atomic>
#include <thread>

#include <gtest/gtest.h>

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
