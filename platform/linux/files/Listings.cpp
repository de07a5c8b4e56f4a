// Listing folders.
#include "platform/linux/base/KernelObject.h"
#include "platform/linux/base/Paths.h"
#include "win32/Files.h"

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <string_view>
#include <vector>

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>

namespace
{
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

// Reads the folder when it is made, and keeps nothing open: a walk may go down any number of levels, and after a
// failure leaves the listing of each of them behind.
class Listing final : public KernelObject
{
public:
    explicit Listing(const Folder& pFolder)
    {
        errno = 0;
        while (const dirent* const pEntry = ::readdir(pFolder.get()))
        {
            // A backslash in a name would be read as a separator, and lead a walk to a stranger or out of its tree.
            if (!IsDots(pEntry->d_name) && !std::strchr(pEntry->d_name, '\\'))
                m_oEntries.push_back({pEntry->d_name, SizeOf(::dirfd(pFolder.get()), *pEntry)});
            errno = 0;
        }
        m_nErrno = errno;
    }

    BOOL Next(WIN32_FIND_DATAA& oFound)
    {
        if (m_nDots < std::size(s_apszDots))
            return Give(s_apszDots[m_nDots++], 0, oFound);
        if (m_nNext == m_oEntries.size())
            return Fail(m_nErrno ? ErrorOfErrno(m_nErrno) : ERROR_NO_MORE_FILES, FALSE);
        const Entry& oEntry = m_oEntries[m_nNext++];
        return Give(oEntry.strName, oEntry.nSize, oFound);
    }

private:
    struct Entry
    {
        std::string strName;
        std::uint64_t nSize;
    };

    static BOOL Give(std::string_view strName, std::uint64_t nSize, WIN32_FIND_DATAA& oFound)
    {
        oFound.nFileSizeHigh = static_cast<DWORD>(nSize >> 32);
        oFound.nFileSizeLow = static_cast<DWORD>(nSize);
        strName.copy(oFound.cFileName, MAX_PATH - 1);
        oFound.cFileName[std::min(strName.size(), MAX_PATH - 1)] = 0;
        return TRUE;
    }

    // Nothing but a file has one.
    static std::uint64_t SizeOf(int nFolder, const dirent& oEntry)
    {
        struct stat oStatus;
        if ((oEntry.d_type != DT_REG && oEntry.d_type != DT_UNKNOWN) ||
            ::fstatat(nFolder, oEntry.d_name, &oStatus, AT_SYMLINK_NOFOLLOW) != 0 || !S_ISREG(oStatus.st_mode))
            return 0;
        return static_cast<std::uint64_t>(oStatus.st_size);
    }

    std::vector<Entry> m_oEntries;
    std::size_t m_nNext = 0;
    std::size_t m_nDots = 0;   // delivered so far
    int m_nErrno = 0;          // why the entries end, where not because there are no more
};

// A folder that is missing is no missing file.
DWORD ErrorOfListing(const char* pszNativePath)
{
    const int nErrno = errno;
    if (nErrno == ENOTDIR && Exists(pszNativePath))
        return ERROR_DIRECTORY;
    return nErrno == ENOENT ? ERROR_PATH_NOT_FOUND : ErrorOfErrno(nErrno);
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
        const Folder pFolder(::opendir(pszFolder));
        if (!pFolder)
            return Fail(ErrorOfListing(pszFolder), INVALID_HANDLE_VALUE);
        const auto pListing = std::make_shared<Listing>(pFolder);
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
