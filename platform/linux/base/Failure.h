// The way in which a call fails: inside of the rooms by throwing a Failure where it is noticed, and to its caller as
// Windows tells it, which is the work of the templates at the end. Those are not noexcept: a host may cancel a thread
// that waits in a call, which the C library ends by unwinding.
#pragma once

#include "win32/Kernel.h"

#include <new>

// In the numbering of Windows, which hosts read in texts and logs.
struct Failure
{
    DWORD nError;
};

inline void Require(bool bHolds, DWORD nError)
{
    if (!bHolds)
        throw Failure{nError};
}

// For arguments that the library never passes: they are refused instead of being half obeyed.
inline void RequireSupported(bool bHolds)
{
    Require(bHolds, ERROR_NOT_SUPPORTED);
}

// errno in the numbering of Windows, for all but the sockets, which have numbers of their own.
DWORD ErrorOfErrno(int nErrno) noexcept;

// The way back, for its text; -1 if the number stands for none.
int ErrnoOfError(DWORD nError) noexcept;

[[noreturn]] void ThrowErrno();

// Around the call of a system function that is zero or more on success: its result.
template <class Result>
Result OrThrowErrno(Result nResult)
{
    if (nResult < 0)
        ThrowErrno();
    return nResult;
}

// A call that gives its error as a number; in a numbering of its own it has its own for a want of memory.
template <class Body>
DWORD ErrorOf(Body body, DWORD nNoMemory = ERROR_NOT_ENOUGH_MEMORY)
{
    try
    {
        body();
        return ERROR_SUCCESS;
    }
    catch (const Failure& oFailure)
    {
        return oFailure.nError;
    }
    catch (const std::bad_alloc&)
    {
        return nNoMemory;
    }
}

// A call that gives a value, another one on failure, and then sets the last error.
template <class Result, class Body>
Result ResultOr(Result failure, Body body)
{
    Result result = failure;
    if (const DWORD nError = ErrorOf([&] { result = body(); }))
        win32::SetLastError(nError);
    return result;
}

// A call that gives TRUE or, with the last error set, FALSE.
template <class Body>
BOOL Succeeds(Body body)
{
    const DWORD nError = ErrorOf(body);
    if (nError)
        win32::SetLastError(nError);
    return nError == ERROR_SUCCESS;
}
