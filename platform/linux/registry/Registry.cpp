// The calls of the registry: keys behind handles with the rights that they were opened for, over one connection to the
// database, which all threads share.
#include "win32/Registry.h"

#include "RegistryFile.h"
#include "RegistryStore.h"
#include "platform/linux/base/Buffers.h"
#include "platform/linux/base/Handles.h"
#include "platform/linux/base/Unicode.h"
#include "util/Immortal.h"
#include "util/OrEmpty.h"

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <mutex>
#include <utility>

#include <pthread.h>

namespace
{
constexpr REGSAM nWriteRights = KEY_ALL_ACCESS & ~KEY_READ;
constexpr std::ptrdiff_t nLongestKeyName = 255;   // in characters
constexpr std::ptrdiff_t nLongestValueName = 16383;

struct Key final : HandleObject
{
    Key(std::string strWhere, REGSAM nGranted) : strPath(std::move(strWhere)), nRights(nGranted) {}

    // The key's number, looked up again where another connection was made: so may its file be another.
    std::int64_t IdIn(RegistryStore& oStore)
    {
        if (nStore != oStore.Serial())
        {
            const auto nFound = oStore.FindKey(strPath);
            Require(nFound.has_value(), ERROR_KEY_DELETED);
            SetId(oStore, *nFound);
        }
        return nId;
    }

    void SetId(const RegistryStore& oStore, std::int64_t nNumber)
    {
        nId = nNumber;
        nStore = oStore.Serial();
    }

    const std::string strPath;
    const REGSAM nRights;
    // The rest is used with the connection's lock held.
    std::int64_t nId = 0;
    std::uint64_t nStore = 0;
    RegistryCursor oSubKeys;
    RegistryCursor oValues;
};

// The process's one connection, made by the first call that needs it. It is closed before a fork, since neither
// side could go on with it, and when the module goes; the next call makes a new one.
class Connection
{
public:
    Connection() { pthread_atfork(&Connection::BeforeFork, &Connection::AfterFork, &Connection::AfterFork); }

    template <class Body>
    void Use(Body body)
    {
        const std::lock_guard oHold(m_oLock);
        if (m_strPath.empty())
            m_strPath = RegistryPath();   // once: the folder of the process may change
        if (!m_oStore)
            m_oStore.emplace(m_strPath);
        body(*m_oStore);
    }

    void Close()
    {
        const std::lock_guard oHold(m_oLock);
        m_oStore.reset();
        m_strPath = std::string();   // its memory too
    }

    static Connection& Instance();

private:
    // The locks in the order of all calls.
    static void BeforeFork()
    {
        Instance().m_oLock.lock();
        Instance().m_oStore.reset();
        LockHandles();
    }
    static void AfterFork()
    {
        UnlockHandles();
        Instance().m_oLock.unlock();
    }

