#include "KernelObject.h"

#include "Failure.h"
#include "util/Immortal.h"
#include "win32/Handles.h"

#include <map>
#include <mutex>

namespace
{
struct HandleTable
{
    std::mutex oLock;
    std::map<HANDLE, std::shared_ptr<KernelObject>> oObjects;   // holds no memory once it is empty
    std::uintptr_t nNext = 0x100;
};

// Never destroyed: objects that go at unload still close their handles.
HandleTable& Table()
{
    static Immortal<HandleTable> s_oTable;
    return *s_oTable;
}
}

HANDLE OpenHandle(std::shared_ptr<KernelObject> pObject)
{
    auto& oTable = Table();
    const std::lock_guard oHold(oTable.oLock);
    const auto hObject = reinterpret_cast<HANDLE>(oTable.nNext);
    oTable.oObjects.emplace(hObject, std::move(pObject));
    oTable.nNext += 4;
    return hObject;
}

std::shared_ptr<KernelObject> FindObject(HANDLE hObject)
{
    auto& oTable = Table();
    const std::lock_guard oHold(oTable.oLock);
    const auto it = oTable.oObjects.find(hObject);
    return it == oTable.oObjects.end() ? nullptr : it->second;
}

bool ForgetHandle(HANDLE hObject)
{
    std::shared_ptr<KernelObject> pLast;   // its destructor runs with the table unlocked
    auto& oTable = Table();
    const std::lock_guard oHold(oTable.oLock);
    const auto it = oTable.oObjects.find(hObject);
    if (it == oTable.oObjects.end())
        return false;
    pLast = std::move(it->second);
    oTable.oObjects.erase(it);
    return true;
}

void LockHandles()
{
    Table().oLock.lock();
}

void UnlockHandles()
{
    Table().oLock.unlock();
}

BOOL win32::CloseHandle(HANDLE hObject)
{
    return ForgetHandle(hObject) ? TRUE : Fail(ERROR_INVALID_HANDLE, FALSE);
}
