#include "win32/Registry.h"

#include "RegistryFile.h"
#include "RegistryStore.h"
#include "platform/linux/base/CaseFold.h"
#include "platform/linux/base/Failure.h"
#include "platform/linux/base/KernelObject.h"
#include "util/Immortal.h"
#include "util/OrEmpty.h"

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <mutex>

#include <pthread.h>

namespace
{
constexpr REGSAM nWriteRights = KEY_ALL_ACCESS & ~KEY_READ;
constexpr std::ptrdiff_t nLongestKeyName = 255;   // in characters
constexpr std::ptrdiff_t nLongestValueName = 16383;

struct Key final : KernelObject
{
    Key(std::string strWhere, REGSAM nGranted) : strPath(std::move(strWhere)), nRights(nGranted) {}

    // The key's number, looked up again where another connection was made: so may its file be another.
    std::int64_t IdIn(RegistryStore& oStore)
    {
        if (nStore != oStore.Serial())
        {
            const auto nFound = oStore.FindKey(strPath);
            if (!nFound)
                throw RegistryFailure{ERROR_KEY_DELETED};
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
    // What follows is used with the connection's lock held.
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
    DWORD Use(Body body)
    {
        const std::lock_guard oHold(m_oLock);
        if (m_strPath.empty())
            m_strPath = RegistryPath();   // once: the folder of the process may change
        if (!m_oStore)
            m_oStore.emplace(m_strPath);
        return body(*m_oStore);
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

// Makes a call of the registry, whose body gives the error number or throws it.
template <class Body>
LSTATUS Call(Body body)
{
    try
    {
        return static_cast<LSTATUS>(Connection::Instance().Use(body));
    }
    catch (const RegistryFailure& oFailure)
    {
        return static_cast<LSTATUS>(oFailure.nError);
    }
    catch (const std::bad_alloc&)
    {
        return ERROR_NOT_ENOUGH_MEMORY;
    }
}

std::shared_ptr<Key> FindKey(HKEY hKey, REGSAM nNeeded)
{
    if (hKey == HKEY_LOCAL_MACHINE)
        return std::make_shared<Key>("", KEY_ALL_ACCESS);
    auto pKey = FindObjectOf<Key>(hKey);
    if (!pKey)
        throw RegistryFailure{ERROR_INVALID_HANDLE};
    if ((pKey->nRights & nNeeded) != nNeeded)
        throw RegistryFailure{ERROR_ACCESS_DENIED};
    return pKey;
}

void Require(bool bSupported)
{
    if (!bSupported)
        throw RegistryFailure{ERROR_NOT_SUPPORTED};
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
    if (*pszPath == '\\')
        throw RegistryFailure{ERROR_BAD_PATHNAME};
    std::string strPath;
    for (const char* psz = pszPath; *psz; psz += std::strspn(psz, "\\"))
    {
        const std::string_view strName(psz, std::strcspn(psz, "\\"));
        if (IsLongerThan(nLongestKeyName, strName))
            throw RegistryFailure{ERROR_INVALID_PARAMETER};
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
    if ((nRights & nWriteRights) && !oStore.IsWritable())
        throw RegistryFailure{ERROR_ACCESS_DENIED};
    const auto pKey = std::make_shared<Key>(std::move(strPath), nRights);
    pKey->SetId(oStore, *nKey);
    return static_cast<HKEY>(OpenHandle(pKey));
}

// Both give false if what there is does not fit.
bool GiveName(const std::string& strName, char* pszName, LPDWORD pnLength)
{
    if (strName.size() >= *pnLength)
        return false;
    std::memcpy(pszName, strName.c_str(), strName.size() + 1);
    *pnLength = static_cast<DWORD>(strName.size());
    return true;
}

bool GiveBytes(const std::string& strBytes, LPBYTE pData, LPDWORD pnSize)
{
    if (!pnSize)
        return true;
    const auto nSize = static_cast<DWORD>(strBytes.size());
    const bool bFits = !pData || nSize <= *pnSize;
    if (pData && bFits)
        std::copy(strBytes.begin(), strBytes.end(), pData);
    *pnSize = nSize;
    return bFits;
}
}

LSTATUS win32::RegOpenKeyExA(HKEY hRoot, LPCSTR pszPath, DWORD nOptions, REGSAM nRights, HKEY* phKey)
{
    return Call([&](RegistryStore& oStore) {
        Require(nOptions == 0);
        *phKey = Open(oStore, hRoot, pszPath, nRights,
                      [](Key&, const std::string&) -> std::int64_t { throw RegistryFailure{ERROR_FILE_NOT_FOUND}; });
        return ERROR_SUCCESS;
    });
}

LSTATUS win32::RegCreateKeyExA(HKEY hRoot, LPCSTR pszPath, DWORD nReserved, char* pszClass, DWORD nOptions,
                               REGSAM nRights, LPSECURITY_ATTRIBUTES pSecurity, HKEY* phKey, LPDWORD pnDisposition)
{
    return Call([&](RegistryStore& oStore) {
        Require(nReserved == 0 && !pszClass && nOptions == REG_OPTION_NON_VOLATILE && !pSecurity);
        DWORD nDisposition = REG_OPENED_EXISTING_KEY;
        *phKey = Open(oStore, hRoot, pszPath, nRights, [&](Key& oRoot, const std::string& strNames) {
            nDisposition = REG_CREATED_NEW_KEY;
            return oStore.CreateKey(oRoot.IdIn(oStore), oRoot.strPath, strNames);
        });
        if (pnDisposition)
            *pnDisposition = nDisposition;
        return ERROR_SUCCESS;
    });
}

// The root is no handle of anybody's and stays open.
LSTATUS win32::RegCloseKey(HKEY hKey)
{
    const bool bClosed = hKey == HKEY_LOCAL_MACHINE || (FindObjectOf<Key>(hKey) && ForgetHandle(hKey));
    return static_cast<LSTATUS>(bClosed ? ERROR_SUCCESS : ERROR_INVALID_HANDLE);
}

LSTATUS win32::RegQueryValueExA(HKEY hKey, LPCSTR pszName, LPDWORD pReserved, LPDWORD pnType, LPBYTE pData,
                                LPDWORD pnSize)
{
    return Call([&](RegistryStore& oStore) {
        Require(!pReserved);
        const auto pKey = FindKey(hKey, KEY_QUERY_VALUE);
        if (pData && !pnSize)
            return ERROR_INVALID_PARAMETER;
        const auto oValue = oStore.ReadValue(pKey->IdIn(oStore), OrEmpty(pszName));
        if (!oValue)
            return ERROR_FILE_NOT_FOUND;
        if (pnType)
            *pnType = oValue->nType;
        return GiveBytes(oValue->strBytes, pData, pnSize) ? ERROR_SUCCESS : ERROR_MORE_DATA;
    });
}

LSTATUS win32::RegSetValueExA(HKEY hKey, LPCSTR pszName, DWORD nReserved, DWORD nType, const BYTE* pData, DWORD nSize)
{
    return Call([&](RegistryStore& oStore) {
        Require(nReserved == 0);
        const auto pKey = FindKey(hKey, KEY_SET_VALUE);
        if (IsLongerThan(nLongestValueName, OrEmpty(pszName)))
            return ERROR_INVALID_PARAMETER;
        oStore.WriteValue(pKey->IdIn(oStore), OrEmpty(pszName), nType, {pData, nSize});
        return ERROR_SUCCESS;
    });
}

LSTATUS win32::RegDeleteValueA(HKEY hKey, LPCSTR pszName)
{
    return Call([&](RegistryStore& oStore) {
        const auto pKey = FindKey(hKey, KEY_SET_VALUE);
        return oStore.DeleteValue(pKey->IdIn(oStore), OrEmpty(pszName)) ? ERROR_SUCCESS : ERROR_FILE_NOT_FOUND;
    });
}

LSTATUS win32::RegEnumKeyExA(HKEY hKey, DWORD nIndex, char* pszName, LPDWORD pnLength, LPDWORD pReserved,
                             char* pszClass, LPDWORD pnClassLength, FILETIME* pTime)
{
    return Call([&](RegistryStore& oStore) {
        Require(!pReserved && !pszClass && !pnClassLength && !pTime);
        const auto pKey = FindKey(hKey, KEY_ENUMERATE_SUB_KEYS);
        const auto oSubKey = oStore.ListSubKeys(pKey->IdIn(oStore), nIndex, pKey->oSubKeys);
        if (!oSubKey)
            return ERROR_NO_MORE_ITEMS;
        return GiveName(oSubKey->strName, pszName, pnLength) ? ERROR_SUCCESS : ERROR_MORE_DATA;
    });
}

LSTATUS win32::RegEnumValueA(HKEY hKey, DWORD nIndex, char* pszName, LPDWORD pnLength, LPDWORD pReserved,
                             LPDWORD pnType, LPBYTE pData, LPDWORD pnSize)
{
    return Call([&](RegistryStore& oStore) {
        Require(!pReserved);
        const auto pKey = FindKey(hKey, KEY_QUERY_VALUE);
        if (pData && !pnSize)
            return ERROR_INVALID_PARAMETER;
        const auto oValue = oStore.ListValues(pKey->IdIn(oStore), nIndex, pKey->oValues);
        if (!oValue)
            return ERROR_NO_MORE_ITEMS;
        // The bytes first: where they do not fit, their count is told and the name is left alone.
        if (oValue->strName.size() >= *pnLength || !GiveBytes(oValue->strBytes, pData, pnSize))
            return ERROR_MORE_DATA;
        GiveName(oValue->strName, pszName, pnLength);
        if (pnType)
            *pnType = oValue->nType;
        return ERROR_SUCCESS;
    });
}
