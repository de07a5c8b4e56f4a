// COM has no work to do on Linux; only the count of a thread's starts is kept, because callers see it
// in the result.
#include "win32/Threads.h"

namespace
{
thread_local constinit unsigned t_nStarts = 0;
}

HRESULT win32::CoInitialize(LPVOID)
{
    return t_nStarts++ == 0 ? S_OK : S_FALSE;
}

void win32::CoUninitialize()
{
    if (t_nStarts > 0)
        --t_nStarts;
}
