#include "KernelObject.h"
#include "OpenFile.h"
#include "Paths.h"

#include <cstring>
#include <string_view>

#include <dirent.h>
#include <fcntl.h>
#include <sys/file.h>

namespace
{
constexpr mode_t nNewFolderMode = 0777;   // less the process's mask

struct CloseFolder
{
    void operator()(DIR* pFolder) const noexcept { ::closedir(pFolder); }
};
using Folder = std::unique_ptr<DIR, CloseFolder>;

// Windows delivers these two first, whatever the order of the file system.
constexpr const char* s_apszDots[] = {".", ".."};

bool IsDots(const char* pszName) noexcept
{
    return std::string_view(pszName) == s_apszDots[0] || std::string_view(pszName) == s_apszDots[1];
}

class Listing final : public KernelObject
{
public:
    explicit Listing(Folder pFolder) noexcept : m_pFolder(std::move(pFolder)) {}

    BOOL Next(WIN32_FIND_DATAA& oFound)
    {
        if (m_nDots < std::size(s_apszDots))
            return Give(s_apszDots[m_nDots++], 0, oFound);
        for (;;)
        {
            errno = 0;
            const dirent* const pEntry = ::readdir(m_pFolder.get());   // one thread at a time uses a listing
            if (!pEntry)
                return errno ? FailByErrno(FALSE) : Fail(ERROR_NO_MORE_FILES, FALSE);
            // A backslash in a name would be read as a separator, and lead a walk to a stranger or out of its tree.
            if (!IsDots(pEntry->d_name) && !std::strchr(pEntry->d_name, '\\'))
                return Give(pEntry->d_name, SizeOf(*pEntry), oFound);
        }
    }

private:
    static BOOL Give(std::string_view strName, std::uint64_t nSize, WIN32_FIND_DATAA& oFound)
    {
        oFound.nFileSizeHigh = static_cast<DWORD>(nSize >> 32);
        oFound.nFileSizeLow = static_cast<DWORD>(nSize);
        strName.copy(oFound.cFileName, MAX_PATH - 1);
        oFound.cFileName[std::min(strName.size(), MAX_PATH - 1)] = 0;
        return TRUE;
    }

    // Nothing but a file has one.
    std::uint64_t SizeOf(const dirent& oEntry) const
    {
        struct stat oStatus;
        if ((oEntry.d_type != DT_REG && oEntry.d_type != DT_UNKNOWN) ||
            ::fstatat(::dirfd(m_pFolder.get()), oEntry.d_name, &oStatus, AT_SYMLINK_NOFOLLOW) != 0 ||
            !S_ISREG(oStatus.st_mode))
            return 0;
        return static_cast<std::uint64_t>(oStatus.st_size);
    }

    const Folder m_pFolder;
    std::size_t m_nDots = 0;   // delivered so far
};

bool Exists(const char* pszNativePath)
{
    struct stat oStatus;
    return ::lstat(pszNativePath, &oStatus) == 0;
}

bool IsLinkToFolder(const char* pszNativePath)
{
    struct stat oStatus;
    return ::lstat(pszNativePath, &oStatus) == 0 && S_ISLNK(oStatus.st_mode) && ::stat(pszNativePath, &oStatus) == 0 &&
           S_ISDIR(oStatus.st_mode);
}

// A folder that is missing is no missing file.
DWORD ErrorOfListing(const char* pszNativePath)
{
    const int nErrno = errno;
    if (nErrno == ENOTDIR && Exists(pszNativePath))
        return ERROR_DIRECTORY;
    return nErrno == ENOENT ? ERROR_PATH_NOT_FOUND : ErrorOfErrno(nErrno);
}

// Whether someone has it open and minds its removal. What cannot be opened is not asked.
bool IsInUse(const char* pszNativePath)
{
    const Descriptor oOpen(::open(pszNativePath, O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC));
    return oOpen && !TakeLock(oOpen.Get(), LOCK_EX);
}
}

