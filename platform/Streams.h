// The C library's files.
#pragma once

#include "platform/Service.h"
#include "win32/CLibrary.h"

struct StreamCalls
{
    // Opens a file; null if that fails. "r" is text on Windows: a Ctrl-Z ends it, and CR LF reads as LF.
    PLATFORM_CALL(fopen);
    // The count of whole items read; 0 at the end and after a failure.
    PLATFORM_CALL(fread);
    PLATFORM_CALL(fclose);
};

inline const StreamCalls& Streams() noexcept
{
    return PlatformService<StreamCalls>::InForce();
}
