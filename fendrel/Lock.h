// The lock of the trace service.
#pragma once

#include "platform/Threads.h"

// A critical section rather than std::mutex: records still come while the process ends, when Windows has
// already killed the other threads, one of them perhaps in the middle of a record. Windows lets nobody wait
// for ever for a critical section that such a thread had entered.
class Lock
{
public:
    Lock() { Threads().InitializeCriticalSection(&m_oSection); }
    ~Lock() { Threads().DeleteCriticalSection(&m_oSection); }
    Lock(const Lock&) = delete;
    Lock& operator=(const Lock&) = delete;

    void lock() { Threads().EnterCriticalSection(&m_oSection); }
    void unlock() { Threads().LeaveCriticalSection(&m_oSection); }

private:
    CRITICAL_SECTION m_oSection;
};
