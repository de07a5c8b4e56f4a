// The one table between errno and the numbers of Windows, and the last error of each thread.
#include "Failure.h"

#include "util/Translation.h"

#include <cerrno>

namespace
{
thread_local constinit DWORD t_nLastError = ERROR_SUCCESS;

// The first that fits, in both directions.
constexpr Translation<int, DWORD> s_aErrors[] = {
    {0, ERROR_SUCCESS},
    {ENOENT, ERROR_FILE_NOT_FOUND},
    {ENOENT, ERROR_PATH_NOT_FOUND},
    {ENOTDIR, ERROR_PATH_NOT_FOUND},
    {EMFILE, ERROR_TOO_MANY_OPEN_FILES},
    {ENFILE, ERROR_TOO_MANY_OPEN_FILES},
    {EACCES, ERROR_ACCESS_DENIED},
    {EPERM, ERROR_ACCESS_DENIED},
    {EISDIR, ERROR_ACCESS_DENIED},
    {EBADF, ERROR_ACCESS_DENIED},   // what a handle stands for is open, but perhaps not for this
    {EBADF, ERROR_INVALID_HANDLE},
    {ENOMEM, ERROR_NOT_ENOUGH_MEMORY},
    {EAGAIN, ERROR_NOT_ENOUGH_MEMORY},   // no more processes
    {EXDEV, ERROR_NOT_SAME_DEVICE},
    {EROFS, ERROR_WRITE_PROTECT},
    {EBUSY, ERROR_BUSY},
    {EBUSY, ERROR_SHARING_VIOLATION},
    {ETXTBSY, ERROR_SHARING_VIOLATION},
    {ENOTSUP, ERROR_NOT_SUPPORTED},
    {ENOSYS, ERROR_NOT_SUPPORTED},
    {EINVAL, ERROR_INVALID_PARAMETER},
    {EFAULT, ERROR_INVALID_PARAMETER},
    {ENOSPC, ERROR_DISK_FULL},
    {EDQUOT, ERROR_DISK_FULL},
    {EFBIG, ERROR_DISK_FULL},
    {ENOTEMPTY, ERROR_DIR_NOT_EMPTY},
    {ENOTDIR, ERROR_DIRECTORY},
    {ENOEXEC, ERROR_BAD_EXE_FORMAT},
    {EEXIST, ERROR_ALREADY_EXISTS},
    {ENAMETOOLONG, ERROR_FILENAME_EXCED_RANGE},
    {E2BIG, ERROR_FILENAME_EXCED_RANGE},
    {EIO, ERROR_IO_DEVICE},
    {ELOOP, ERROR_CANT_RESOLVE_FILENAME},
};
}

DWORD ErrorOfErrno(int nErrno) noexcept
{
    return Translate(s_aErrors, nErrno, ERROR_GEN_FAILURE);
}

int ErrnoOfError(DWORD nError) noexcept
{
    return TranslateBack(s_aErrors, nError, -1);
}

void ThrowErrno()
{
    const DWORD nError = ErrorOfErrno(errno);   // before memory for an exception is asked for, which may change it
    throw Failure{nError};
}

DWORD win32::GetLastError()
{
    return t_nLastError;
}

void win32::SetLastError(DWORD nError)
{
    t_nLastError = nError;
}
