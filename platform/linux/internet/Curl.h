// Shared by all that use libcurl.
#pragma once

#include "ZevrinUtils/Types.h"

#include <curl/curl.h>

inline constexpr long nConnectSeconds = 60;

// To be called before anything else of libcurl.
void StartCurl();

// ERROR_SUCCESS, or the number that Windows has for such a failure.
DWORD ErrorOfTransfer(CURLcode nResult);

// Connects to the server of a web URL, without a proxy and without sending anything. Throws a Failure.
void TryToConnect(const char* pszUrl);
