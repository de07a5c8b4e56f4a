// The handlers of Ctrl-C. They run amid any other call, so they do only what is safe there.
#include "Interrupt.h"

#include "../System.h"

#include <atomic>
#include <cerrno>
#include <csignal>

namespace
{
std::atomic<bool> s_bInterrupted = false;
std::atomic<const std::filesystem::path*> s_pUnfinishedPath = nullptr;
std::atomic<std::FILE*> s_pUnfinishedFile = nullptr;
static_assert(std::atomic<bool>::is_always_lock_free && std::atomic<std::FILE*>::is_always_lock_free);

void OnSecondSignal(int nSignal)
{
    if (const std::filesystem::path* const pPath = s_pUnfinishedPath)
        RemoveInHandler(*pPath, s_pUnfinishedFile);
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

void RemoveAtInterrupt(const std::filesystem::path* pPath, std::FILE* pFile)
{
    s_pUnfinishedFile = pFile;
    s_pUnfinishedPath = pPath;
}
