#include "Interrupt.h"

#include <atomic>
#include <cerrno>
#include <csignal>

namespace
{
std::atomic<bool> s_bInterrupted = false;
static_assert(std::atomic<bool>::is_always_lock_free);   // as a signal's handler needs it

void OnSignal(int nSignal)
{
    const int nError = errno;   // of the call that is interrupted
    s_bInterrupted = true;
    std::signal(nSignal, SIG_DFL);
    errno = nError;
}
}

void WatchForInterrupt(int nSignal)
{
    std::signal(nSignal, &OnSignal);
}

bool IsInterrupted()
{
    return s_bInterrupted;
}
