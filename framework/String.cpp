// CString over std::string. Counts and positions are ints, as hosts pass them: what lies outside of the text is cut to
// it. Null counts as empty. Case is that of ASCII letters whatever the locale, but for CollateNoCase.
#include "ZevrinUtils/framework/String.h"

#include "platform/Text.h"
#include "util/OrEmpty.h"

#include <algorithm>
#include <cstdarg>
#include <cstdio>
#include <cstring>
#include <utility>

namespace
{
std::size_t Within(int nCount, std::size_t nMost) noexcept
{
    return nCount <= 0 ? 0 : std::min(static_cast<std::size_t>(nCount), nMost);
}

int AsIndex(std::size_t nPosition) noexcept
{
    return nPosition == std::string::npos ? -1 : static_cast<int>(nPosition);
}

char Lower(char ch) noexcept
{
    return ch >= 'A' && ch <= 'Z' ? static_cast<char>(ch - 'A' + 'a') : ch;
}
}

// Here and not in the header, so that a global string is built at load, in its place among the others.
CString::CString() noexcept = default;
CString::~CString() = default;

CString::CString(const CString& strOther) = default;
CString::CString(CString&& strOther) noexcept = default;
CString& CString::operator=(const CString& strOther) = default;
CString& CString::operator=(CString&& strOther) noexcept = default;

CString::CString(const char* pszText) : m_strText(OrEmpty(pszText)) {}

CString::CString(const char* pchText, int nLength) : m_strText(pchText, Within(nLength, std::string::npos)) {}

CString::CString(std::string strText) : m_strText(std::move(strText)) {}

CString& CString::operator=(const char* pszText)
{
    m_strText = OrEmpty(pszText);
    return *this;
}

char* CString::GetBuffer(int nMinLength)
{
    m_strText.resize(std::max(m_strText.size(), Within(nMinLength, std::string::npos)));
    return m_strText.data();
}

void CString::ReleaseBuffer()
{
    m_strText.resize(std::strlen(m_strText.c_str()));
}

CString& CString::operator+=(const CString& strMore)
{
    m_strText += strMore.m_strText;
    return *this;
}

CString& CString::operator+=(char chMore)
{
    m_strText += chMore;
    return *this;
}

void CString::Format(const char* pszFormat, ...)
{
    std::va_list oArguments;
    va_start(oArguments, pszFormat);
    // NOLINTNEXTLINE(clang-analyzer-valist.Uninitialized): started above
    const int nLength = std::vsnprintf(nullptr, 0, pszFormat, oArguments);
    va_end(oArguments);
    m_strText.resize(static_cast<std::size_t>(std::max(nLength, 0)));
    va_start(oArguments, pszFormat);
    // NOLINTNEXTLINE(clang-analyzer-valist.Uninitialized): started above
    std::vsnprintf(m_strText.data(), m_strText.size() + 1, pszFormat, oArguments);
    va_end(oArguments);
}

void CString::MakeLower() noexcept
{
    std::transform(m_strText.begin(), m_strText.end(), m_strText.begin(), Lower);
}

int CString::Replace(const CString& strOld, const CString& strNew)
{
    if (strOld.IsEmpty())
        return 0;
    std::string strResult;
    std::size_t nFrom = 0;
    int nCount = 0;
    for (std::size_t nAt; (nAt = m_strText.find(strOld.m_strText, nFrom)) != std::string::npos; ++nCount)
    {
        strResult.append(m_strText, nFrom, nAt - nFrom).append(strNew.m_strText);
        nFrom = nAt + strOld.m_strText.size();
    }
    m_strText = strResult.append(m_strText, nFrom, std::string::npos);
    return nCount;
}

int CString::Compare(const char* pszOther) const noexcept
{
    return std::strcmp(m_strText.c_str(), OrEmpty(pszOther));
}

int CString::CompareNoCase(const char* pszOther) const noexcept
{
    const char* pszThis = m_strText.c_str();
    const char* pszThat = OrEmpty(pszOther);
    while (*pszThis && Lower(*pszThis) == Lower(*pszThat))
        ++pszThis, ++pszThat;
    return static_cast<unsigned char>(Lower(*pszThis)) - static_cast<unsigned char>(Lower(*pszThat));
}

int CString::CollateNoCase(const char* pszOther) const
{
    const int nOrder =
        Text().CompareStringA(LOCALE_USER_DEFAULT, NORM_IGNORECASE, m_strText.c_str(), -1, OrEmpty(pszOther), -1);
    return nOrder ? nOrder - CSTR_EQUAL : CompareNoCase(pszOther);
}

int CString::Find(char chWanted, int nStart) const noexcept
{
    return AsIndex(m_strText.find(chWanted, Within(nStart, m_strText.size())));
}

int CString::Find(const char* pszWanted, int nStart) const noexcept
{
    return AsIndex(m_strText.find(OrEmpty(pszWanted), Within(nStart, m_strText.size())));
}

int CString::ReverseFind(char chWanted) const noexcept
{
    return AsIndex(m_strText.rfind(chWanted));
}

CString CString::Left(int nCount) const
{
    return m_strText.substr(0, Within(nCount, m_strText.size()));
}

CString CString::Right(int nCount) const
{
    return m_strText.substr(m_strText.size() - Within(nCount, m_strText.size()));
}

CString CString::Mid(int nFirst) const
{
    return m_strText.substr(Within(nFirst, m_strText.size()));
}

CString CString::Mid(int nFirst, int nCount) const
{
    return m_strText.substr(Within(nFirst, m_strText.size()), Within(nCount, m_strText.size()));
}

CString operator+(const CString& strLeft, const CString& strRight)
{
    return CString(strLeft) += strRight;
}

CString operator+(const CString& strLeft, const char* pszRight)
{
    return CString(strLeft) += pszRight;
}

CString operator+(const char* pszLeft, const CString& strRight)
{
    return CString(pszLeft) += strRight;
}

CString operator+(const CString& strLeft, char chRight)
{
    return CString(strLeft) += chRight;
}

CString operator+(char chLeft, const CString& strRight)
{
    return CString(&chLeft, 1) += strRight;
}
