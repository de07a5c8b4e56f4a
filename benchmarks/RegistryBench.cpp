// Texts read and written in the registry, against the same statements on SQLite directly.
#include "Bench.h"

#include "ZevrinUtils/ConfigParams.h"

#include <cstdlib>

#include <sqlite3.h>

namespace
{
const char szKey[] = "Software\\Example\\Parameters";
const char szFolded[] = "SOFTWARE\\EXAMPLE\\PARAMETERS";
const char szName[] = "NAME";
const char szValue[] = "a text of some length, as parameters have it";
constexpr int nOtherNames = 1000;

// A database of the library's making, used without it.
class Peer
{
public:
    explicit Peer(const std::string& strFile)
    {
        Require(sqlite3_open_v2(strFile.c_str(), &m_pConnection, SQLITE_OPEN_READWRITE | SQLITE_OPEN_NOMUTEX,
                                nullptr) == SQLITE_OK,
                "the peer cannot open its database");
        sqlite3_exec(m_pConnection, "PRAGMA synchronous = NORMAL", nullptr, nullptr, nullptr);
        m_pFind = Prepare("SELECT id FROM keys WHERE path = ?1");
        m_pRead = Prepare("SELECT type, bytes FROM data WHERE key = ?1 AND folded = ?2");
        m_pWrite = Prepare("INSERT INTO data (key, folded, name, type, bytes) VALUES (?1, ?2, ?3, ?4, ?5) "
                           "ON CONFLICT DO UPDATE SET type = excluded.type, bytes = excluded.bytes");
    }

    sqlite3_int64 Find()
    {
        sqlite3_bind_text(m_pFind, 1, szFolded, -1, SQLITE_STATIC);
        const bool bFound = sqlite3_step(m_pFind) == SQLITE_ROW;
        const auto nKey = bFound ? sqlite3_column_int64(m_pFind, 0) : 0;
        sqlite3_reset(m_pFind);
        return nKey;
    }

    bool Read(sqlite3_int64 nKey, std::string& strValue)
    {
        sqlite3_bind_int64(m_pRead, 1, nKey);
        sqlite3_bind_text(m_pRead, 2, szName, -1, SQLITE_STATIC);
        const bool bFound = sqlite3_step(m_pRead) == SQLITE_ROW;
        if (bFound)
            strValue = static_cast<const char*>(sqlite3_column_blob(m_pRead, 1));
        sqlite3_reset(m_pRead);
        return bFound;
    }

    bool Write(sqlite3_int64 nKey, const std::string& strValue)
    {
        sqlite3_bind_int64(m_pWrite, 1, nKey);
        sqlite3_bind_text(m_pWrite, 2, szName, -1, SQLITE_STATIC);
        sqlite3_bind_text(m_pWrite, 3, szName, -1, SQLITE_STATIC);
        sqlite3_bind_int64(m_pWrite, 4, 1);
        sqlite3_bind_blob64(m_pWrite, 5, strValue.c_str(), strValue.size() + 1, SQLITE_STATIC);
        const bool bWritten = sqlite3_step(m_pWrite) == SQLITE_DONE;
        sqlite3_reset(m_pWrite);
        return bWritten;
    }

private:
    sqlite3_stmt* Prepare(const char* pszSql)
    {
        sqlite3_stmt* pStatement = nullptr;
        Require(sqlite3_prepare_v2(m_pConnection, pszSql, -1, &pStatement, nullptr) == SQLITE_OK, pszSql);
        return pStatement;
    }

    // Both stay until the process ends.
    sqlite3* m_pConnection = nullptr;
    sqlite3_stmt* m_pFind = nullptr;
    sqlite3_stmt* m_pRead = nullptr;
    sqlite3_stmt* m_pWrite = nullptr;
};

template <class Operation>
void Add(const std::string& strName, Operation operation)
{
    benchmark::RegisterBenchmark(strName.c_str(), [=](benchmark::State& oState) {
        for (auto _ : oState)
            Require(operation(), strName + " failed");
    });
}

void AddPairs(CConfigParamsBase& oParams, HKEY& hKey, Peer& oPeer)
{
    static std::string s_strValue;
    Add("read of a text, by handle/library", [&] { return oParams.getRegString(hKey, szName, s_strValue); });
    Add("read of a text, by handle/peer", [&, nKey = oPeer.Find()] { return oPeer.Read(nKey, s_strValue); });
    Add("read of a text, by path/library", [&] { return oParams.getRegString(szKey, szName, s_strValue); });
    Add("read of a text, by path/peer", [&] { return oPeer.Read(oPeer.Find(), s_strValue); });
    Add("write of a text, by handle/library", [&] { return oParams.setRegString(hKey, szName, szValue), true; });
    Add("write of a text, by handle/peer", [&, nKey = oPeer.Find()] { return oPeer.Write(nKey, szValue); });
    Add("write of a text, by path/library", [&] { return oParams.setRegString(szKey, szName, szValue); });
    Add("write of a text, by path/peer", [&] { return oPeer.Write(oPeer.Find(), szValue); });
}
}

void Measure(RatioTable& oTable, const std::vector<std::string>& oArguments)
{
    const ScratchFolder oFolder(oArguments);
    const std::string strFile = oFolder / "registry.db";
    const std::string strPeerFile = oFolder / "peer.db";
    setenv("ZEVRIN_REGISTRY", strFile.c_str(), 1);

    CConfigParamsBase oParams;
    HKEY hKey = nullptr;
    const long nError = oParams.OpenRegistry(szKey, hKey);
    Require(nError == 0, "no registry in " + strFile + ": error " + std::to_string(nError));
    for (int n = 0; n < nOtherNames; ++n)
        oParams.setRegString(hKey, ("name " + std::to_string(n)).c_str(), szValue);
    oParams.setRegString(hKey, szName, szValue);
    for (const char* pszPart : {"", "-wal"})
        std::filesystem::copy_file(strFile + pszPart, strPeerFile + pszPart);
    Peer oPeer(strPeerFile);

    AddPairs(oParams, hKey, oPeer);
    for (const char* pszWhat : {"read of a text, by handle", "read of a text, by path", "write of a text, by handle",
                                "write of a text, by path"})
        oTable.SetGoal(pszWhat, "at most 1.43");   // at least 0.7 of its speed
    benchmark::RunSpecifiedBenchmarks(&oTable);
}
