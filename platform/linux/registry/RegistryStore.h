// The content of the registry: keys by their path, values by key and name.
#pragma once

#include "Sqlite.h"

#include <atomic>
#include <cstdint>
#include <optional>

// A value, or a key in a listing.
struct RegistryEntry
{
    std::string strName;
    DWORD nType = 0;
    std::string strBytes;
};

// A place in a listing. Counting on from it goes behind the entry given last, whatever has been written since, so
// that an entry that stays is listed once; any other index counts from the start.
struct RegistryCursor
{
    DWORD nNext = 0;
    std::string strLast;
};

// A connection to the database, for one thread at a time. Paths are in capitals, and names as callers write them.
// All operations throw a Failure where they fail.
//
// A write is a transaction in a write-ahead log: once reported it is seen by all processes and outlives this one.
// It is flushed to the disk later, as on Windows: a machine that fails may lose the last ones, but its file is
// sound.
class RegistryStore
{
public:
    // Opens the file, and makes it if there is none. One that is damaged or no registry is left as it is.
    explicit RegistryStore(const std::string& strPath);

    // No two stores of a process have the same. The numbers of keys are good for one store alone.
    std::uint64_t Serial() const noexcept { return m_nSerial; }

    bool IsWritable() const { return sqlite3_db_readonly(m_oConnection.Get(), "main") == 0; }

    std::optional<std::int64_t> FindKey(std::string_view strPath);
    // The key of that name, or names with a backslash between them, under another: all that are missing are made.
    std::int64_t CreateKey(std::int64_t nParent, std::string strParentPath, std::string_view strNames);

    std::optional<RegistryEntry> ReadValue(std::int64_t nKey, std::string_view strName);
    void WriteValue(std::int64_t nKey, std::string_view strName, DWORD nType, std::span<const BYTE> oBytes);
    bool DeleteValue(std::int64_t nKey, std::string_view strName);   // false if there is none

    // Entry number N, in the order of the names in capitals.
    std::optional<RegistryEntry> ListSubKeys(std::int64_t nKey, DWORD nIndex, RegistryCursor& oCursor);
    std::optional<RegistryEntry> ListValues(std::int64_t nKey, DWORD nIndex, RegistryCursor& oCursor);

private:
    // Two statements for a listing, with the same columns: folded name, name, type, bytes.
    struct Listing
    {
        SqliteStatement oAt;
        SqliteStatement oBehind;

        std::optional<RegistryEntry> Read(std::int64_t nKey, DWORD nIndex, RegistryCursor& oCursor) const;
    };

    static inline std::atomic<std::uint64_t> s_nStores = 0;

    const std::uint64_t m_nSerial = ++s_nStores;
    SqliteConnection m_oConnection;
    SqliteStatement m_oFindKey{m_oConnection, "SELECT id FROM keys WHERE path = ?1"};
    SqliteStatement m_oAddKey{m_oConnection, "INSERT INTO keys (parent, path, name) VALUES (?1, ?2, ?3)"};
    SqliteStatement m_oReadValue{m_oConnection, "SELECT type, bytes FROM data WHERE key = ?1 AND folded = ?2"};
    SqliteStatement m_oWriteValue{m_oConnection,
                                  "INSERT INTO data (key, folded, name, type, bytes) VALUES (?1, ?2, ?3, ?4, ?5) "
                                  "ON CONFLICT DO UPDATE SET type = excluded.type, bytes = excluded.bytes"};
    SqliteStatement m_oDeleteValue{m_oConnection, "DELETE FROM data WHERE key = ?1 AND folded = ?2"};
    Listing m_oSubKeys{
        {m_oConnection, "SELECT path, name, 0, '' FROM keys WHERE parent = ?1 ORDER BY path LIMIT 1 OFFSET ?2"},
        {m_oConnection, "SELECT path, name, 0, '' FROM keys WHERE parent = ?1 AND path > ?2 ORDER BY path LIMIT 1"}};
    Listing m_oValues{
        {m_oConnection, "SELECT folded, name, type, bytes FROM data WHERE key = ?1 ORDER BY folded LIMIT 1 OFFSET ?2"},
        {m_oConnection,
         "SELECT folded, name, type, bytes FROM data WHERE key = ?1 AND folded > ?2 ORDER BY folded LIMIT 1"}};
};
