// A thin layer over the registry. Each oddity stays, because hosts rely on it: reads create keys, a listing leaves its
// key open, a refused value is not told.
#include "ZevrinUtils/ConfigParams.h"

#include "platform/Registry.h"

#include <cstring>

namespace
{
// The product's keys. Every path comes from the caller, so nothing here depends on them.
[[maybe_unused]] const char* const g_pszRegFamilyKey = "Software\\Zevrin";
[[maybe_unused]] const char* const g_pszRegOmbrelKey = "Software\\Zevrin\\Ombrel";
[[maybe_unused]] const char* const g_pszRegVandrelKey = "Software\\Zevrin\\Vandrel";
[[maybe_unused]] const char* const g_pszRegComponentsKey = "Software\\Zevrin\\Components";
[[maybe_unused]] const char* const g_pszRegEmptyKey = "";
[[maybe_unused]] const char* const g_pszRegFamilyKey2 = "Software\\Zevrin";

constexpr int nMostText = 2047;      // bytes of a value that is read as a text
constexpr DWORD nMostListed = 256;   // bytes of a listed name, its terminator included, and of listed data

// The type is received and not looked at: any will do.
bool ReadValue(HKEY hKey, const char* pszName, void* pBuffer, DWORD nSize)
{
    DWORD nType = 0;
    return Registry().RegQueryValueExA(hKey, pszName, nullptr, &nType, static_cast<LPBYTE>(pBuffer), &nSize) ==
           ERROR_SUCCESS;
}

// A read from a key that is opened for it. The handle, and not the code, tells if that worked: one that is null was not
// opened. The listings look at the code.
template <class Read>
bool ReadByPath(CConfigParamsBase& oParams, const char* pszPath, Read read)
{
    HKEY hKey = nullptr;
    oParams.OpenRegistry(HKEY_LOCAL_MACHINE, pszPath, hKey);
    if (!hKey)
        return false;
    const bool bRead = read(hKey);
    oParams.CloseRegistry(hKey);
    return bRead;
}
}

CConfigParamsBase::CConfigParamsBase()
{
    CConfigParamsBase::OpenKeys();
}

CConfigParamsBase::CConfigParamsBase(const CConfigParamsBase& oOther) = default;

CConfigParamsBase& CConfigParamsBase::operator=(const CConfigParamsBase& oOther) = default;

CConfigParamsBase::~CConfigParamsBase() = default;

void CConfigParamsBase::OpenKeys() {}

bool CConfigParamsBase::IsRegistryKeyExists(HKEY hRoot, const char* pszPath)
{
    HKEY hKey = nullptr;
    if (Registry().RegOpenKeyExA(hRoot, pszPath, 0, KEY_READ, &hKey) != ERROR_SUCCESS)
        return false;
    Registry().RegCloseKey(hKey);
    return true;
}

long CConfigParamsBase::OpenRegistryKey(HKEY hRoot, const char* pszPath, HKEY& hKey)
{
    return Registry().RegOpenKeyExA(hRoot, pszPath, 0, KEY_ALL_ACCESS, &hKey);
}

long CConfigParamsBase::OpenRegistry(HKEY hRoot, const char* pszPath, HKEY& hKey)
{
    DWORD nDisposition = 0;
    return Registry().RegCreateKeyExA(hRoot, pszPath, 0, nullptr, REG_OPTION_NON_VOLATILE, KEY_ALL_ACCESS, nullptr,
                                      &hKey, &nDisposition);
}

long CConfigParamsBase::OpenRegistry(const char* pszPath, HKEY& hKey)
{
    return OpenRegistry(HKEY_LOCAL_MACHINE, pszPath, hKey);
}

void CConfigParamsBase::CloseRegistry(HKEY& hKey)
{
    Registry().RegCloseKey(hKey);
}

void CConfigParamsBase::DeleteRegValue(HKEY& hKey, const char* pszName)
{
    Registry().RegDeleteValueA(hKey, pszName);
}

bool CConfigParamsBase::getRegString(HKEY& hKey, const char* pszName, char* pBuffer, int nSize)
{
    return ReadValue(hKey, pszName, pBuffer, static_cast<DWORD>(nSize));
}

