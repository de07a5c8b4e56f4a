// errno in Windows' numbering, for all services but the sockets, which have numbers of their own.
#pragma once

#include "Failure.h"

#include <cerrno>

DWORD ErrorOfErrno(int nErrno) noexcept;

// The way back, for its text; -1 if the number stands for none.
int ErrnoOfError(DWORD nError) noexcept;

template <class Result>
Result FailByErrno(Result failure) noexcept
{
    return Fail(ErrorOfErrno(errno), failure);
}
