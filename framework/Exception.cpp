// The base of the exceptions, and those of files. Delete stands here so that the module that made an exception also
// frees it.
#include "ZevrinUtils/framework/Exception.h"

#include "platform/Errors.h"
#include "util/OrEmpty.h"
#include "util/Translation.h"

#include <algorithm>
#include <cstring>

// The destructors are here, so that hosts and library share one type of each.
CException::~CException() = default;

void CException::Delete()
{
    delete this;
}

int CException::CopyMessage(const std::string& strMessage, char* pszText, unsigned nMaxLength)
{
    if (!pszText || nMaxLength == 0)
        return FALSE;
    const auto nLength = std::min(strMessage.size(), std::size_t{nMaxLength} - 1);
    std::memcpy(pszText, strMessage.data(), nLength);
    pszText[nLength] = 0;
    return !strMessage.empty();
}

namespace
{
constexpr Translation<unsigned long, CFileException::eCause> s_aCauses[] = {
    {ERROR_FILE_NOT_FOUND, CFileException::fileNotFound},
    {ERROR_PATH_NOT_FOUND, CFileException::badPath},
    {ERROR_TOO_MANY_OPEN_FILES, CFileException::tooManyOpenFiles},
    {ERROR_ACCESS_DENIED, CFileException::accessDenied},
    {ERROR_WRITE_PROTECT, CFileException::accessDenied},
    {ERROR_SHARING_VIOLATION, CFileException::sharingViolation},
    {ERROR_DISK_FULL, CFileException::diskFull},
};

// The words for a cause, in the order of eCause.
constexpr const char* s_apszWords[] = {
    "",
    "the operation failed",
    "there is no such file",
    "there is no such folder",
    "too many files are open",
    "access is denied",
    "it is in use",
    "the disk is full",
};
}

CFileException::CFileException() = default;
CFileException::~CFileException() = default;

void CFileException::Set(unsigned long nOsError, const char* pszFileName)
{
    m_eCause = Translate(s_aCauses, nOsError, genericException);
    m_lOsError = static_cast<LONG>(nOsError);
    m_strFileName = OrEmpty(pszFileName);
}

int CFileException::GetErrorMessage(char* pszText, unsigned nMaxLength) const
{
    if (m_eCause == none)
        return CopyMessage("", pszText, nMaxLength);
    return CopyMessage(m_strFileName + ": " + s_apszWords[m_eCause] + " (error " + std::to_string(m_lOsError) + ")",
                       pszText, nMaxLength);
}
