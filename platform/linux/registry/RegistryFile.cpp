#include "RegistryFile.h"

#include "Sqlite.h"
#include "platform/linux/base/AccountRecord.h"
#include "platform/linux/base/Descriptor.h"
#include "platform/linux/base/Errno.h"

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <filesystem>

#include <fcntl.h>
#include <pwd.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

// A path is that of the root, HKEY_LOCAL_MACHINE, which has number 0 and no row, continued without a backslash in
// front; it and "folded" are in capitals, and the names are as they were first spelled. Strict, because a listing goes
// on behind the text that it gave last: behind any text there is a blob, and it would never end.
const char szRegistryTables[] = R"(CREATE TABLE keys (
    id     INTEGER PRIMARY KEY,
    parent INTEGER NOT NULL,
    path   TEXT NOT NULL UNIQUE,
    name   TEXT NOT NULL
) STRICT;
CREATE INDEX subkeys ON keys (parent, path);
CREATE TABLE data (
    key    INTEGER NOT NULL REFERENCES keys,
    folded TEXT NOT NULL,
    name   TEXT NOT NULL,
    type   INTEGER NOT NULL,
    bytes  BLOB NOT NULL,
    PRIMARY KEY (key, folded)
) STRICT, WITHOUT ROWID)";

namespace
{
const char szMachinePath[] = "/var/lib/zevrinutils/registry.db";
const char szUserPath[] = "zevrinutils/registry.db";   // in the account's folder for data

// The first bytes of a database, with the terminator, and the four that tell whose it is.
const char szMagic[] = "SQLite format 3";
constexpr std::size_t nIdPlace = 68;
constexpr unsigned char anId[] = {'Z', 'V', 'U', 'R'};
constexpr off_t nPageSize = 4096;

// What is not there can be written if the nearest folder that is can.
bool CanWrite(std::filesystem::path oPath)
{
    std::error_code oIgnored;
    while (!std::filesystem::exists(oPath, oIgnored) && oPath.has_relative_path())
        oPath = oPath.parent_path();
    return faccessat(AT_FDCWD, oPath.c_str(), W_OK, AT_EACCESS) == 0;
}

// An account's own variables must not lead a program that runs with another's rights.
std::filesystem::path FolderOfVariable(const char* pszName)
{
    const char* const pszFolder = secure_getenv(pszName);
    return pszFolder && *pszFolder == '/' ? pszFolder : "";
}

std::filesystem::path HomeOfAccount()
{
    const AccountRecord oAccount(&::getpwuid_r, ::geteuid());
    return oAccount && oAccount->pw_dir && *oAccount->pw_dir == '/' ? oAccount->pw_dir : "/";
}

std::filesystem::path UserPath()
{
    if (const auto oData = FolderOfVariable("XDG_DATA_HOME"); !oData.empty())
        return oData / szUserPath;
    const auto oHome = FolderOfVariable("HOME");
    return (oHome.empty() ? HomeOfAccount() : oHome) / ".local/share" / szUserPath;
}

Descriptor OpenForReading(const char* pszPath, int nFlags)
{
    Descriptor oFile(::open(pszPath, O_RDONLY | O_CLOEXEC | nFlags));
    if (!oFile)
        throw RegistryFailure{ErrorOfErrno(errno)};
    return oFile;
}

bool HoldsBytes(const std::string& strPath)
{
    struct stat oStatus;
    return ::stat(strPath.c_str(), &oStatus) == 0 && oStatus.st_size > 0;
}

void RemoveJournals(const std::string& strPath)
{
    for (const char* pszEnd : {"-journal", "-wal", "-shm"})
        ::unlink((strPath + pszEnd).c_str());
}

// A database in the making. What a process that was killed has left of one goes first, and this one at the end, unless
// it has got its name by then.
struct Unfinished
{
    explicit Unfinished(std::string str) : strPath(std::move(str)) { Remove(); }
    ~Unfinished() { Remove(); }
    Unfinished(const Unfinished&) = delete;
    Unfinished& operator=(const Unfinished&) = delete;

    void Remove() const
    {
        ::unlink(strPath.c_str());
        RemoveJournals(strPath);
    }

    const std::string strPath;
};

// Replaces nothing. Some file systems know only the one way of that, some only the other.
void Rename(const char* pszFrom, const char* pszTo)
{
    if (::renameat2(AT_FDCWD, pszFrom, AT_FDCWD, pszTo, RENAME_NOREPLACE) == 0)
        return;
    if (errno == EEXIST || ::link(pszFrom, pszTo) != 0)
        throw RegistryFailure{ErrorOfErrno(errno)};
}
}

std::string RegistryPath()
{
    std::error_code oIgnored;
    if (const char* const pszPath = secure_getenv("ZEVRIN_REGISTRY"); pszPath && *pszPath)
        return std::filesystem::absolute(pszPath, oIgnored);
    const std::filesystem::path oMachine(szMachinePath);
    return CanWrite(oMachine) && CanWrite(oMachine.parent_path()) ? oMachine : UserPath();
}

// Made under another name, so that it is there whole or not at all, whenever the process ends. The log comes last:
// until then each step is in the file itself, and a full disk is noticed.
void CreateRegistryFile(const std::string& strPath)
{
    std::error_code oError;
    const auto oFolder = std::filesystem::path(strPath).parent_path();
    std::filesystem::create_directories(oFolder, oError);
    if (oError)
        throw RegistryFailure{ErrorOfErrno(oError.value())};
    const Descriptor oFolderFile = OpenForReading(oFolder.c_str(), O_DIRECTORY);
    while (flock(oFolderFile.Get(), LOCK_EX) != 0)
        if (errno != EINTR)
            throw RegistryFailure{ErrorOfErrno(errno)};
    if (std::filesystem::exists(strPath, oError))
        return;   // another process was faster

    // The journals of a database that somebody removed would be taken for the new one's.
    if (HoldsBytes(strPath + "-wal") || HoldsBytes(strPath + "-journal"))
        throw RegistryFailure{ERROR_BADDB};
    RemoveJournals(strPath);
    const Unfinished oNew(strPath + ".new");
    {
        SqliteConnection oConnection(oNew.strPath, SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE);
        oConnection.Execute("PRAGMA page_size = 4096; PRAGMA application_id = 0x5A565552; BEGIN");
        oConnection.Execute(szRegistryTables);
        oConnection.Execute("PRAGMA user_version = 1; COMMIT");
        if (oConnection.QueryText("PRAGMA journal_mode = WAL") != "wal")
            throw RegistryFailure{ERROR_REGISTRY_IO_FAILED};
    }
    Rename(oNew.strPath.c_str(), strPath.c_str());
}

void RequireRegistryFile(const std::string& strPath)
{
    // Asked first: a log is emptied only after all of it is in the file.
    const bool bHasLog = HoldsBytes(strPath + "-wal");
    const Descriptor oFile = OpenForReading(strPath.c_str(), O_NONBLOCK);   // a pipe may lie there
    char achBytes[nIdPlace + sizeof anId];
    if (::read(oFile.Get(), achBytes, sizeof achBytes) != sizeof achBytes ||
        std::memcmp(achBytes, szMagic, sizeof szMagic) != 0 || std::memcmp(achBytes + nIdPlace, anId, sizeof anId) != 0)
        throw RegistryFailure{ERROR_NOT_REGISTRY_FILE};
    // SQLite would take the rest of a page that is cut off as zero, unless the page is in the log.
    struct stat oStatus;
    if (::fstat(oFile.Get(), &oStatus) != 0 || (!bHasLog && oStatus.st_size % nPageSize != 0))
        throw RegistryFailure{ERROR_BADDB};
}
