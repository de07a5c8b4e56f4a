/// @file
/// The exceptions of the framework. They are made with new, thrown and caught as pointers, and released by
/// whoever catches one:
///
///     catch (CException* pError)
///     {
///         pError->Delete();
///     }
#pragma once

#include "ZevrinUtils/Export.h"
#include "ZevrinUtils/Types.h"

#include <string>

/// The common base of the exceptions.
class ZEVRINUTILS_API CException
{
public:
    CException(const CException&) = delete;
    CException& operator=(const CException&) = delete;
    virtual ~CException();

    /// Puts the text of the failure into a buffer, cut to its size, a zero byte always behind it. Non-zero if
    /// there is a text.
    virtual int GetErrorMessage(char* pszText, unsigned nMaxLength) const = 0;

    /// Releases an exception that was thrown. Not for one that is a variable.
    void Delete();

protected:
    CException() = default;

    /// The work of GetErrorMessage once the text is there.
    static int CopyMessage(const std::string& strMessage, char* pszText, unsigned nMaxLength);
};

/// A file that cannot be opened, read, written, measured or closed.
class ZEVRINUTILS_API CFileException : public CException
{
public:
    /// The kinds of causes, told from the system's error.
    enum eCause
    {
        none,
        genericException,
        fileNotFound,
        badPath,
        tooManyOpenFiles,
        accessDenied,
        sharingViolation,
        diskFull
    };

    CFileException();   ///< no cause, operating-system error -1, no file name
    ~CFileException() override;

    /// Takes on the system's error for a file.
    void Set(unsigned long nOsError, const char* pszFileName);

    /// The file, the cause in words and the error number; nothing while there is no cause.
    int GetErrorMessage(char* pszText, unsigned nMaxLength) const override;

    eCause m_eCause = none;      ///< what the operating-system error means
    LONG m_lOsError = -1;        ///< the system's number
    std::string m_strFileName;   ///< as the caller named it
};
