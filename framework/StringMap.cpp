// Exported and out of line, so that the library and the hosts that reach the table of hosts through a derived class run
// the same code on it.
#include "ZevrinUtils/framework/StringMap.h"

CMapStringToString::CMapStringToString(int) noexcept {}

CMapStringToString::~CMapStringToString() = default;

bool CMapStringToString::Lookup(const char* pszKey, CString& strValue) const
{
    const auto it = m_oEntries.find(pszKey);
    if (it == m_oEntries.end())
        return false;
    strValue = it->second;
    return true;
}

CString& CMapStringToString::operator[](const char* pszKey)
{
    return m_oEntries[pszKey];
}

void CMapStringToString::SetAt(const char* pszKey, const char* pszValue)
{
    m_oEntries[pszKey] = pszValue;
}

bool CMapStringToString::RemoveKey(const char* pszKey)
{
    return m_oEntries.erase(pszKey) != 0;
}

void CMapStringToString::RemoveAll() noexcept
{
    m_oEntries.clear();
}
