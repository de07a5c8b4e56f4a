// Words for the usual errors of the Internet interface. Any other has one text for all and its number, by which it can
// be looked up.
#include "ZevrinUtils/framework/InternetException.h"

#include "platform/Internet.h"
#include "util/Translation.h"

#include <string>

namespace
{
constexpr Translation<DWORD, const char*> s_aExplanations[] = {
    {ERROR_INTERNET_TIMEOUT, "The server did not answer in time"},
    {ERROR_INTERNET_INVALID_URL, "The URL names no valid server"},
    {ERROR_INTERNET_UNRECOGNIZED_SCHEME, "The URL's scheme is not supported"},
    {ERROR_INTERNET_NAME_NOT_RESOLVED, "The server's name could not be resolved"},
    {ERROR_INTERNET_CANNOT_CONNECT, "The server could not be reached"},
    {ERROR_INTERNET_CONNECTION_ABORTED, "The connection was closed"},
    {ERROR_INTERNET_CONNECTION_RESET, "The connection broke off"},
    {ERROR_INTERNET_SEC_CERT_DATE_INVALID, "The server's certificate is not valid at this date"},
    {ERROR_INTERNET_SEC_CERT_CN_INVALID, "The server's certificate is for another name"},
    {ERROR_INTERNET_INVALID_CA, "The server's certificate comes from an unknown authority"},
    {ERROR_INTERNET_SECURITY_CHANNEL_ERROR, "No secure connection could be made"},
    {ERROR_INTERNET_SEC_INVALID_CERT, "The server's certificate is not valid"},
    {ERROR_INTERNET_SEC_CERT_REVOKED, "The server's certificate was revoked"},
    {ERROR_HTTP_INVALID_SERVER_RESPONSE, "The server's answer makes no sense"},
    {ERROR_HTTP_REDIRECT_FAILED, "The server redirects too often or to a place that is not allowed"},
};
}

CInternetException::CInternetException(unsigned long nError) : m_dwError(static_cast<DWORD>(nError)) {}
CInternetException::~CInternetException() = default;

int CInternetException::GetErrorMessage(char* pszText, unsigned nMaxLength) const
{
    const std::string strWords = Translate(s_aExplanations, m_dwError, "The request failed");
    return CopyMessage(strWords + " (error " + std::to_string(m_dwError) + ")", pszText, nMaxLength);
}
