/// @file
/// CString: the framework's 8-bit string. A value; it holds any bytes and counts them itself.
///
/// Safe as any value: one object may be read from several threads, but not written while it is used.
#pragma once

#include "ZevrinUtils/Export.h"

#include <compare>
#include <string>

class ZEVRINUTILS_API CString
{
public:
    CString() noexcept;
    CString(const CString& strOther);
    CString(CString&& strOther) noexcept;
    CString& operator=(const CString& strOther);
    CString& operator=(CString&& strOther) noexcept;
    ~CString();

    CString(const char* pszText);                ///< null counts as empty
    CString(const char* pchText, int nLength);   ///< nLength bytes
    CString(std::string strText);

    CString& operator=(const char* pszText);   ///< null counts as empty

    /// The text with a zero byte behind it; valid until the string changes.
    operator const char*() const noexcept { return m_strText.c_str(); }

    int GetLength() const noexcept { return static_cast<int>(m_strText.size()); }   ///< in bytes
    bool IsEmpty() const noexcept { return m_strText.empty(); }
    void Empty() noexcept { m_strText.clear(); }

    /// A buffer that holds the text and has room for at least so many bytes and a zero byte, for writing. It lasts
    /// until ReleaseBuffer, which ends the text at its first zero byte; nothing else may be called in between.
    char* GetBuffer(int nMinLength);
    void ReleaseBuffer();

    /// The byte at an index from 0 to GetLength() - 1.
    char GetAt(int nIndex) const { return m_strText.at(static_cast<std::size_t>(nIndex)); }

    CString& operator+=(const CString& strMore);
    CString& operator+=(char chMore);

    /// Replaces the text by what printf would write. An argument must not be the text itself.
    void Format(const char* pszFormat, ...);

    void MakeLower() noexcept;   ///< ASCII letters

    /// Less than, equal to or greater than zero; with case, and without (ASCII letters).
    int Compare(const char* pszOther) const noexcept;
    int CompareNoCase(const char* pszOther) const noexcept;

    /// The same, without case in any script, as the user's language compares.
    int CollateNoCase(const char* pszOther) const;

    /// Replaces every occurrence of a text, of those that overlap the first; gives their count. An empty text
    /// occurs nowhere.
    int Replace(const CString& strOld, const CString& strNew);

    /// Index of the first or last occurrence; -1 if there is none.
    int Find(char chWanted, int nStart = 0) const noexcept;
    int Find(const char* pszWanted, int nStart = 0) const noexcept;
    int ReverseFind(char chWanted) const noexcept;

    /// A part of the text; what lies outside of it is left out.
    CString Left(int nCount) const;
    CString Right(int nCount) const;
    CString Mid(int nFirst) const;
    CString Mid(int nFirst, int nCount) const;

    friend bool operator==(const CString& strLeft, const CString& strRight) noexcept
    {
        return strLeft.m_strText == strRight.m_strText;
    }
    friend bool operator==(const CString& strLeft, const char* pszRight) noexcept
    {
        return strLeft.m_strText == (pszRight ? pszRight : "");
    }
    friend std::strong_ordering operator<=>(const CString& strLeft, const CString& strRight) noexcept
    {
        return strLeft.m_strText <=> strRight.m_strText;
    }
    friend std::strong_ordering operator<=>(const CString& strLeft, const char* pszRight) noexcept
    {
        return strLeft.m_strText <=> (pszRight ? pszRight : "");
    }

private:
    std::string m_strText;
};

ZEVRINUTILS_API CString operator+(const CString& strLeft, const CString& strRight);
ZEVRINUTILS_API CString operator+(const CString& strLeft, const char* pszRight);
ZEVRINUTILS_API CString operator+(const char* pszLeft, const CString& strRight);
ZEVRINUTILS_API CString operator+(const CString& strLeft, char chRight);
ZEVRINUTILS_API CString operator+(char chLeft, const CString& strRight);
