#include "Waitable.h"

#include "Failure.h"
#include "system/Threads.h"

#include <algorithm>
#include <chrono>
#include <mutex>

namespace
{
// Constant-initialised and never destroyed in effect: a mutex has no destructor to run here.
constinit std::mutex s_oWaitLock;
}

void Waitable::Set()
{
    const std::lock_guard oHold(s_oWaitLock);
    m_bSet = true;
    for (auto* pWaiting : m_oWaiting)
        pWaiting->notify_one();
}

void Waitable::Clear()
{
    const std::lock_guard oHold(s_oWaitLock);
    m_bSet = false;
}

std::size_t Waitable::LowestSet(std::span<const std::shared_ptr<Waitable>> objects) noexcept
{
    const auto it = std::find_if(objects.begin(), objects.end(), [](const auto& pObject) { return pObject->m_bSet; });
    return static_cast<std::size_t>(it - objects.begin());
}

std::size_t Waitable::WaitForAny(std::span<const std::shared_ptr<Waitable>> objects, DWORD nMilliseconds)
{
    std::unique_lock oHold(s_oWaitLock);
    std::size_t nSet = LowestSet(objects);
    if (nSet < objects.size() || nMilliseconds == 0)
        return nSet;

    std::condition_variable oWake;
    for (const auto& pObject : objects)
        pObject->m_oWaiting.push_back(&oWake);

    const auto anySet = [&] { return (nSet = LowestSet(objects)) < objects.size(); };
    if (nMilliseconds == INFINITE)
        oWake.wait(oHold, anySet);
    else
        oWake.wait_for(oHold, std::chrono::milliseconds(nMilliseconds), anySet);

    for (const auto& pObject : objects)
        std::erase(pObject->m_oWaiting, &oWake);
    return nSet;
}

DWORD win32::WaitForSingleObject(HANDLE hObject, DWORD nMilliseconds)
{
    return WaitForMultipleObjects(1, &hObject, FALSE, nMilliseconds);
}

DWORD win32::WaitForMultipleObjects(DWORD nCount, const HANDLE* phObjects, BOOL bWaitAll, DWORD nMilliseconds)
{
    if (nCount == 0 || nCount > MAXIMUM_WAIT_OBJECTS)
        return Fail(ERROR_INVALID_PARAMETER, WAIT_FAILED);
    if (bWaitAll)
        return Fail(ERROR_NOT_SUPPORTED, WAIT_FAILED);

    std::vector<std::shared_ptr<Waitable>> oObjects(nCount);
    std::transform(phObjects, phObjects + nCount, oObjects.begin(), FindObjectOf<Waitable>);
    if (std::find(oObjects.begin(), oObjects.end(), nullptr) != oObjects.end())
        return Fail(ERROR_INVALID_HANDLE, WAIT_FAILED);

    const std::size_t nSet = Waitable::WaitForAny(oObjects, nMilliseconds);
    return nSet < nCount ? WAIT_OBJECT_0 + static_cast<DWORD>(nSet) : WAIT_TIMEOUT;
}
