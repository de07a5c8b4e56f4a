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
