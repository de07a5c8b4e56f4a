// Telling the host why an operation failed.
#pragma once

#include "ZevrinUtils/framework/String.h"

// Hosts that do not want the text pass null.
inline void Tell(CString* psError, const CString& strText)
{
    if (psError)
        *psError = strText;
}
