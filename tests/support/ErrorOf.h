// Whether a call of the platform has succeeded, as its error: 0 or the last one.
#pragma once

#include "platform/Errors.h"

inline DWORD ErrorOf(bool bDone)
{
    return bDone ? 0 : Errors().GetLastError();
}
