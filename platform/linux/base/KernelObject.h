// Handles: numbers that stand for objects, so that a null, closed or made-up one is noticed instead
// of being followed. A number is never given twice.
#pragma once

#include "ZevrinUtils/Types.h"

#include <memory>
#include <utility>

// What a handle stands for. The last owner may be the table, a running thread or a wait.
class KernelObject
{
public:
    virtual ~KernelObject() = default;
    KernelObject(const KernelObject&) = delete;
    KernelObject& operator=(const KernelObject&) = delete;

protected:
    KernelObject() = default;
};

HANDLE OpenHandle(std::shared_ptr<KernelObject> pObject);

// Null if the handle stands for nothing.
std::shared_ptr<KernelObject> FindObject(HANDLE hObject);

// False if the handle stands for nothing.
bool ForgetHandle(HANDLE hObject);

// Keep all other threads out of the table over a fork, which would leave the child one that they were at work in.
void LockHandles();
void UnlockHandles();

// A handle that is forgotten again unless it is given away.
class NewHandle
{
public:
    explicit NewHandle(std::shared_ptr<KernelObject> pObject) : m_hObject(OpenHandle(std::move(pObject))) {}
    ~NewHandle() { ForgetHandle(m_hObject); }
    NewHandle(const NewHandle&) = delete;
    NewHandle& operator=(const NewHandle&) = delete;

    HANDLE Give() noexcept { return std::exchange(m_hObject, nullptr); }

private:
    HANDLE m_hObject;
};

// The object of a handle if it is of the wanted kind; otherwise null.
template <class Kind>
std::shared_ptr<Kind> FindObjectOf(HANDLE hObject)
{
    return std::dynamic_pointer_cast<Kind>(FindObject(hObject));
}
