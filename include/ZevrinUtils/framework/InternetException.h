/// @file
/// The exception of the HTTP client: a request that cannot be made, or an answer that broke off.
#pragma once

#include "ZevrinUtils/framework/Exception.h"

/// An error of the system's Internet interface.
class ZEVRINUTILS_API CInternetException : public CException
{
public:
    explicit CInternetException(unsigned long nError);   ///< the system's error
    ~CInternetException() override;

    /// The failure in words, and the error's number.
    int GetErrorMessage(char* pszText, unsigned nMaxLength) const override;

    DWORD m_dwError;   ///< the system's: 12000 to 12175 are those of its Internet interface
};
