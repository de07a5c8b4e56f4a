// Copies by the kernel where it can, which shares blocks where the file system can; otherwise block by block.
#include "OpenFile.h"
#include "platform/linux/base/Paths.h"

#include <algorithm>
#include <cerrno>
#include <climits>

#include <fcntl.h>

namespace
{
constexpr std::size_t nBlock = 0x10000;
constexpr std::size_t nMostAtOnce = 0x40000000;

// The kernel says with the first call that it does not copy between these files by itself.
bool CannotBeLeftToTheKernel(int nErrno) noexcept
{
    return nErrno == EXDEV || nErrno == EINVAL || nErrno == ENOSYS || nErrno == EOPNOTSUPP || nErrno == EPERM;
}

bool CopyInKernel(int nSource, int nTarget, off_t nSize, off_t& nDone)
{
    while (nDone < nSize)
    {
        const ssize_t nCopied = ::copy_file_range(nSource, nullptr, nTarget, nullptr, nMostAtOnce, 0);
        if (nCopied == 0)
            return true;   // it has become shorter
        if (nCopied < 0 && errno != EINTR)
            return nDone == 0 && CannotBeLeftToTheKernel(errno);
        nDone += std::max<ssize_t>(nCopied, 0);
    }
    return true;
}

// Goes on to the end of the source, which may lie elsewhere than its size says: some systems tell none.
bool CopyBytes(int nSource, int nTarget, off_t nSize)
{
    off_t nDone = 0;
    if (nSize > static_cast<off_t>(nBlock) && !CopyInKernel(nSource, nTarget, nSize, nDone))
        return false;
    char achBlock[nBlock];
    while (nSize == 0 || nDone < nSize)
    {
        const ssize_t nRead = ::read(nSource, achBlock, nBlock);
        if (nRead == 0)
            return true;
        if (nRead < 0 && errno != EINTR)
            return false;
        const auto nBytes = std::max<ssize_t>(nRead, 0);
        if (WriteAll(nTarget, achBlock, static_cast<std::size_t>(nBytes)) != static_cast<std::size_t>(nBytes))
            return false;
        nDone += nBytes;
    }
    return true;
}

// They go along as far as the file system and the target's owner let it.
void CopyTimesAndMode(const struct stat& oSource, int nTarget)
{
    struct stat oTarget;
    if (::fstat(nTarget, &oTarget) == 0 && (oTarget.st_mode ^ oSource.st_mode) & ACCESSPERMS)
        static_cast<void>(::fchmod(nTarget, oSource.st_mode & ACCESSPERMS));
    const timespec aoTimes[] = {oSource.st_atim, oSource.st_mtim};
    static_cast<void>(::futimens(nTarget, aoTimes));
}

// Makes a link that says the same as a link to a folder.
void CopyLink(const char* pszSource, const char* pszTarget)
{
    char achTarget[PATH_MAX];
    const ssize_t nLength = OrThrowOnPath(pszSource, ::readlink(pszSource, achTarget, sizeof achTarget - 1));
    achTarget[nLength] = 0;
    if (::symlink(achTarget, pszTarget) == 0)
        return;
    // A copy takes the place of what has its name.
    if (errno != EEXIST || ::unlink(pszTarget) != 0 || ::symlink(achTarget, pszTarget) != 0)
        ThrowOnPath(pszTarget);
}

void CopyContent(const OpenedFile& oSource, const char* pszTarget)
{
    // Writable at first, also where the copy is to be read-only.
    const mode_t nMode = (oSource.oStatus.st_mode & ACCESSPERMS) | S_IWUSR;
    const OpenedFile oTarget = OpenFile(pszTarget, GENERIC_WRITE, CREATE_ALWAYS, nMode);
    TakeIntoUse(oTarget, GENERIC_WRITE, 0, CREATE_ALWAYS);
    if (!CopyBytes(oSource.oDescriptor.Get(), oTarget.oDescriptor.Get(), oSource.oStatus.st_size))
    {
        // Half a copy would be taken for a whole one. A device stays, of course.
        const DWORD nError = ErrorOfErrno(errno);
        if (S_ISREG(oTarget.oStatus.st_mode))
            ::unlink(pszTarget);
        throw Failure{nError};
    }
    CopyTimesAndMode(oSource.oStatus, oTarget.oDescriptor.Get());
}

bool IsLink(const char* pszNativePath)
{
    struct stat oStatus;
    return ::lstat(pszNativePath, &oStatus) == 0 && S_ISLNK(oStatus.st_mode);
}
}

BOOL win32::CopyFileA(LPCSTR pszSource, LPCSTR pszTarget, BOOL bFailIfExists)
{
    return Succeeds([&] {
        RequireSupported(!bFailIfExists);
        const NativePath oPath(pszSource);
        const NativePath oTarget(pszTarget);
        const OpenedFile oSource = OpenFile(oPath, GENERIC_READ, OPEN_EXISTING, 0);
        if (S_ISDIR(oSource.oStatus.st_mode) && IsLink(oPath))
            return CopyLink(oPath, oTarget);
        TakeIntoUse(oSource, GENERIC_READ, FILE_SHARE_READ, OPEN_EXISTING);
        RequireSupported(S_ISREG(oSource.oStatus.st_mode));
        CopyContent(oSource, oTarget);
    });
}
