// The contract of giving up a handle, the same on every target.
#include "platform/Handles.h"
#include "platform/Files.h"
#include "platform/Threads.h"
#include "support/ErrorOf.h"
#include "support/ScratchFolder.h"

#include <gtest/gtest.h>

namespace
{
DWORD Close(HANDLE hObject)
{
    return ErrorOf(Handles().CloseHandle(hObject));
}
}

TEST(Handles, AreGivenUpOnce)
{
    const ScratchFolder oFolder;
    const HANDLE ah[] = {Threads().CreateEventA(nullptr, TRUE, FALSE, nullptr),
                         Threads().CreateThread(
                             nullptr, 0, [](LPVOID) WINAPI -> DWORD { return 0; }, nullptr, 0, nullptr),
                         Files().CreateFileA((oFolder / "file").c_str(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS,
                                             FILE_ATTRIBUTE_NORMAL, nullptr)};
    for (const HANDLE hObject : ah)
    {
        EXPECT_EQ(Close(hObject), 0u);
        EXPECT_EQ(Close(hObject), DWORD{ERROR_INVALID_HANDLE});
    }
    EXPECT_EQ(Close(nullptr), DWORD{ERROR_INVALID_HANDLE});
    EXPECT_EQ(ErrorOf(Files().DeleteFileA((oFolder / "file").c_str())), 0u);   // nobody has it open any more
}