HANDLE win32::FindFirstFileA(LPCSTR pszPattern, LPWIN32_FIND_DATAA pFound)
{
    static constexpr std::string_view strAll = "/*.*";
    return OrOutOfMemory(INVALID_HANDLE_VALUE, [&] {
        std::string strFolder(NativePath{pszPattern});
        if (!strFolder.ends_with(strAll))
            return Fail(ERROR_NOT_SUPPORTED, INVALID_HANDLE_VALUE);
        strFolder.erase(strFolder.size() - strAll.size());
        const char* const pszFolder = strFolder.empty() ? "/" : strFolder.c_str();
        Folder pFolder(::opendir(pszFolder));
        if (!pFolder)
            return Fail(ErrorOfListing(pszFolder), INVALID_HANDLE_VALUE);
        const auto pListing = std::make_shared<Listing>(std::move(pFolder));
        pListing->Next(*pFound);
        return OpenHandle(pListing);
    });
}

BOOL win32::FindNextFileA(HANDLE hFind, LPWIN32_FIND_DATAA pFound)
{
    const auto pListing = FindObjectOf<Listing>(hFind);
    return pListing ? pListing->Next(*pFound) : Fail(ERROR_INVALID_HANDLE, FALSE);
}

BOOL win32::FindClose(HANDLE hFind)
{
    return FindObjectOf<Listing>(hFind) && ForgetHandle(hFind) ? TRUE : Fail(ERROR_INVALID_HANDLE, FALSE);
}

DWORD win32::GetFileAttributesA(LPCSTR pszPath)
{
    return OrOutOfMemory(INVALID_FILE_ATTRIBUTES, [&] {
        const NativePath oPath(pszPath);
        struct stat oStatus;
        if (::lstat(oPath, &oStatus) != 0)
            return FailOnPath(oPath, INVALID_FILE_ATTRIBUTES);
        const DWORD nAttributes = (S_ISDIR(oStatus.st_mode) ? FILE_ATTRIBUTE_DIRECTORY : 0) |
                                  (S_ISLNK(oStatus.st_mode) ? FILE_ATTRIBUTE_REPARSE_POINT : 0) |
                                  (IsReadOnly(oStatus.st_mode) ? FILE_ATTRIBUTE_READONLY : 0);
        return nAttributes ? nAttributes : FILE_ATTRIBUTE_NORMAL;
    });
}

BOOL win32::CreateDirectoryA(LPCSTR pszPath, LPSECURITY_ATTRIBUTES pSecurity)
{
    if (pSecurity)
        return Fail(ERROR_NOT_SUPPORTED, FALSE);
    return OrOutOfMemory(FALSE, [&] {
        const NativePath oPath(pszPath);
        return ::mkdir(oPath, nNewFolderMode) == 0 ? TRUE : FailOnPath(oPath, FALSE);
    });
}

BOOL win32::DeleteFileA(LPCSTR pszPath)
{
    return OrOutOfMemory(FALSE, [&] {
        const NativePath oPath(pszPath);
        struct stat oStatus;
        if (::lstat(oPath, &oStatus) == 0 && S_ISREG(oStatus.st_mode))
        {
            if (IsReadOnly(oStatus.st_mode))
                return Fail(ERROR_ACCESS_DENIED, FALSE);
            if (IsInUse(oPath))
                return Fail(ERROR_SHARING_VIOLATION, FALSE);
        }
        return ::unlink(oPath) == 0 ? TRUE : FailOnPath(oPath, FALSE);
    });
}

BOOL win32::RemoveDirectoryA(LPCSTR pszPath)
{
    return OrOutOfMemory(FALSE, [&] {
        const NativePath oPath(pszPath);
        if (::rmdir(oPath) == 0 || (errno == ENOTDIR && IsLinkToFolder(oPath) && ::unlink(oPath) == 0))
            return TRUE;
        return errno == ENOTDIR && Exists(oPath) ? Fail(ERROR_DIRECTORY, FALSE) : FailOnPath(oPath, FALSE);
    });
}
