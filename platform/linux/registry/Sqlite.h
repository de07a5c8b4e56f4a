// SQLite for the registry, with failures as exceptions and results that clean up after themselves.
#pragma once

#include "platform/linux/base/Failure.h"
#include "util/Owned.h"

#include <cstdint>
#include <span>
#include <string>
#include <string_view>

#include <sqlite3.h>

// A connection, for one thread at a time. Not to be carried into a child process.
class SqliteConnection
{
public:
    // The flags are those of sqlite3_open_v2. The name is no pattern and no URI.
    SqliteConnection(const std::string& strPath, int nFlags);

    void Execute(const char* pszSql);
    void SetPragma(const std::string& strName, std::int64_t nValue);
    std::int64_t QueryNumber(const char* pszSql);
    std::string QueryText(const char* pszSql);

    sqlite3* Get() const noexcept { return m_pConnection.get(); }

private:
    Owned<sqlite3, sqlite3_close> m_pConnection;
};

// A statement that is made once and run often.
class SqliteStatement
{
public:
    SqliteStatement(const SqliteConnection& oConnection, const char* pszSql);

    sqlite3_stmt* Get() const noexcept { return m_pStatement.get(); }

private:
    Owned<sqlite3_stmt, sqlite3_finalize> m_pStatement;
};

// One run of a statement. The arguments and the views that it gives last as long as it does.
class SqliteRun
{
public:
    template <class... Arguments>
    explicit SqliteRun(const SqliteStatement& oStatement, const Arguments&... arguments)
        : m_pStatement(oStatement.Get())
    {
        int nIndex = 0;
        (Bind(++nIndex, arguments), ...);
    }
    ~SqliteRun() { sqlite3_reset(m_pStatement); }
    SqliteRun(const SqliteRun&) = delete;
    SqliteRun& operator=(const SqliteRun&) = delete;

    // Goes on to the next row; false when there is none.
    bool Next();

    std::int64_t Number(int nColumn) const { return sqlite3_column_int64(m_pStatement, nColumn); }
    std::string_view Bytes(int nColumn) const;

private:
    void Bind(int nIndex, std::int64_t nValue);
    void Bind(int nIndex, std::string_view strText);
    void Bind(int nIndex, std::span<const BYTE> oBlob);

    sqlite3_stmt* m_pStatement;
};
