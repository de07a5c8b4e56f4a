#include "system/Errors.h"

namespace
{
thread_local constinit DWORD t_nLastError = ERROR_SUCCESS;
}

DWORD win32::GetLastError() noexcept
{
    return t_nLastError;
}

void win32::SetLastError(DWORD nError) noexcept
{
    t_nLastError = nError;
}
