// Listings of folders.
#include "platform/linux/base/Buffers.h"
#include "platform/linux/base/Handles.h"
#include "platform/linux/base/Paths.h"
#include "util/Owned.h"
#include "win32/Kernel.h"

#include <cerrno>
#include <cstdint>
#include <cstring>
#include <string_view>
#include <vector>

#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>

namespace
{
using Folder = Owned<DIR, ::closedir>;

// Windows delivers these two first, whatever the order of the file system.
constexpr const char* s_apszDots[] = {".", ".."};

bool IsDots(const char* pszName) noexcept
{
    return std::string_view(pszName) == s_apszDots[0] || std::string_view(pszName) == s_apszDots[1];
}

// Reads the folder when it is made, and keeps nothing open: a walk may go down any number of levels, and after a
// failure leaves the listing of each of them behind.
class Listing final : public HandleObject
{
public:
    explicit Listing(const Folder& pFolder)
    {
        // readdir gives null at the end and on failure; errno alone tells them apart.
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

    // False when there are no more, to which every listing comes: that is no failure.
    bool Next(WIN32_FIND_DATAA& oFound)
    {
        if (m_nDots < std::size(s_apszDots))
            return Give(s_apszDots[m_nDots++], 0, oFound);
        if (m_nNext < m_oEntries.size())
        {
            const Entry& oEntry = m_oEntries[m_nNext++];
            return Give(oEntry.strName, oEntry.nSize, oFound);
        }
        Require(m_nErrno == 0, ErrorOfErrno(m_nErrno));
        return false;
    }

private:
    struct Entry
    {
        std::string strName;
        std::uint64_t nSize;
    };

    static bool Give(std::string_view strName, std::uint64_t nSize, WIN32_FIND_DATAA& oFound)
    {
        oFound.nFileSizeHigh = static_cast<DWORD>(nSize >> 32);
        oFound.nFileSizeLow = static_cast<DWORD>(nSize);
        CopyCut(strName, oFound.cFileName, MAX_PATH);
        return true;
    }

    // Nothing but a file has one. Most file systems tell the type with the name, which spares a look at each folder.
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

// The reason why nothing could be listed. A folder that is missing is no missing file.
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
    return ResultOr(INVALID_HANDLE_VALUE, [&] {
        std::string strFolder(NativePath{pszPattern});
        RequireSupported(strFolder.ends_with(strAll));
        strFolder.erase(strFolder.size() - strAll.size());
        const char* const pszFolder = strFolder.empty() ? "/" : strFolder.c_str();
        const Folder pFolder(::opendir(pszFolder));
        const DWORD nError = pFolder ? ERROR_SUCCESS : ErrorOfListing(pszFolder);
        Require(pFolder != nullptr, nError);
        const auto pListing = std::make_shared<Listing>(pFolder);
        pListing->Next(*pFound);
        return OpenHandle(pListing);
    });
}

BOOL win32::FindNextFileA(HANDLE hFind, LPWIN32_FIND_DATAA pFound)
{
    bool bMore = false;
    if (Succeeds([&] { bMore = ObjectOf<Listing>(hFind)->Next(*pFound); }) && !bMore)
        SetLastError(ERROR_NO_MORE_FILES);
    return bMore;
}

BOOL win32::FindClose(HANDLE hFind)
{
    return Succeeds([&] { TakeObjectOf<Listing>(hFind); });
}
