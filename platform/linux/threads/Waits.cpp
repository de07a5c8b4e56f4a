// Events, and the waits of Windows, for one object or for any of several, over one condition that all of them share.
#include "Waits.h"

#include "util/Immortal.h"
#include "win32/Kernel.h"

#include <algorithm>
#include <chrono>
#include <condition_variable>
#include <mutex>
#include <vector>

namespace
{
// One lock and one wake-up for all waits. A wait for several objects looks at them all under the lock, so it
// never reports a higher index while a lower one is set. The library has a handful of waits at a time, so
// waking them all costs less than keeping account of who waits for what.
struct Waits
{
    std::mutex oLock;
    std::condition_variable oChange;
};

Waits& AllWaits()
{
    static Immortal<Waits> s_oWaits;   // threads may still sleep in it when the process ends
    return *s_oWaits;
}

class Event final : public Waitable
{
    using Waitable::Waitable;
};

DWORD WaitForAnyOf(std::span<const std::shared_ptr<Waitable>> objects, DWORD nMilliseconds)
{
    const std::size_t nSet = Waitable::WaitForAny(objects, nMilliseconds);
    return nSet < objects.size() ? WAIT_OBJECT_0 + static_cast<DWORD>(nSet) : WAIT_TIMEOUT;
}
}

void Waitable::Set()
{
    const std::lock_guard oHold(AllWaits().oLock);
    m_bSet = true;
    AllWaits().oChange.notify_all();
}

void Waitable::Clear()
{
    const std::lock_guard oHold(AllWaits().oLock);
    m_bSet = false;
}

std::size_t Waitable::WaitForAny(std::span<const std::shared_ptr<Waitable>> objects, DWORD nMilliseconds)
{
    std::size_t nSet = objects.size();
    const auto anySet = [&] {
        const auto it = std::find_if(objects.begin(), objects.end(), [](const auto& p) { return p->m_bSet; });
        nSet = static_cast<std::size_t>(it - objects.begin());
        return it != objects.end();
    };
    // The time runs by a clock that nobody sets. A wake-up may be for another wait: each looks for itself.
    std::unique_lock oHold(AllWaits().oLock);
    if (nMilliseconds == 0)
        anySet();
    else if (nMilliseconds == INFINITE)
        AllWaits().oChange.wait(oHold, anySet);
    else
        AllWaits().oChange.wait_for(oHold, std::chrono::milliseconds(nMilliseconds), anySet);
    return nSet;
}

HANDLE win32::CreateEventA(LPSECURITY_ATTRIBUTES pSecurity, BOOL bManualReset, BOOL bInitialState, LPCSTR pszName)
{
    return ResultOr(HANDLE{}, [&] {
        RequireSupported(!pSecurity && bManualReset && !pszName);
        return OpenHandle(std::make_shared<Event>(bInitialState != FALSE));
    });
}

BOOL win32::SetEvent(HANDLE hEvent)
{
    return Succeeds([&] { ObjectOf<Event>(hEvent)->Set(); });
}

BOOL win32::ResetEvent(HANDLE hEvent)
{
    return Succeeds([&] { ObjectOf<Event>(hEvent)->Clear(); });
}

DWORD win32::WaitForSingleObject(HANDLE hObject, DWORD nMilliseconds)
{
    return ResultOr(WAIT_FAILED, [&] {
        const auto pObject = ObjectOf<Waitable>(hObject);
        return WaitForAnyOf({&pObject, 1}, nMilliseconds);
    });
}

DWORD win32::WaitForMultipleObjects(DWORD nCount, const HANDLE* phObjects, BOOL bWaitAll, DWORD nMilliseconds)
{
    return ResultOr(WAIT_FAILED, [&] {
        Require(nCount > 0 && nCount <= MAXIMUM_WAIT_OBJECTS, ERROR_INVALID_PARAMETER);
        RequireSupported(!bWaitAll);
        std::vector<std::shared_ptr<Waitable>> oObjects(nCount);
        std::transform(phObjects, phObjects + nCount, oObjects.begin(), [](HANDLE h) { return ObjectOf<Waitable>(h); });
        return WaitForAnyOf(oObjects, nMilliseconds);
    });
}
