// Opening a file as Windows shares it.
#pragma once

#include "platform/linux/base/Descriptor.h"
#include "win32/Files.h"

#include <sys/stat.h>

// Nobody may write it, so Windows would call it read-only.
constexpr bool IsReadOnly(mode_t nMode) noexcept
{
    return !(nMode & (S_IWUSR | S_IWGRP | S_IWOTH));
}

// What CreateFileA does, for a native path and with the permission bits of a new file. Gives the status of what
// was opened before it was emptied; without a descriptor the last error is set.
Descriptor OpenFile(const char* pszNativePath, DWORD nAccess, DWORD nShare, DWORD nDisposition, mode_t nMode,
                    struct stat& oStatus);

// Takes a lock of flock on an open file, for as long as it stays open: false if another's stands against it.
// A file system that knows no locks is used without.
bool TakeLock(int nDescriptor, int nLock) noexcept;
