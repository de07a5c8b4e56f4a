/// @file
/// CMapStringToString: the framework's map from text to text. Keys are compared exactly, case included.
///
/// Not guarded: its users keep their threads apart. Classes derived from CHttpServices reach the table of hosts by it.
#pragma once

#include "ZevrinUtils/framework/String.h"

#include <map>

/// Texts by their keys.
class ZEVRINUTILS_API CMapStringToString
{
public:
    /// The block size is the number of entries for which storage is taken at a time. Storage is taken
    /// entry by entry here, so it has no effect.
    explicit CMapStringToString(int nBlockSize = 10) noexcept;
    ~CMapStringToString();
    CMapStringToString(const CMapStringToString&) = delete;
    CMapStringToString& operator=(const CMapStringToString&) = delete;

    int GetCount() const noexcept { return static_cast<int>(m_oEntries.size()); }   ///< the number of entries
    bool IsEmpty() const noexcept { return m_oEntries.empty(); }                    ///< whether it has none

    /// True, with the value in the out-parameter, if there is an entry; the out-parameter is left alone
    /// if there is none.
    bool Lookup(const char* pszKey, CString& strValue) const;

    /// The value under the key, added as an empty text if there is none.
    CString& operator[](const char* pszKey);

    void SetAt(const char* pszKey, const char* pszValue);   ///< adds the entry, or replaces its value
    bool RemoveKey(const char* pszKey);                     ///< false if there was no entry
    void RemoveAll() noexcept;                              ///< leaves it empty

private:
    std::map<CString, CString> m_oEntries;
};
