// How an operation fails.
#pragma once

#include "win32/Errors.h"

#include <new>

// Sets the last error and gives the operation's failure value: return Fail(ERROR_..., FALSE);
template <class Result>
Result Fail(DWORD nError, Result failure) noexcept
{
    win32::SetLastError(nError);
    return failure;
}

// The body of an operation that takes memory: gives its result, or the failure value if there is no memory.
template <class Result, class Body>
Result OrOutOfMemory(Result failure, Body body) noexcept
{
    try
    {
        return body();
    }
    catch (const std::bad_alloc&)
    {
        return Fail(ERROR_NOT_ENOUGH_MEMORY, failure);
    }
}