bool CConfigParamsBase::getRegString(HKEY& hKey, const char* pszName, std::string& strValue)
{
    char achValue[nMostText + 1] = {};   // zero also behind a value that has no terminator, and after a failure
    const bool bRead = getRegString(hKey, pszName, achValue, nMostText);
    strValue = achValue;
    return bRead;
}

bool CConfigParamsBase::getRegString(const char* pszPath, const char* pszName, std::string& strValue)
{
    strValue.clear();
    return ReadByPath(*this, pszPath, [&](HKEY& hKey) { return getRegString(hKey, pszName, strValue); });
}

bool CConfigParamsBase::getRegDWORD(HKEY& hKey, const char* pszName, unsigned long& nValue)
{
    const auto nBefore = static_cast<DWORD>(nValue);
    DWORD nNumber = nBefore;
    const bool bRead = ReadValue(hKey, pszName, &nNumber, sizeof nNumber);
    if (bRead || nNumber != nBefore)
        nValue = nNumber;   // where the system has left it alone, so does this
    return bRead;
}

bool CConfigParamsBase::getRegDWORD(const char* pszPath, const char* pszName, unsigned long& nValue)
{
    return ReadByPath(*this, pszPath, [&](HKEY& hKey) { return getRegDWORD(hKey, pszName, nValue); });
}

void CConfigParamsBase::setRegString(HKEY& hKey, const char* pszName, const char* pszValue)
{
    Registry().RegSetValueExA(hKey, pszName, 0, REG_SZ, reinterpret_cast<const BYTE*>(pszValue),
                              static_cast<DWORD>(std::strlen(pszValue) + 1));
}

bool CConfigParamsBase::setRegString(const char* pszPath, const char* pszName, const char* pszValue)
{
    try
    {
        HKEY hKey = nullptr;
        OpenRegistry(HKEY_LOCAL_MACHINE, pszPath, hKey);
        if (!hKey || !pszValue)
            return false;   // a text that is null counts as something raised, so the key stays open
        setRegString(hKey, pszName, pszValue);
        CloseRegistry(hKey);
        return true;
    }
    catch (...)
    {
        return false;
    }
}

void CConfigParamsBase::setRegDWORD(HKEY& hKey, const char* pszName, unsigned long nValue)
{
    const auto nNumber = static_cast<DWORD>(nValue);
    Registry().RegSetValueExA(hKey, pszName, 0, REG_DWORD, reinterpret_cast<const BYTE*>(&nNumber), sizeof nNumber);
}

void CConfigParamsBase::getRegSubKeys(const char* pszPath, std::vector<std::string>& oNames)
{
    HKEY hKey = nullptr;
    if (OpenRegistry(HKEY_LOCAL_MACHINE, pszPath, hKey) != ERROR_SUCCESS)
        return;
    char achName[260];
    for (DWORD nIndex = 0;; ++nIndex)
    {
        DWORD nLength = nMostListed;
        if (Registry().RegEnumKeyExA(hKey, nIndex, achName, &nLength, nullptr, nullptr, nullptr, nullptr) !=
            ERROR_SUCCESS)
            break;
        oNames.emplace_back(achName);
    }
    Registry().RegCloseKey(hKey);
}

// The key is never closed, and a value without data shows the data of the one before it: hosts allow for both.
void CConfigParamsBase::getRegSubKeyValues(const char* pszPath, std::vector<std::string>& oValues)
{
    HKEY hKey = nullptr;
    if (OpenRegistry(HKEY_LOCAL_MACHINE, pszPath, hKey) != ERROR_SUCCESS)
        return;
    char achName[nMostListed] = {};
    BYTE aData[nMostListed + 1] = {};   // zero behind data that fills it
    for (DWORD nIndex = 0;; ++nIndex)
    {
        DWORD nLength = nMostListed;
        DWORD nSize = nMostListed;
        if (Registry().RegEnumValueA(hKey, nIndex, achName, &nLength, nullptr, nullptr, aData, &nSize) != ERROR_SUCCESS)
            return;
        oValues.emplace_back(reinterpret_cast<const char*>(aData));
    }
}
