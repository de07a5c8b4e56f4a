/// @file
/// CString: the framework's 8-bit string. A value; it holds any bytes and counts them itself.
///
/// Safe as any value: one object may be read from several threads, but not written while it is used.
#pragma once

#include "ZevrinUtils/Export.h"

#include <compare>
#include <string>

/// A text of any bytes, with a length of its own.
class ZEVRINUTILS_API CString
{
public:
    CString() noexcept;
    CString(const CString& strOther);                  ///< a copy of its own
    CString(CString&& strOther) noexcept;              ///< takes the text over
    CString& operator=(const CString& strOther);       ///< a copy of its own
    CString& operator=(CString&& strOther) noexcept;   ///< takes the text over
    ~CString();

    CString(const char* pszText);                ///< null counts as empty
    CString(const char* pchText, int nLength);   ///< nLength bytes
    CString(std::string strText);                ///< all its bytes

    CString& operator=(const char* pszText);   ///< null counts as empty

    /// The text with a zero byte behind it; valid until the string changes.
    operator const char*() const noexcept { return m_strText.c_str(); }

    int GetLength() const noexcept { return static_cast<int>(m_strText.size()); }   ///< in bytes
    bool IsEmpty() const noexcept { return m_strText.empty(); }                     ///< whether it has no byte
    void Empty() noexcept { m_strText.clear(); }                                    ///< leaves no byte

    /// A buffer that holds the text and has room for at least so many bytes and a zero byte, for writing. A negative
    /// number counts as 0. It lasts until ReleaseBuffer, which ends the text at its first zero byte; nothing else may
    /// be called in between.
    char* GetBuffer(int nMinLength);
    void ReleaseBuffer();   ///< ends what GetBuffer began

    /// The byte at an index from 0 to GetLength() - 1; std::out_of_range is thrown for any other.
    char GetAt(int nIndex) const { return m_strText.at(static_cast<std::size_t>(nIndex)); }

    CString& operator+=(const CString& strMore);   ///< appends a text
    CString& operator+=(char chMore);              ///< appends a byte

    /// Replaces the text by what printf would write. An argument must not be the text itself.
    void Format(const char* pszFormat, ...);

    void MakeLower() noexcept;   ///< ASCII letters

    /// Less than, equal to or greater than zero, by the bytes.
    int Compare(const char* pszOther) const noexcept;
    int CompareNoCase(const char* pszOther) const noexcept;   ///< likewise, without case in ASCII letters

    /// Likewise, without case in any script, as the user's language compares.
    int CollateNoCase(const char* pszOther) const;

    /// Replaces every occurrence of a text, of those that overlap the first; gives their count. An empty text
    /// occurs nowhere.
    int Replace(const CString& strOld, const CString& strNew);

    /// Index of the first occurrence from a place on; -1 if there is none.
    int Find(char chWanted, int nStart = 0) const noexcept;
    int Find(const char* pszWanted, int nStart = 0) const noexcept;   ///< likewise, for a text
    int ReverseFind(char chWanted) const noexcept;                    ///< index of the last occurrence, or -1

    /// So many bytes of the beginning; here and below, what lies outside of the text is left out.
    CString Left(int nCount) const;
    CString Right(int nCount) const;             ///< so many bytes of the end
    CString Mid(int nFirst) const;               ///< the bytes from an index on
    CString Mid(int nFirst, int nCount) const;   ///< so many bytes from an index on

    /// Compares the bytes, as do those below.
    friend bool operator==(const CString& strLeft, const CString& strRight) noexcept
    {
        return strLeft.m_strText == strRight.m_strText;
    }
    /// Null counts as empty.
    friend bool operator==(const CString& strLeft, const char* pszRight) noexcept
    {
        return strLeft.m_strText == (pszRight ? pszRight : "");
    }
    /// The order of the bytes.
    friend std::strong_ordering operator<=>(const CString& strLeft, const CString& strRight) noexcept
    {
        return strLeft.m_strText <=> strRight.m_strText;
    }
    /// Null counts as empty.
    friend std::strong_ordering operator<=>(const CString& strLeft, const char* pszRight) noexcept
    {
        return strLeft.m_strText <=> (pszRight ? pszRight : "");
    }

private:
    std::string m_strText;
};

/// The left text with the right one behind it.
/// @{
ZEVRINUTILS_API CString operator+(const CString& strLeft, const CString& strRight);
ZEVRINUTILS_API CString operator+(const CString& strLeft, const char* pszRight);
ZEVRINUTILS_API CString operator+(const char* pszLeft, const CString& strRight);
ZEVRINUTILS_API CString operator+(const CString& strLeft, char chRight);
ZEVRINUTILS_API CString operator+(char chLeft, const CString& strRight);
/// @}
