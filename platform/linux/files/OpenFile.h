// Opening a file as Windows shares it.
#pragma once

#include "platform/linux/base/Descriptor.h"
#include "win32/Kernel.h"

#include <sys/stat.h>

// Nobody may write it, so Windows would call it read-only.
constexpr bool IsReadOnly(mode_t nMode) noexcept
{
    return !(nMode & (S_IWUSR | S_IWGRP | S_IWOTH));
}

struct OpenedFile
{
    Descriptor oDescriptor;
    struct stat oStatus;
};

// The first half of what CreateFileA does, for a native path and with the permission bits of a new file: nothing is
// emptied yet. Without waiting for the other end of a pipe.
OpenedFile OpenFile(const char* pszNativePath, DWORD nAccess, DWORD nDisposition, mode_t nMode);

// The second: fails where what was opened is no file, is read-only or not shared; then takes its lock and empties it.
// Its status stays that of before.
void TakeIntoUse(const OpenedFile& oOpened, DWORD nAccess, DWORD nShare, DWORD nDisposition);

// Takes a lock of flock on an open file, for as long as it stays open: false if another's stands against it.
// A file system that knows no locks is used without.
bool TakeLock(int nDescriptor, int nLock) noexcept;
