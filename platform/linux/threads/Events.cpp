#include "Waitable.h"
#include "platform/linux/base/Failure.h"
#include "win32/Threads.h"

namespace
{
class Event final : public Waitable
{
    using Waitable::Waitable;
};

BOOL ChangeEvent(HANDLE hEvent, void (Waitable::*pChange)())
{
    const auto pEvent = FindObjectOf<Event>(hEvent);
    if (!pEvent)
        return Fail(ERROR_INVALID_HANDLE, FALSE);
    ((*pEvent).*pChange)();
    return TRUE;
}
}

HANDLE win32::CreateEventA(LPSECURITY_ATTRIBUTES pSecurity, BOOL bManualReset, BOOL bInitialState, LPCSTR pszName)
{
    if (pSecurity || !bManualReset || pszName)
        return Fail(ERROR_NOT_SUPPORTED, HANDLE{});
    return OrOutOfMemory(HANDLE{}, [&] { return OpenHandle(std::make_shared<Event>(bInitialState != FALSE)); });
}

BOOL win32::SetEvent(HANDLE hEvent)
{
    return ChangeEvent(hEvent, &Waitable::Set);
}

BOOL win32::ResetEvent(HANDLE hEvent)
{
    return ChangeEvent(hEvent, &Waitable::Clear);
}
