// libcurl's start, its errors in the numbers of Windows, and the mere try to connect.
#include "Curl.h"

#include "platform/linux/base/Failure.h"
#include "util/Owned.h"
#include "util/Translation.h"
#include "win32/Internet.h"

#include <mutex>
#include <new>

namespace
{
constexpr Translation<CURLcode, DWORD> s_aErrors[] = {
    {CURLE_OK, ERROR_SUCCESS},
    {CURLE_URL_MALFORMAT, ERROR_INTERNET_INVALID_URL},
    {CURLE_COULDNT_RESOLVE_HOST, ERROR_INTERNET_NAME_NOT_RESOLVED},
    {CURLE_COULDNT_RESOLVE_PROXY, ERROR_INTERNET_NAME_NOT_RESOLVED},
    {CURLE_COULDNT_CONNECT, ERROR_INTERNET_CANNOT_CONNECT},
    {CURLE_PROXY, ERROR_INTERNET_CANNOT_CONNECT},
    {CURLE_OPERATION_TIMEDOUT, ERROR_INTERNET_TIMEOUT},
    {CURLE_TOO_MANY_REDIRECTS, ERROR_HTTP_REDIRECT_FAILED},
    {CURLE_GOT_NOTHING, ERROR_INTERNET_CONNECTION_ABORTED},
    {CURLE_SEND_ERROR, ERROR_INTERNET_CONNECTION_RESET},
    {CURLE_RECV_ERROR, ERROR_INTERNET_CONNECTION_RESET},
    {CURLE_PARTIAL_FILE, ERROR_INTERNET_CONNECTION_RESET},
    {CURLE_WEIRD_SERVER_REPLY, ERROR_HTTP_INVALID_SERVER_RESPONSE},
    {CURLE_BAD_CONTENT_ENCODING, ERROR_HTTP_INVALID_SERVER_RESPONSE},
    {CURLE_SSL_CACERT_BADFILE, ERROR_INTERNET_SECURITY_CHANNEL_ERROR},
    {CURLE_SSL_CONNECT_ERROR, ERROR_INTERNET_SECURITY_CHANNEL_ERROR},
    {CURLE_OUT_OF_MEMORY, ERROR_NOT_ENOUGH_MEMORY},
    {CURLE_WRITE_ERROR, ERROR_NOT_ENOUGH_MEMORY},   // what our own callbacks answer when memory is short
};
}

void StartCurl()
{
    static std::once_flag s_oStarted;
    std::call_once(s_oStarted, [] { curl_global_init(CURL_GLOBAL_DEFAULT); });   // never undone: others may use it
}

DWORD ErrorOfTransfer(CURLcode nResult)
{
    return Translate(s_aErrors, nResult, ERROR_INTERNET_INTERNAL_ERROR);
}

// Makes a plain connection to the server's port, whatever the URL's scheme would do there.
void TryToConnect(const char* pszUrl)
{
    StartCurl();
    const Owned<CURLU, curl_url_cleanup> pUrl(curl_url());
    const Owned<CURL, curl_easy_cleanup> pTransfer(curl_easy_init());
    if (!pUrl || !pTransfer)
        throw std::bad_alloc();
    char* pszPort = nullptr;
    Require(curl_url_set(pUrl.get(), CURLUPART_URL, pszUrl, 0) == CURLUE_OK &&
                curl_url_get(pUrl.get(), CURLUPART_PORT, &pszPort, CURLU_DEFAULT_PORT) == CURLUE_OK,
            ERROR_INTERNET_INVALID_URL);
    const Owned<char, curl_free> pszOwnedPort(pszPort);
    curl_url_set(pUrl.get(), CURLUPART_SCHEME, "http", 0);
    curl_url_set(pUrl.get(), CURLUPART_PORT, pszPort, 0);
    curl_easy_setopt(pTransfer.get(), CURLOPT_CURLU, pUrl.get());
    curl_easy_setopt(pTransfer.get(), CURLOPT_CONNECT_ONLY, 1L);
    curl_easy_setopt(pTransfer.get(), CURLOPT_PROXY, "");
    curl_easy_setopt(pTransfer.get(), CURLOPT_NOSIGNAL, 1L);
    curl_easy_setopt(pTransfer.get(), CURLOPT_CONNECTTIMEOUT, nConnectSeconds);
    const CURLcode nResult = curl_easy_perform(pTransfer.get());
    Require(nResult == CURLE_OK, ErrorOfTransfer(nResult));
}
