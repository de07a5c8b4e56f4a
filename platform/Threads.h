// Critical sections, events, threads, waits and the per-thread start of COM.
#pragma once

#include "platform/Service.h"
#include "win32/Kernel.h"

struct ThreadCalls
{
    // Makes a lock that one thread at a time can hold, and that its holder may enter again.
    PLATFORM_CALL(InitializeCriticalSection);
    // Blocks without a limit until the calling thread holds the lock.
    PLATFORM_CALL(EnterCriticalSection);
    // Undoes one entry of the holding thread.
    PLATFORM_CALL(LeaveCriticalSection);
    // Releases what the lock holds. Nobody may hold it or wait for it.
    PLATFORM_CALL(DeleteCriticalSection);

    // Makes an event. The library uses manual-reset events without a name; null on failure.
    PLATFORM_CALL(CreateEventA);
    // Sets an event and wakes all that wait for it.
    PLATFORM_CALL(SetEvent);
    // Clears an event.
    PLATFORM_CALL(ResetEvent);

    // Starts a thread that runs at once; null on failure. The handle is set when the thread has ended.
    PLATFORM_CALL(CreateThread);

    // The exit code of a thread; STILL_ACTIVE while it runs.
    PLATFORM_CALL(GetExitCodeThread);
    // Ends a thread by force: on success it executes nothing more once its handle is set, and what it held
    // stays held. Linux has no such thing and says so (ERROR_NOT_SUPPORTED); the thread then runs on.
    PLATFORM_CALL(TerminateThread);

    // Waits for one handle: WAIT_OBJECT_0, WAIT_TIMEOUT, or WAIT_FAILED at once for a null or closed
    // one. A limit of 0 only asks.
    PLATFORM_CALL(WaitForSingleObject);
    // Waits for any of the handles and gives the lowest index that is set.
    PLATFORM_CALL(WaitForMultipleObjects);

    // Starts COM for the calling thread: S_OK the first time, S_FALSE (also a success) when nested.
    PLATFORM_CALL(CoInitialize);
    // Undoes one CoInitialize of the calling thread.
    PLATFORM_CALL(CoUninitialize);
};

inline const ThreadCalls& Threads() noexcept
{
    return PlatformService<ThreadCalls>::InForce();
}
