/// @file
/// The library's lock.
#pragma once

#include "ZevrinUtils/Export.h"
#include "ZevrinUtils/Types.h"

/// Anything that can be locked. It has no virtual destructor: never delete a lock through this class.
class ZEVRINUTILS_API CSLockable
{
public:
    CSLockable() = default;
    CSLockable(const CSLockable&) = default;              ///< there is nothing to copy
    CSLockable& operator=(const CSLockable&) = default;   ///< likewise

    virtual bool Lock() = 0;     ///< waits for the lock, without a limit, and holds it
    virtual bool Unlock() = 0;   ///< gives it up: once for each Lock, by the same thread
};

/// A lock that one thread at a time can hold. Its holder may enter again and must leave as often.
///
/// Two pairs of operations act on the one lock and may be mixed: enter and leave, and the virtual Lock
/// and Unlock for use through CSLockable. There is no try and no time limit. Any thread may call them;
/// leaving a lock that the thread does not hold is not detected.
///
/// The object must not be destroyed while a thread holds it or waits for it.
class ZEVRINUTILS_API CSCritSection : public CSLockable
{
public:
    CSCritSection();

    /// A copy is no new lock: the platform's object is copied word for word and nothing is initialised.
    /// The copy of a held lock is held too, by the same thread, and each of the two objects deletes the
    /// same internals when it goes. Exported for classes that are copied with their lock; not for use.
    CSCritSection(const CSCritSection& oOther);
    CSCritSection& operator=(const CSCritSection& oOther);   ///< likewise

    void enter();   ///< waits for the lock, without a limit, and holds it
    void leave();   ///< gives it up: once for each enter, by the same thread

    bool Lock() override;     ///< as enter; always true
    bool Unlock() override;   ///< as leave; always true

    virtual ~CSCritSection();

private:
    CRITICAL_SECTION m_oCriticalSection;
};