    std::mutex m_oLock;
    std::string m_strPath;
    std::optional<RegistryStore> m_oStore;
};

struct AtUnload
{
    ~AtUnload() { Connection::Instance().Close(); }
};

Connection& Connection::Instance()
{
    static Immortal<Connection> s_oConnection;
    static const AtUnload s_oAtUnload;
    return *s_oConnection;
}

template <class Body>
LSTATUS OnStore(Body body)
{
    return static_cast<LSTATUS>(ErrorOf([&] { Connection::Instance().Use(body); }));
}

std::shared_ptr<Key> FindKey(HKEY hKey, REGSAM nNeeded)
{
    if (hKey == HKEY_LOCAL_MACHINE)
        return std::make_shared<Key>("", KEY_ALL_ACCESS);
    auto pKey = ObjectOf<Key>(hKey);
    Require((pKey->nRights & nNeeded) == nNeeded, ERROR_ACCESS_DENIED);
    return pKey;
}

bool IsLongerThan(std::ptrdiff_t nMost, std::string_view strName)
{
    return std::count_if(strName.begin(), strName.end(), [](char ch) { return (ch & 0xC0) != 0x80; }) > nMost;
}

// The path with one backslash between two names and none behind the last; null is the key itself.
std::string WellFormed(LPCSTR pszPath)
{
    if (!pszPath)
        return {};
    Require(*pszPath != '\\', ERROR_BAD_PATHNAME);
    std::string strPath;
    for (const char* psz = pszPath; *psz; psz += std::strspn(psz, "\\"))
    {
        const std::string_view strName(psz, std::strcspn(psz, "\\"));
        Require(!IsLongerThan(nLongestKeyName, strName), ERROR_INVALID_PARAMETER);
        strPath.append(strPath.empty() ? "" : "\\").append(strName);
        psz += strName.size();
    }
    return strPath;
}

// Opens the key; of a missing one onMissing makes the number.
template <class OnMissing>
HKEY Open(RegistryStore& oStore, HKEY hRoot, LPCSTR pszPath, REGSAM nRights, OnMissing onMissing)
{
    const auto pRoot = FindKey(hRoot, 0);
    const std::string strNames = WellFormed(pszPath);
    std::string strPath = pRoot->strPath;
    if (!strNames.empty())
        strPath.append(strPath.empty() ? "" : "\\").append(FoldCase(strNames));
    auto nKey = oStore.FindKey(strPath);
    if (!nKey)
        nKey = onMissing(*pRoot, strNames);
    Require(!(nRights & nWriteRights) || oStore.IsWritable(), ERROR_ACCESS_DENIED);
    const auto pKey = std::make_shared<Key>(std::move(strPath), nRights);
    pKey->SetId(oStore, *nKey);
    return static_cast<HKEY>(OpenHandle(pKey));
}

void GiveName(const std::string& strName, char* pszName, LPDWORD pnLength)
{
    Require(CopyWhole(strName, 1, pszName, *pnLength), ERROR_MORE_DATA);
    *pnLength = static_cast<DWORD>(strName.size());
}

// Without a buffer, or where they do not fit, only their count is told.
void GiveBytes(const std::string& strBytes, LPBYTE pData, LPDWORD pnSize)
{
    if (!pnSize)
        return;
    const DWORD nRoom = std::exchange(*pnSize, static_cast<DWORD>(strBytes.size()));
    Require(!pData || CopyWhole(strBytes, 0, pData, nRoom), ERROR_MORE_DATA);
}
}

LSTATUS win32::RegOpenKeyExA(HKEY hRoot, LPCSTR pszPath, DWORD nOptions, REGSAM nRights, HKEY* phKey)
{
    return OnStore([&](RegistryStore& oStore) {
        RequireSupported(nOptions == 0);
        *phKey = Open(oStore, hRoot, pszPath, nRights,
                      [](Key&, const std::string&) -> std::int64_t { throw Failure{ERROR_FILE_NOT_FOUND}; });
    });
}

LSTATUS win32::RegCreateKeyExA(HKEY hRoot, LPCSTR pszPath, DWORD nReserved, char* pszClass, DWORD nOptions,
                               REGSAM nRights, LPSECURITY_ATTRIBUTES pSecurity, HKEY* phKey, LPDWORD pnDisposition)
{
    return OnStore([&](RegistryStore& oStore) {
        RequireSupported(nReserved == 0 && !pszClass && nOptions == REG_OPTION_NON_VOLATILE && !pSecurity);
        DWORD nDisposition = REG_OPENED_EXISTING_KEY;
        *phKey = Open(oStore, hRoot, pszPath, nRights, [&](Key& oRoot, const std::string& strNames) {
            nDisposition = REG_CREATED_NEW_KEY;
            return oStore.CreateKey(oRoot.IdIn(oStore), oRoot.strPath, strNames);
        });
        if (pnDisposition)
            *pnDisposition = nDisposition;
    });
}

