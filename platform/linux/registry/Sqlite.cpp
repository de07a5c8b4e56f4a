#include "Sqlite.h"

#include <chrono>
#include <cstdint>
#include <thread>

namespace
{
constexpr auto nWait = std::chrono::milliseconds(1);
constexpr int nMostRecoveryWaits = 1000;

struct Translation
{
    int nResult;
    DWORD nError;
};
constexpr Translation s_aTranslations[] = {
    {SQLITE_AUTH, ERROR_ACCESS_DENIED},
    {SQLITE_BUSY, ERROR_BUSY},
    {SQLITE_CANTOPEN, ERROR_ACCESS_DENIED},
    {SQLITE_CORRUPT, ERROR_BADDB},
    {SQLITE_ERROR, ERROR_BADDB},   // our statements are sound, so its tables are not
    {SQLITE_FULL, ERROR_DISK_FULL},
    {SQLITE_IOERR_SHMSIZE, ERROR_DISK_FULL},   // no room for the log's index
    {SQLITE_LOCKED, ERROR_BUSY},
    {SQLITE_NOMEM, ERROR_NOT_ENOUGH_MEMORY},
    {SQLITE_NOTADB, ERROR_NOT_REGISTRY_FILE},
    {SQLITE_PERM, ERROR_ACCESS_DENIED},
    {SQLITE_READONLY, ERROR_ACCESS_DENIED},
    {SQLITE_TOOBIG, ERROR_INVALID_PARAMETER},
};

void Check(int nResult)
{
    if (nResult != SQLITE_OK)
        ThrowSqliteFailure(nResult);
}

// Who may only read, and comes while another process changes the log's index, takes it for one that is damaged and
// that it must not mend. A moment later it is whole.
template <class Call>
int OnceReadable(Call call)
{
    for (int nWaits = 0;; ++nWaits)
    {
        const int nResult = call();
        if (nResult != SQLITE_READONLY_RECOVERY || nWaits == nMostRecoveryWaits)
            return nResult;
        std::this_thread::sleep_for(nWait);
    }
}
}

void ThrowSqliteFailure(int nResult)
{
    for (const auto& [nFrom, nTo] : s_aTranslations)
        if (nFrom == nResult || nFrom == (nResult & 0xFF))
            throw RegistryFailure{nTo};
    throw RegistryFailure{ERROR_REGISTRY_IO_FAILED};
}

SqliteConnection::SqliteConnection(const std::string& strPath, int nFlags)
{
    sqlite3* pConnection = nullptr;
    nFlags |= SQLITE_OPEN_NOMUTEX | SQLITE_OPEN_EXRESCODE;
    const int nResult = sqlite3_open_v2(strPath.c_str(), &pConnection, nFlags, nullptr);
    m_pConnection.reset(pConnection);   // there is one after most failures too
    Check(nResult);
}

void SqliteConnection::Execute(const char* pszSql)
{
    Check(OnceReadable([&] { return sqlite3_exec(Get(), pszSql, nullptr, nullptr, nullptr); }));
}

std::int64_t SqliteConnection::QueryNumber(const char* pszSql)
{
    const SqliteStatement oStatement(*this, pszSql);
    SqliteRun oRun(oStatement);
    return oRun.Next() ? oRun.Number(0) : 0;
}

std::string SqliteConnection::QueryText(const char* pszSql)
{
    const SqliteStatement oStatement(*this, pszSql);
    SqliteRun oRun(oStatement);
    return std::string(oRun.Next() ? oRun.Bytes(0) : "");
}

SqliteStatement::SqliteStatement(const SqliteConnection& oConnection, const char* pszSql)
{
    sqlite3_stmt* pStatement = nullptr;
    Check(OnceReadable([&] {
        return sqlite3_prepare_v3(oConnection.Get(), pszSql, -1, SQLITE_PREPARE_PERSISTENT, &pStatement, nullptr);
    }));
    m_pStatement.reset(pStatement);
}

bool SqliteRun::Next()
{
    const int nResult = OnceReadable([this] { return sqlite3_step(m_pStatement); });
    if (nResult != SQLITE_ROW && nResult != SQLITE_DONE)
        ThrowSqliteFailure(nResult);
    return nResult == SQLITE_ROW;
}

std::string_view SqliteRun::Bytes(int nColumn) const
{
    const void* const pBytes = sqlite3_column_blob(m_pStatement, nColumn);   // null for none
    return {static_cast<const char*>(pBytes), static_cast<std::size_t>(sqlite3_column_bytes(m_pStatement, nColumn))};
}

void SqliteRun::Bind(int nIndex, std::int64_t nValue)
{
    Check(sqlite3_bind_int64(m_pStatement, nIndex, nValue));
}

void SqliteRun::Bind(int nIndex, std::string_view strText)
{
    Check(sqlite3_bind_text64(m_pStatement, nIndex, strText.data(), strText.size(), SQLITE_STATIC, SQLITE_UTF8));
}

// Without bytes too it is a blob: a null pointer would be NULL.
void SqliteRun::Bind(int nIndex, std::span<const BYTE> oBlob)
{
    const void* const pBytes = oBlob.empty() ? "" : static_cast<const void*>(oBlob.data());
    Check(sqlite3_bind_blob64(m_pStatement, nIndex, pBytes, oBlob.size(), SQLITE_STATIC));
}
