// Threads of the library, detached: who has the handle can wait for one and ask how it ended, and may close the handle
// before. What belongs to each thread stands here too, the starts of COM.
#include "Waits.h"
#include "win32/Kernel.h"

#include <atomic>
#include <csignal>

#include <pthread.h>

namespace
{
// Set once the thread has ended.
class Thread final : public Waitable
{
public:
    Thread(LPTHREAD_START_ROUTINE pStart, LPVOID pArgument) noexcept
        : Waitable(false), m_pStart(pStart), m_pArgument(pArgument)
    {
    }

    void Run()
    {
        m_nExitCode = m_pStart(m_pArgument);   // before the end is seen, as whoever waits for it asks for the code
        Set();
    }

    DWORD ExitCode() const noexcept { return m_nExitCode; }

private:
    const LPTHREAD_START_ROUTINE m_pStart;
    const LPVOID m_pArgument;
    std::atomic<DWORD> m_nExitCode = STILL_ACTIVE;
};

// Owns the running thread's share of the object, so that the handle may be closed meanwhile.
void* RunThread(void* pShare)
{
    const std::unique_ptr<std::shared_ptr<Thread>> pThread(static_cast<std::shared_ptr<Thread>*>(pShare));
    (*pThread)->Run();
    return nullptr;
}

// A thread of the library takes no signals that are sent to the process: those are for the host's own
// threads. Those of a fault of its own stay, so that the host's crash handler sees it.
bool StartDetached(std::unique_ptr<std::shared_ptr<Thread>> pShare)
{
    sigset_t oSent;
    sigset_t oBefore;
    sigfillset(&oSent);
    for (const int nFault : {SIGSEGV, SIGBUS, SIGFPE, SIGILL, SIGTRAP})
        sigdelset(&oSent, nFault);
    pthread_sigmask(SIG_SETMASK, &oSent, &oBefore);   // which the new thread inherits

    // Nobody joins it: whoever wants to know of its end waits for the object.
    pthread_attr_t oAttributes;
    pthread_attr_init(&oAttributes);
    pthread_attr_setdetachstate(&oAttributes, PTHREAD_CREATE_DETACHED);
    pthread_t nId{};
    const bool bStarted = pthread_create(&nId, &oAttributes, RunThread, pShare.get()) == 0;
    pthread_attr_destroy(&oAttributes);

    pthread_sigmask(SIG_SETMASK, &oBefore, nullptr);
    if (bStarted)
        static_cast<void>(pShare.release());   // the thread's now
    return bStarted;
}

// COM has no work to do on Linux; a thread's starts are counted because callers see the count in the result.
thread_local constinit unsigned t_nStarts = 0;
}

HANDLE win32::CreateThread(LPSECURITY_ATTRIBUTES pSecurity, SIZE_T nStackSize, LPTHREAD_START_ROUTINE pStart,
                           LPVOID pArgument, DWORD nFlags, LPDWORD pnThreadId)
{
    return ResultOr(HANDLE{}, [&] {
        RequireSupported(!pSecurity && nStackSize == 0 && nFlags == 0 && !pnThreadId);
        const auto pThread = std::make_shared<Thread>(pStart, pArgument);
        auto pShare = std::make_unique<std::shared_ptr<Thread>>(pThread);
        NewHandle oThread(pThread);
        Require(StartDetached(std::move(pShare)), ERROR_NOT_ENOUGH_MEMORY);
        return oThread.Give();
    });
}

BOOL win32::GetExitCodeThread(HANDLE hThread, LPDWORD pnExitCode)
{
    return Succeeds([&] { *pnExitCode = ObjectOf<Thread>(hThread)->ExitCode(); });
}

BOOL win32::TerminateThread(HANDLE, DWORD)
{
    return Succeeds([] { RequireSupported(false); });
}

HRESULT win32::CoInitialize(LPVOID)
{
    return t_nStarts++ == 0 ? S_OK : S_FALSE;
}

void win32::CoUninitialize()
{
    if (t_nStarts > 0)
        --t_nStarts;
}
