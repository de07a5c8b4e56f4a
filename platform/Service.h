// The rules and the table in force that all platform services have in common.
//
// A service is a struct of function pointers: the operations that the library asks of the system for
// one purpose, under the system's own names and signatures. Its default-made table is the native one.
// The library's code always goes through the table in force:
//
//     Threads().SetEvent(m_hQueueEvent);
//
// General rules, for every service:
// - The native tables are constant-initialised and trivially destructible, so objects that are built
//   at load and destroyed at unload may use them.
// - On Linux an operation behaves as its Windows namesake does for the arguments that the library
//   passes, its results and error numbers included. Arguments that the library never passes fail
//   with ERROR_NOT_SUPPORTED instead of being half obeyed.
// - No operation throws: memory that runs out is a failure like any other. Only an exception that a hook of the host
//   throws passes through.
// - An operation that fails sets the last error of the calling thread. One that succeeds may leave it
//   as it was.
// - Replace a table before the thread that uses it starts, restore it after that thread has ended.
#pragma once

#include "win32/Call.h"

#include <atomic>

template <class Calls>
class PlatformService
{
public:
    static const Calls& InForce() noexcept { return *s_pInForce.load(std::memory_order_acquire); }

    // Puts another table in force and gives the one that was. The table must outlive its use.
    static const Calls* Exchange(const Calls* pCalls) noexcept
    {
        return s_pInForce.exchange(pCalls, std::memory_order_acq_rel);
    }

    static constexpr Calls s_oNative{};

private:
    static inline constinit std::atomic<const Calls*> s_pInForce{&s_oNative};
};
