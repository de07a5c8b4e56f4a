// The locks of hosts, as recursive mutexes of the C library in place: plain data that hosts copy word for word.
#include "win32/Kernel.h"

void win32::InitializeCriticalSection(LPCRITICAL_SECTION pSection)
{
    pthread_mutexattr_t oAttributes;
    pthread_mutexattr_init(&oAttributes);
    pthread_mutexattr_settype(&oAttributes, PTHREAD_MUTEX_RECURSIVE);
    pthread_mutex_init(&pSection->Mutex, &oAttributes);
    pthread_mutexattr_destroy(&oAttributes);
}

void win32::EnterCriticalSection(LPCRITICAL_SECTION pSection)
{
    pthread_mutex_lock(&pSection->Mutex);
}

void win32::LeaveCriticalSection(LPCRITICAL_SECTION pSection)
{
    pthread_mutex_unlock(&pSection->Mutex);
}

void win32::DeleteCriticalSection(LPCRITICAL_SECTION pSection)
{
    pthread_mutex_destroy(&pSection->Mutex);
}
