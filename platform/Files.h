// Files: opening, reading, writing, measuring.
//
// Paths are bytes; on Linux a backslash in them separates as a slash does. A file without any write
// permission bit is read-only there, whoever asks. Sharing is kept with flock, and so between processes.
#pragma once

#include "platform/Service.h"
#include "system/Call.h"
#include "system/Files.h"

struct FileCalls
{
    // Opens a file, or with CREATE_ALWAYS makes or empties it; INVALID_HANDLE_VALUE on failure. A missing file
    // is error 2, a missing folder on the way 3; a folder, a read-only file to be written 5; one that another
    // open file does not share 32, and then it is not emptied.
    PLATFORM_CALL(CreateFileA);
    // Reads on from where the last call ended: TRUE with a count of 0 at the end of the file.
    PLATFORM_CALL(ReadFile);
    // Writes all of it; on failure the count tells how much of it.
    PLATFORM_CALL(WriteFile);
    // The size in bytes.
    PLATFORM_CALL(GetFileSizeEx);
};

inline const FileCalls& Files() noexcept
{
    return PlatformService<FileCalls>::InForce();
}
