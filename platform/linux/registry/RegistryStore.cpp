// The statements of the registry, each a transaction; a file that was changed by other hands is refused as a whole.
#include "RegistryStore.h"

#include "RegistryFile.h"
#include "platform/linux/base/Unicode.h"

#include <algorithm>
#include <chrono>
#include <cstdint>
#include <filesystem>
#include <thread>

namespace
{
constexpr auto nFirstWait = std::chrono::microseconds(50);
constexpr auto nLongestWait = std::chrono::milliseconds(5);
constexpr int nMostWaits = 12000;   // a minute

// For another process to end its write, which takes some microseconds unless it is stopped in the middle.
int WaitForOthers(void*, int nWaits)
{
    std::this_thread::sleep_for(std::min<std::chrono::nanoseconds>(nFirstWait * (nWaits + 1), nLongestWait));
    return nWaits < nMostWaits;
}

SqliteConnection Connect(const std::string& strPath)
{
    std::error_code oIgnored;
    if (!std::filesystem::exists(strPath, oIgnored))
        CreateRegistryFile(strPath);
    RequireRegistryFile(strPath);

    SqliteConnection oConnection(strPath, SQLITE_OPEN_READWRITE);   // or for reading alone, if that is all we may
    sqlite3_busy_handler(oConnection.Get(), &WaitForOthers, nullptr);
    // Until the file has proved sound, closing it writes nothing to it.
    sqlite3_db_config(oConnection.Get(), SQLITE_DBCONFIG_NO_CKPT_ON_CLOSE, 1, nullptr);
    // The log and its index stay when the last process closes them: who may only read cannot make them.
    int nStay = 1;
    sqlite3_file_control(oConnection.Get(), nullptr, SQLITE_FCNTL_PERSIST_WAL, &nStay);
    oConnection.Execute("PRAGMA synchronous = NORMAL; PRAGMA cell_size_check = ON; PRAGMA journal_size_limit = 0");
    Require(oConnection.QueryNumber("PRAGMA user_version") == nRegistryVersion, ERROR_NOT_REGISTRY_FILE);
    // A view or a trigger in it could do anything.
    Require(oConnection.QueryText("SELECT group_concat(sql, ';' || char(10)) FROM sqlite_schema") == szRegistryTables &&
                oConnection.QueryText("PRAGMA integrity_check(1)") == "ok",
            ERROR_BADDB);
    sqlite3_db_config(oConnection.Get(), SQLITE_DBCONFIG_NO_CKPT_ON_CLOSE, 0, nullptr);
    return oConnection;
}

// Undone unless it is committed. Takes the lock of writers at its beginning: a transaction that reads first could not
// get it any more once another process has written.
class Transaction
{
public:
    explicit Transaction(SqliteConnection& oConnection) : m_oConnection(oConnection)
    {
        m_oConnection.Execute("BEGIN IMMEDIATE");
    }
    ~Transaction()
    {
        if (!sqlite3_get_autocommit(m_oConnection.Get()))
            sqlite3_exec(m_oConnection.Get(), "ROLLBACK", nullptr, nullptr, nullptr);
    }
    Transaction(const Transaction&) = delete;
    Transaction& operator=(const Transaction&) = delete;

    void Commit() { m_oConnection.Execute("COMMIT"); }

private:
    SqliteConnection& m_oConnection;
};
}

RegistryStore::RegistryStore(const std::string& strPath) : m_oConnection(Connect(strPath)) {}

std::optional<std::int64_t> RegistryStore::FindKey(std::string_view strPath)
{
    if (strPath.empty())
        return 0;
    SqliteRun oRun(m_oFindKey, strPath);
    return oRun.Next() ? std::optional(oRun.Number(0)) : std::nullopt;
}

std::int64_t RegistryStore::CreateKey(std::int64_t nParent, std::string strParentPath, std::string_view strNames)
{
    Transaction oTransaction(m_oConnection);
    std::int64_t nKey = nParent;
    std::string strPath = std::move(strParentPath);
    while (!strNames.empty())
    {
        const auto strName = strNames.substr(0, strNames.find('\\'));
        strNames.remove_prefix(std::min(strName.size() + 1, strNames.size()));
        strPath.append(strPath.empty() ? "" : "\\").append(FoldCase(strName));
        if (const auto nFound = FindKey(strPath))
        {
            nKey = *nFound;
            continue;
        }
        SqliteRun(m_oAddKey, nKey, strPath, strName).Next();
        nKey = sqlite3_last_insert_rowid(m_oConnection.Get());
    }
    oTransaction.Commit();
    return nKey;
}

std::optional<RegistryEntry> RegistryStore::ReadValue(std::int64_t nKey, std::string_view strName)
{
    const std::string strFolded = FoldCase(strName);
    SqliteRun oRun(m_oReadValue, nKey, strFolded);
    if (!oRun.Next())
        return std::nullopt;
    return RegistryEntry{{}, static_cast<DWORD>(oRun.Number(0)), std::string(oRun.Bytes(1))};
}

void RegistryStore::WriteValue(std::int64_t nKey, std::string_view strName, DWORD nType, std::span<const BYTE> oBytes)
{
    const std::string strFolded = FoldCase(strName);
    SqliteRun(m_oWriteValue, nKey, strFolded, strName, std::int64_t{nType}, oBytes).Next();
}

bool RegistryStore::DeleteValue(std::int64_t nKey, std::string_view strName)
{
    const std::string strFolded = FoldCase(strName);
    SqliteRun(m_oDeleteValue, nKey, strFolded).Next();
    return sqlite3_changes(m_oConnection.Get()) > 0;
}

std::optional<RegistryEntry> RegistryStore::ListSubKeys(std::int64_t nKey, DWORD nIndex, RegistryCursor& oCursor)
{
    return m_oSubKeys.Read(nKey, nIndex, oCursor);
}

std::optional<RegistryEntry> RegistryStore::ListValues(std::int64_t nKey, DWORD nIndex, RegistryCursor& oCursor)
{
    return m_oValues.Read(nKey, nIndex, oCursor);
}

std::optional<RegistryEntry> RegistryStore::Listing::Read(std::int64_t nKey, DWORD nIndex,
                                                          RegistryCursor& oCursor) const
{
    const auto read = [&](SqliteRun oRun) -> std::optional<RegistryEntry> {
        if (!oRun.Next())
            return std::nullopt;
        oCursor = {nIndex + 1, std::string(oRun.Bytes(0))};
        return RegistryEntry{std::string(oRun.Bytes(1)), static_cast<DWORD>(oRun.Number(2)),
                             std::string(oRun.Bytes(3))};
    };
    if (nIndex != 0 && nIndex == oCursor.nNext)
        return read(SqliteRun(oBehind, nKey, oCursor.strLast));
    return read(SqliteRun(oAt, nKey, std::int64_t{nIndex}));
}
