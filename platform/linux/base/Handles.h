// Handles: numbers that stand for objects, so that a null, closed or made-up one is noticed instead of being followed,
// and one of another kind as well. Files, threads, keys, sockets, requests and windows all have theirs from here.
//
// Numbers have 32 bits, since sockets have no more, and go round through all of them before one comes again: a thread
// that is about to use what another has just closed does not meet a stranger.
#pragma once

#include "Failure.h"
#include "ZevrinUtils/Types.h"

#include <memory>
#include <utility>

// The last owner may be the table, a running thread, a wait or a call under way.
class HandleObject
{
public:
    virtual ~HandleObject() = default;
    HandleObject(const HandleObject&) = delete;
    HandleObject& operator=(const HandleObject&) = delete;

protected:
    HandleObject() = default;
};

// Files, events, threads and processes: the kinds that CloseHandle closes.
class KernelObject : public HandleObject
{
};

// Throws std::bad_alloc.
HANDLE OpenHandle(std::shared_ptr<HandleObject> pObject);

// Null if the handle stands for nothing.
std::shared_ptr<HandleObject> FindObject(HANDLE hObject);

// False if the handle stands for another object by now, or for nothing: of two threads that close it one succeeds.
bool ForgetHandle(HANDLE hObject, const HandleObject& oObject);

// Keep all other threads out of the table over a fork, which would leave the child one that they were at work in.
void LockHandles();
void UnlockHandles();

// The object if it is of the wanted kind; otherwise null.
template <class Kind>
std::shared_ptr<Kind> FindObjectOf(HANDLE hObject)
{
    return std::dynamic_pointer_cast<Kind>(FindObject(hObject));
}

// The object, or a failure if the handle stands for nothing of the kind.
template <class Kind>
std::shared_ptr<Kind> ObjectOf(HANDLE hObject, DWORD nError = ERROR_INVALID_HANDLE)
{
    auto pObject = FindObjectOf<Kind>(hObject);
    Require(pObject != nullptr, nError);
    return pObject;
}

// Closes a handle of the kind and gives its object, which goes with its last owner.
template <class Kind>
std::shared_ptr<Kind> TakeObjectOf(HANDLE hObject, DWORD nError = ERROR_INVALID_HANDLE)
{
    auto pObject = ObjectOf<Kind>(hObject, nError);
    Require(ForgetHandle(hObject, *pObject), nError);
    return pObject;
}

// A handle that is forgotten again unless it is given away.
class NewHandle
{
public:
    explicit NewHandle(const std::shared_ptr<HandleObject>& pObject)
        : m_hObject(OpenHandle(pObject)), m_oObject(*pObject)
    {
    }
    ~NewHandle()
    {
        if (m_hObject)
            ForgetHandle(m_hObject, m_oObject);
    }
    NewHandle(const NewHandle&) = delete;
    NewHandle& operator=(const NewHandle&) = delete;

    HANDLE Give() noexcept { return std::exchange(m_hObject, nullptr); }

private:
    HANDLE m_hObject;
    const HandleObject& m_oObject;
};
