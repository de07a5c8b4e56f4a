// Files and folders: opening, reading, writing, finding, copying, removing.
//
// Paths are bytes; on Linux a backslash in them separates as a slash does. A file without any write
// permission bit is read-only there, whoever asks. Sharing is kept with flock, and so between processes.
//
// A failure leaves one of these errors, among others: 2 for a missing file, 3 for a missing folder on the way, 5 for a
// read-only file to be changed, 32 for a file that another has open and does not share.
#pragma once

#include "platform/Service.h"
#include "win32/Kernel.h"

struct FileCalls
{
    // Opens a file, or with CREATE_ALWAYS makes or empties it; INVALID_HANDLE_VALUE on failure. A folder is
    // error 5. A file that cannot be opened is not emptied.
    PLATFORM_CALL(CreateFileA);
    // Reads on from where the last call ended: TRUE with a count of 0 at the end of the file.
    PLATFORM_CALL(ReadFile);
    // Writes all of it; on failure the count tells how much of it.
    PLATFORM_CALL(WriteFile);
    // The size in bytes.
    PLATFORM_CALL(GetFileSizeEx);

    // Opens the listing of a folder, given as a pattern that ends in "\*.*", and delivers its first entry:
    // ".", but not at the root of a volume on Windows. INVALID_HANDLE_VALUE on failure.
    PLATFORM_CALL(FindFirstFileA);
    // Delivers the next entry, ".." and then the others in the file system's order; FALSE at the end. A name
    // that is removed meanwhile may still come.
    PLATFORM_CALL(FindNextFileA);
    // Ends a listing.
    PLATFORM_CALL(FindClose);
    // Attributes of what the path names, INVALID_FILE_ATTRIBUTES on failure. On Linux a link is no folder,
    // wherever it leads, if anywhere; Windows marks one that was made for folders as a folder.
    PLATFORM_CALL(GetFileAttributesA);

    // Copies a file's bytes, times and permission bits, over one of that name if there is one. On failure the
    // target is as it was, or gone. On Linux the copy of a link to a folder is a link.
    PLATFORM_CALL(CopyFileA);
    // Makes one folder; 183 if there is something of that name.
    PLATFORM_CALL(CreateDirectoryA);
    // Removes a file, or a link itself; 32 while anyone has it open otherwise than for shared reading and writing.
    PLATFORM_CALL(DeleteFileA);
    // Removes an empty folder; 145 if there is something in it, 267 if it is none.
    PLATFORM_CALL(RemoveDirectoryA);
};

inline const FileCalls& Files() noexcept
{
    return PlatformService<FileCalls>::InForce();
}
