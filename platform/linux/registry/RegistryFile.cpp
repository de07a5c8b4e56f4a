// A file of SQLite is made and judged here before SQLite itself is let near it.
#include "RegistryFile.h"

#include "Sqlite.h"
#include "platform/linux/base/AccountRecord.h"
#include "platform/linux/base/Descriptor.h"

#include <cerrno>
#include <cstdint>
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
constexpr char szPathInData[] = "zevrinutils/registry.db";
constexpr char szMachineData[] = "/var/lib";
constexpr char szAccountData[] = ".local/share";   // in its home

// The files that SQLite puts beside a database: the first two hold what may not be lost.
constexpr char szLog[] = "-wal";
constexpr char szJournal[] = "-journal";
constexpr const char* s_apszBeside[] = {szJournal, szLog, "-shm"};

// The first bytes of a database, with the terminator, and where four stand that tell whose it is, the highest first.
constexpr char szMagic[] = "SQLite format 3";
constexpr std::size_t nIdPlace = 68;
constexpr std::uint32_t nId = 0x5A565552;   // "ZVUR"
constexpr off_t nPageSize = 4096;

// A path that leads to nothing yet can be written if the nearest folder on it that is there can.
bool CanWrite(std::filesystem::path oPath)
{
    std::error_code oIgnored;
    while (!std::filesystem::exists(oPath, oIgnored) && oPath.has_relative_path())
        oPath = oPath.parent_path();
    return faccessat(AT_FDCWD, oPath.c_str(), W_OK, AT_EACCESS) == 0;   // by the rights that it runs with
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
        return oData / szPathInData;
    const auto oHome = FolderOfVariable("HOME");
    return (oHome.empty() ? HomeOfAccount() : oHome) / szAccountData / szPathInData;
}

Descriptor OpenForReading(const char* pszPath, int nFlags)
{
    return Descriptor(OrThrowErrno(::open(pszPath, O_RDONLY | O_CLOEXEC | nFlags)));
}

bool HoldsBytes(const std::string& strPath)
{
    struct stat oStatus;
    return ::stat(strPath.c_str(), &oStatus) == 0 && oStatus.st_size > 0;
}

std::uint32_t NumberAt(const unsigned char* p)
{
    return static_cast<std::uint32_t>(p[0] << 24 | p[1] << 16 | p[2] << 8 | p[3]);
}

void RemoveJournals(const std::string& strPath)
{
    for (const char* const pszEnd : s_apszBeside)
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
    if (errno == EEXIST)
        ThrowErrno();
    OrThrowErrno(::link(pszFrom, pszTo));
}
}

std::string RegistryPath()
{
    std::error_code oIgnored;
    if (const char* const pszPath = secure_getenv("ZEVRIN_REGISTRY"); pszPath && *pszPath)
        return std::filesystem::absolute(pszPath, oIgnored);
    const auto oMachine = std::filesystem::path(szMachineData) / szPathInData;
    return CanWrite(oMachine) && CanWrite(oMachine.parent_path()) ? oMachine : UserPath();
}

// Made under another name, so that it is there whole or not at all, whenever the process ends. The log comes last:
// until then each step is in the file itself, and a full disk is noticed.
void CreateRegistryFile(const std::string& strPath)
{
    std::error_code oError;
    const auto oFolder = std::filesystem::path(strPath).parent_path();
    std::filesystem::create_directories(oFolder, oError);
    Require(!oError, ErrorOfErrno(oError.value()));
    // Of processes that come at once the first makes it, and the others find it made.
    const Descriptor oFolderFile = OpenForReading(oFolder.c_str(), O_DIRECTORY);
    while (flock(oFolderFile.Get(), LOCK_EX) != 0)
        if (errno != EINTR)
            ThrowErrno();
    if (std::filesystem::exists(strPath, oError))
        return;   // another process was faster

    // The journals of a database that somebody removed would be taken for the new one's.
    Require(!HoldsBytes(strPath + szLog) && !HoldsBytes(strPath + szJournal), ERROR_BADDB);
    RemoveJournals(strPath);
    const Unfinished oNew(strPath + ".new");
    {
        SqliteConnection oConnection(oNew.strPath, SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE);
        oConnection.SetPragma("page_size", nPageSize);
        oConnection.SetPragma("application_id", nId);
        oConnection.Execute("BEGIN");
        oConnection.Execute(szRegistryTables);
        oConnection.SetPragma("user_version", nRegistryVersion);
        oConnection.Execute("COMMIT");
        Require(oConnection.QueryText("PRAGMA journal_mode = WAL") == "wal", ERROR_REGISTRY_IO_FAILED);
    }
    Rename(oNew.strPath.c_str(), strPath.c_str());
}

void RequireRegistryFile(const std::string& strPath)
{
    // Asked first: a log is emptied only after all of it is in the file.
    const bool bHasLog = HoldsBytes(strPath + szLog);
    const Descriptor oFile = OpenForReading(strPath.c_str(), O_NONBLOCK);   // a pipe may lie there
    unsigned char achBytes[nIdPlace + sizeof nId];
    const bool bRead = ::read(oFile.Get(), achBytes, sizeof achBytes) == ssize_t{sizeof achBytes};
    Require(bRead && std::memcmp(achBytes, szMagic, sizeof szMagic) == 0 && NumberAt(achBytes + nIdPlace) == nId,
            ERROR_NOT_REGISTRY_FILE);
    // SQLite would take the rest of a page that is cut off as zero, unless the page is in the log.
    struct stat oStatus;
    OrThrowErrno(::fstat(oFile.Get(), &oStatus));
    Require(bHasLog || oStatus.st_size % nPageSize == 0, ERROR_BADDB);
}
