// The error of a call of the platform: 0 if it has succeeded, otherwise the last one.
#pragma once

#include "platform/Errors.h"

inline DWORD ErrorOf(bool bDone)
{
    return bDone ? 0 : Errors().GetLastError();
}
