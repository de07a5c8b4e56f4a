#include "RegistryFile.h"

#include "Descriptor.h"
#include "Errno.h"
#include "Sqlite.h"

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <filesystem>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace
{
const char szMachinePath[] = "/var/lib/zevrinutils/registry.db";
const char szUserPath[] = "zevrinutils/registry.db";   // in the account's folder for data

// The first bytes of a database, with the terminator, and the four that tell whose it is.
const char szMagic[] = "SQLite format 3";
constexpr std::size_t nIdPlace = 68;
constexpr unsigned char anId[] = {'Z', 'V', 'U', 'R'};
constexpr off_t nPageSize = 4096;

// A path is that of the root, HKEY_LOCAL_MACHINE, which has number 0 and no row, continued without a backslash in
// front; it and "folded" are in capitals, and the names are as they were first spelled.
const char szSchema[] = R"(
    PRAGMA page_size = 4096;
    PRAGMA journal_mode = WAL;
    PRAGMA application_id = 0x5A565552;
    BEGIN;
    CREATE TABLE keys (
        id     INTEGER PRIMARY KEY,
        parent INTEGER NOT NULL,
        path   TEXT NOT NULL UNIQUE,
        name   TEXT NOT NULL
    );
    CREATE INDEX subkeys ON keys (parent, path);
    CREATE TABLE data (
        key    INTEGER NOT NULL REFERENCES keys,
        folded TEXT NOT NULL,
        name   TEXT NOT NULL,
        type   INTEGER NOT NULL,
        bytes  BLOB NOT NULL,
        PRIMARY KEY (key, folded)
    ) WITHOUT ROWID;
    PRAGMA user_version = 1;
    COMMIT;
)";

// What is not there can be written if the nearest folder that is can.
bool CanWrite(std::filesystem::path oPath)
{
    std::error_code oIgnored;
    while (!std::filesystem::exists(oPath, oIgnored) && oPath.has_relative_path())
        oPath = oPath.parent_path();
    return faccessat(AT_FDCWD, oPath.c_str(), W_OK, AT_EACCESS) == 0;
}

std::filesystem::path UserPath()
{
    if (const char* const pszData = std::getenv("XDG_DATA_HOME"); pszData && *pszData == '/')
        return std::filesystem::path(pszData) / szUserPath;
    const char* const pszHome = std::getenv("HOME");
    return std::filesystem::path(pszHome ? pszHome : "/") / ".local/share" / szUserPath;
}

Descriptor OpenForReading(const char* pszPath, int nFlags)
{
    Descriptor oFile(::open(pszPath, O_RDONLY | O_CLOEXEC | nFlags));
    if (!oFile)
        throw RegistryFailure{ErrorOfErrno(errno)};
    return oFile;
}
}

std::string RegistryPath()
{
    std::error_code oIgnored;
    // An account's own variables must not lead a program that runs with another's rights.
    if (const char* const pszPath = secure_getenv("ZEVRIN_REGISTRY"); pszPath && *pszPath)
        return std::filesystem::absolute(pszPath, oIgnored);
    const std::filesystem::path oMachine(szMachinePath);
    return CanWrite(oMachine) && CanWrite(oMachine.parent_path()) ? oMachine : UserPath();
}

// Made under another name and then linked, so that it is there whole or not at all, whenever the process ends.
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

    const std::string strNew = strPath + ".new";
    // The journal of a database that somebody removed would be taken for the new one's.
    for (const auto& strStale : {strNew, strNew + "-journal", strNew + "-wal", strPath + "-wal", strPath + "-shm"})
        ::unlink(strStale.c_str());
    SqliteConnection(strNew, SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE).Execute(szSchema);
    if (::link(strNew.c_str(), strPath.c_str()) != 0)
        throw RegistryFailure{ErrorOfErrno(errno)};
    ::unlink(strNew.c_str());
}

void RequireRegistryFile(const std::string& strPath)
{
    const Descriptor oFile = OpenForReading(strPath.c_str(), O_NONBLOCK);   // a pipe may lie there
    char achBytes[nIdPlace + sizeof anId];
    if (::read(oFile.Get(), achBytes, sizeof achBytes) != sizeof achBytes ||
        std::memcmp(achBytes, szMagic, sizeof szMagic) != 0 || std::memcmp(achBytes + nIdPlace, anId, sizeof anId) != 0)
        throw RegistryFailure{ERROR_NOT_REGISTRY_FILE};
    struct stat oStatus;
    if (::fstat(oFile.Get(), &oStatus) != 0 || oStatus.st_size % nPageSize != 0)
        throw RegistryFailure{ERROR_BADDB};   // SQLite would take the rest of a page that is cut off as zero
}
