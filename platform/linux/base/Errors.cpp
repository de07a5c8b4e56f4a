#include "win32/Errors.h"

namespace
{
thread_local constinit DWORD t_nLastError = ERROR_SUCCESS;
}

DWORD win32::GetLastError()
{
    return t_nLastError;
}

void win32::SetLastError(DWORD nError)
{
    t_nLastError = nError;
}
