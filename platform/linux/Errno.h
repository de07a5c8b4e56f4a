// errno in Windows' numbering, for all services but the sockets, which have numbers of their own.
#pragma once

#include "Failure.h"

#include <cerrno>

DWORD ErrorOfErrno(int nErrno) noexcept;

template <class Result>
Result FailByErrno(Result failure) noexcept
{
    return Fail(ErrorOfErrno(errno), failure);
}
