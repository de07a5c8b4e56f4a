#include "Waitable.h"

#include "platform/linux/base/Failure.h"
#include "util/Immortal.h"
#include "win32/Threads.h"

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

DWORD WaitForAnyOf(std::span<const std::shared_ptr<Waitable>> objects, DWORD nMilliseconds)
{
    if (std::find(objects.begin(), objects.end(), nullptr) != objects.end())
        return Fail(ERROR_INVALID_HANDLE, WAIT_FAILED);
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
    std::unique_lock oHold(AllWaits().oLock);
    if (nMilliseconds == 0)
        anySet();
    else if (nMilliseconds == INFINITE)
        AllWaits().oChange.wait(oHold, anySet);
    else
        AllWaits().oChange.wait_for(oHold, std::chrono::milliseconds(nMilliseconds), anySet);
    return nSet;
}

DWORD win32::WaitForSingleObject(HANDLE hObject, DWORD nMilliseconds)
{
    const auto pObject = FindObjectOf<Waitable>(hObject);
    return WaitForAnyOf({&pObject, 1}, nMilliseconds);
}

DWORD win32::WaitForMultipleObjects(DWORD nCount, const HANDLE* phObjects, BOOL bWaitAll, DWORD nMilliseconds)
{
    if (nCount == 0 || nCount > MAXIMUM_WAIT_OBJECTS)
        return Fail(ERROR_INVALID_PARAMETER, WAIT_FAILED);
    if (bWaitAll)
        return Fail(ERROR_NOT_SUPPORTED, WAIT_FAILED);
    return OrOutOfMemory(WAIT_FAILED, [&] {
        std::vector<std::shared_ptr<Waitable>> oObjects(nCount);
        std::transform(phObjects, phObjects + nCount, oObjects.begin(), FindObjectOf<Waitable>);
        return WaitForAnyOf(oObjects, nMilliseconds);
    });
}
