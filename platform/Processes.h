// Processes, and the messages that a thread dispatches while it waits for one.
#pragma once

#include "platform/Service.h"
#include "win32/Kernel.h"

struct ProcessCalls
{
    // Starts a process, with handles to it and to its thread that the caller closes. Without an application the
    // command line begins with it and the system looks for it; the line is split by the rules of Windows. Linux
    // has an xcopy for where there is none: folders only, with the switches I, S, O and Q.
    PLATFORM_CALL(CreateProcessA);
    // The exit code of a process; STILL_ACTIVE while it runs.
    PLATFORM_CALL(GetExitCodeProcess);
    // Blocks the calling thread for a time, in milliseconds.
    PLATFORM_CALL(Sleep);

    // Takes the calling thread's next message, if there is one. Linux has no such messages.
    PLATFORM_CALL(PeekMessageA);
    // Derives a typed character, as a message of its own, from a key.
    PLATFORM_CALL(TranslateMessage);
    // Hands a message to its window.
    PLATFORM_CALL(DispatchMessageA);
};

inline const ProcessCalls& Processes() noexcept
{
    return PlatformService<ProcessCalls>::InForce();
}
