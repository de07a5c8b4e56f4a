// The handlers of Ctrl-C. They run amid any other call, so they do only what is safe there.
#include "Interrupt.h"

#include "../System.h"

#include <atomic>
#include <cerrno>
#include <csignal>

namespace
{
std::atomic<bool> s_bInterrupted = false;
std::atomic<const char*> s_pszUnfinished = nullptr;
std::atomic<std::FILE*> s_pUnfinished = nullptr;
static_assert(std::atomic<bool>::is_always_lock_free && std::atomic<const char*>::is_always_lock_free);

void OnSecondSignal(int nSignal)
{
    if (const char* const pszPath = s_pszUnfinished)
        RemoveInHandler(pszPath, s_pUnfinished);
    std::signal(nSignal, SIG_DFL);
    std::raise(nSignal);
}

void OnFirstSignal(int nSignal)
{
    const int nError = errno;   // of the call that is interrupted
    s_bInterrupted = true;
    std::signal(nSignal, &OnSecondSignal);
    errno = nError;
}
}

void WatchForInterrupt(int nSignal)
{
    std::signal(nSignal, &OnFirstSignal);
}

bool IsInterrupted()
{
    return s_bInterrupted;
}

void RemoveAtInterrupt(const char* pszPath, std::FILE* pFile)
{
    s_pUnfinished = pFile;
    s_pszUnfinished = pszPath;
}