// The root is no handle of anybody's and stays open.
LSTATUS win32::RegCloseKey(HKEY hKey)
{
    return static_cast<LSTATUS>(ErrorOf([&] {
        if (hKey != HKEY_LOCAL_MACHINE)
            TakeObjectOf<Key>(hKey);
    }));
}

LSTATUS win32::RegQueryValueExA(HKEY hKey, LPCSTR pszName, LPDWORD pReserved, LPDWORD pnType, LPBYTE pData,
                                LPDWORD pnSize)
{
    return OnStore([&](RegistryStore& oStore) {
        RequireSupported(!pReserved);
        const auto pKey = FindKey(hKey, KEY_QUERY_VALUE);
        Require(!pData || pnSize, ERROR_INVALID_PARAMETER);
        const auto oValue = oStore.ReadValue(pKey->IdIn(oStore), OrEmpty(pszName));
        Require(oValue.has_value(), ERROR_FILE_NOT_FOUND);
        if (pnType)
            *pnType = oValue->nType;
        GiveBytes(oValue->strBytes, pData, pnSize);
    });
}

LSTATUS win32::RegSetValueExA(HKEY hKey, LPCSTR pszName, DWORD nReserved, DWORD nType, const BYTE* pData, DWORD nSize)
{
    return OnStore([&](RegistryStore& oStore) {
        RequireSupported(nReserved == 0);
        const auto pKey = FindKey(hKey, KEY_SET_VALUE);
        Require(!IsLongerThan(nLongestValueName, OrEmpty(pszName)), ERROR_INVALID_PARAMETER);
        oStore.WriteValue(pKey->IdIn(oStore), OrEmpty(pszName), nType, {pData, nSize});
    });
}

LSTATUS win32::RegDeleteValueA(HKEY hKey, LPCSTR pszName)
{
    return OnStore([&](RegistryStore& oStore) {
        const auto pKey = FindKey(hKey, KEY_SET_VALUE);
        Require(oStore.DeleteValue(pKey->IdIn(oStore), OrEmpty(pszName)), ERROR_FILE_NOT_FOUND);
    });
}

LSTATUS win32::RegEnumKeyExA(HKEY hKey, DWORD nIndex, char* pszName, LPDWORD pnLength, LPDWORD pReserved,
                             char* pszClass, LPDWORD pnClassLength, FILETIME* pTime)
{
    return OnStore([&](RegistryStore& oStore) {
        RequireSupported(!pReserved && !pszClass && !pnClassLength && !pTime);
        const auto pKey = FindKey(hKey, KEY_ENUMERATE_SUB_KEYS);
        const auto oSubKey = oStore.ListSubKeys(pKey->IdIn(oStore), nIndex, pKey->oSubKeys);
        Require(oSubKey.has_value(), ERROR_NO_MORE_ITEMS);
        GiveName(oSubKey->strName, pszName, pnLength);
    });
}

LSTATUS win32::RegEnumValueA(HKEY hKey, DWORD nIndex, char* pszName, LPDWORD pnLength, LPDWORD pReserved,
                             LPDWORD pnType, LPBYTE pData, LPDWORD pnSize)
{
    return OnStore([&](RegistryStore& oStore) {
        RequireSupported(!pReserved);
        const auto pKey = FindKey(hKey, KEY_QUERY_VALUE);
        Require(!pData || pnSize, ERROR_INVALID_PARAMETER);
        const auto oValue = oStore.ListValues(pKey->IdIn(oStore), nIndex, pKey->oValues);
        Require(oValue.has_value(), ERROR_NO_MORE_ITEMS);
        Require(oValue->strName.size() < *pnLength, ERROR_MORE_DATA);
        // The bytes first: where they do not fit, their count is told and the name is left alone.
        GiveBytes(oValue->strBytes, pData, pnSize);
        GiveName(oValue->strName, pszName, pnLength);
        if (pnType)
            *pnType = oValue->nType;
    });
}
