// The failures of SQLite in the numbers of Windows, and the one that passes by itself.
#include "Sqlite.h"

#include "util/Translation.h"

#include <chrono>
#include <cstdint>
#include <thread>

namespace
{
constexpr auto nWait = std::chrono::milliseconds(1);
constexpr int nMostRecoveryWaits = 1000;

constexpr Translation<int, DWORD> s_aErrors[] = {
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

// A code may say more than its lowest byte, which then says of what kind it is.
void Check(int nResult)
{
    const DWORD nOfKind = Translate(s_aErrors, nResult & 0xFF, ERROR_REGISTRY_IO_FAILED);
    Require(nResult == SQLITE_OK, Translate(s_aErrors, nResult, nOfKind));
}

// A process that may only read, and comes while another changes the log's index, takes it for one that is damaged and
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

SqliteConnection::SqliteConnection(const std::string& strPath, int nFlags)
{
    sqlite3* pConnection = nullptr;
    // Whoever has the connection has a lock for it; and the kinds of a failure mean different things to us.
    nFlags |= SQLITE_OPEN_NOMUTEX | SQLITE_OPEN_EXRESCODE;
    const int nResult = sqlite3_open_v2(strPath.c_str(), &pConnection, nFlags, nullptr);
    m_pConnection.reset(pConnection);   // there is one after most failures too
    Check(nResult);
}

void SqliteConnection::Execute(const char* pszSql)
{
    Check(OnceReadable([&] { return sqlite3_exec(Get(), pszSql, nullptr, nullptr, nullptr); }));
}

void SqliteConnection::SetPragma(const std::string& strName, std::int64_t nValue)
{
    Execute(("PRAGMA " + strName + " = " + std::to_string(nValue)).c_str());
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
    Check(nResult == SQLITE_ROW || nResult == SQLITE_DONE ? SQLITE_OK : nResult);
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
