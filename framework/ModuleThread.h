// Threads that run this module's own code.
#pragma once

#include "platform/Threads.h"

// Starts a thread that runs at once, with default security and stack size. Null on failure. The
// handle is the caller's.
//
// The module stays loaded from then on until the process ends, whoever frees it: the thread's code lies
// in it, and a destructor that waits for the thread at unload would wait for ever, because the thread's
// end (and, on Linux, a lookup that loads a name-service module) needs the loader's lock, which the
// unloading thread holds. If the module cannot be kept, no thread is started.
//
// Takes the loader's lock for a moment: a lock held over the call stands before it in the order.
HANDLE StartModuleThread(LPTHREAD_START_ROUTINE pStart, LPVOID pArgument);
