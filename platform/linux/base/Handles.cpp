// The one table of handles, which all rooms share: so a handle of one kind is never taken for one of another.
#include "Handles.h"

#include "util/Immortal.h"
#include "win32/Kernel.h"

#include <cstdint>
#include <map>
#include <mutex>

namespace
{
constexpr std::uint32_t nStep = 4;   // as on Windows, where the two lowest bits of a handle are free for marks

struct HandleTable
{
    std::mutex oLock;
    std::map<HANDLE, std::shared_ptr<HandleObject>> oObjects;   // holds no memory once it is empty
    std::uint32_t nLast = 0x100;
};

// Never destroyed: objects that go at unload still close their handles.
HandleTable& Table()
{
    static Immortal<HandleTable> s_oTable;
    return *s_oTable;
}
}

HANDLE OpenHandle(std::shared_ptr<HandleObject> pObject)
{
    auto& oTable = Table();
    const std::lock_guard oHold(oTable.oLock);
    HANDLE hObject = nullptr;
    do
    {
        oTable.nLast += nStep;
        hObject = reinterpret_cast<HANDLE>(std::uintptr_t{oTable.nLast});
    } while (!hObject || oTable.oObjects.contains(hObject));
    oTable.oObjects.emplace(hObject, std::move(pObject));
    return hObject;
}

std::shared_ptr<HandleObject> FindObject(HANDLE hObject)
{
    auto& oTable = Table();
    const std::lock_guard oHold(oTable.oLock);
    const auto it = oTable.oObjects.find(hObject);
    return it == oTable.oObjects.end() ? nullptr : it->second;
}

bool ForgetHandle(HANDLE hObject, const HandleObject& oObject)
{
    std::shared_ptr<HandleObject> pLast;   // its destructor runs with the table unlocked
    auto& oTable = Table();
    const std::lock_guard oHold(oTable.oLock);
    const auto it = oTable.oObjects.find(hObject);
    if (it == oTable.oObjects.end() || it->second.get() != &oObject)
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
    return Succeeds([&] { TakeObjectOf<KernelObject>(hObject); });
}
