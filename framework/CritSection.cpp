// The library's lock, over the system's. Its copies are made member by member, although that makes no second lock:
// classes that hold one are exported with their copies.
#include "ZevrinUtils/CritSection.h"

#include "platform/Threads.h"

CSCritSection::CSCritSection()
{
    Threads().InitializeCriticalSection(&m_oCriticalSection);
}

CSCritSection::CSCritSection(const CSCritSection& oOther) = default;

CSCritSection& CSCritSection::operator=(const CSCritSection& oOther) = default;

CSCritSection::~CSCritSection()
{
    Threads().DeleteCriticalSection(&m_oCriticalSection);
}

void CSCritSection::enter()
{
    Threads().EnterCriticalSection(&m_oCriticalSection);
}

void CSCritSection::leave()
{
    Threads().LeaveCriticalSection(&m_oCriticalSection);
}

bool CSCritSection::Lock()
{
    enter();
    return true;
}

bool CSCritSection::Unlock()
{
    leave();
    return true;
}
