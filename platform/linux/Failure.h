#pragma once

#include "system/Errors.h"

// Sets the last error and gives the operation's failure value: return Fail(ERROR_..., FALSE);
template <class Result>
Result Fail(DWORD nError, Result failure) noexcept
{
    win32::SetLastError(nError);
    return failure;
}
