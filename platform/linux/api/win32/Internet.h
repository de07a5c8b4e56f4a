// The internet functions: values and error numbers are those of Windows.
#pragma once

#include "ZevrinUtils/Types.h"

using HINTERNET = void*;
using INTERNET_PORT = WORD;

inline constexpr DWORD INTERNET_OPEN_TYPE_PRECONFIG = 0;
inline constexpr DWORD INTERNET_SERVICE_HTTP = 3;

// Flags of sessions and requests.
inline constexpr DWORD INTERNET_FLAG_PRAGMA_NOCACHE = 0x00000100;
inline constexpr DWORD INTERNET_FLAG_IGNORE_CERT_CN_INVALID = 0x00001000;
inline constexpr DWORD INTERNET_FLAG_IGNORE_CERT_DATE_INVALID = 0x00002000;
inline constexpr DWORD INTERNET_FLAG_NO_AUTO_REDIRECT = 0x00200000;
inline constexpr DWORD INTERNET_FLAG_KEEP_CONNECTION = 0x00400000;
inline constexpr DWORD INTERNET_FLAG_SECURE = 0x00800000;

// The faults that a request forgives a certificate; the second and third are the request flags of the same values.
inline constexpr DWORD INTERNET_OPTION_SECURITY_FLAGS = 31;
inline constexpr DWORD SECURITY_FLAG_IGNORE_UNKNOWN_CA = 0x00000100;
inline constexpr DWORD SECURITY_FLAG_IGNORE_CERT_CN_INVALID = INTERNET_FLAG_IGNORE_CERT_CN_INVALID;
inline constexpr DWORD SECURITY_FLAG_IGNORE_CERT_DATE_INVALID = INTERNET_FLAG_IGNORE_CERT_DATE_INVALID;

inline constexpr DWORD HTTP_QUERY_CONTENT_LENGTH = 5;
inline constexpr DWORD HTTP_QUERY_STATUS_CODE = 19;
inline constexpr DWORD HTTP_QUERY_RAW_HEADERS_CRLF = 22;
inline constexpr DWORD HTTP_QUERY_FLAG_NUMBER = 0x20000000;

inline constexpr DWORD FLAGS_ERROR_UI_FILTER_FOR_ERRORS = 1;
inline constexpr DWORD FLAGS_ERROR_UI_FLAGS_GENERATE_DATA = 2;
inline constexpr DWORD FLAGS_ERROR_UI_FLAGS_CHANGE_OPTIONS = 4;
inline constexpr DWORD FLAG_ICC_FORCE_CONNECTION = 1;

inline constexpr DWORD ERROR_INTERNET_TIMEOUT = 12002;
inline constexpr DWORD ERROR_INTERNET_INTERNAL_ERROR = 12004;
inline constexpr DWORD ERROR_INTERNET_INVALID_URL = 12005;
inline constexpr DWORD ERROR_INTERNET_UNRECOGNIZED_SCHEME = 12006;
inline constexpr DWORD ERROR_INTERNET_NAME_NOT_RESOLVED = 12007;
inline constexpr DWORD ERROR_INTERNET_INCORRECT_HANDLE_TYPE = 12018;
inline constexpr DWORD ERROR_INTERNET_INCORRECT_HANDLE_STATE = 12019;
inline constexpr DWORD ERROR_INTERNET_CANNOT_CONNECT = 12029;
inline constexpr DWORD ERROR_INTERNET_CONNECTION_ABORTED = 12030;
inline constexpr DWORD ERROR_INTERNET_CONNECTION_RESET = 12031;
inline constexpr DWORD ERROR_INTERNET_FORCE_RETRY = 12032;
inline constexpr DWORD ERROR_INTERNET_SEC_CERT_DATE_INVALID = 12037;
inline constexpr DWORD ERROR_INTERNET_SEC_CERT_CN_INVALID = 12038;
inline constexpr DWORD ERROR_INTERNET_INVALID_CA = 12045;
inline constexpr DWORD ERROR_HTTP_HEADER_NOT_FOUND = 12150;
inline constexpr DWORD ERROR_HTTP_INVALID_SERVER_RESPONSE = 12152;
inline constexpr DWORD ERROR_HTTP_REDIRECT_FAILED = 12156;
inline constexpr DWORD ERROR_INTERNET_SECURITY_CHANNEL_ERROR = 12157;
inline constexpr DWORD ERROR_INTERNET_SEC_INVALID_CERT = 12169;
inline constexpr DWORD ERROR_INTERNET_SEC_CERT_REVOKED = 12170;

namespace win32
{
HINTERNET InternetOpenA(LPCSTR pszAgent, DWORD nAccessType, LPCSTR pszProxy, LPCSTR pszBypass, DWORD nFlags);
HINTERNET InternetConnectA(HINTERNET hSession, LPCSTR pszServer, INTERNET_PORT nPort, LPCSTR pszUser,
                           LPCSTR pszPassword, DWORD nService, DWORD nFlags, DWORD_PTR nContext);
HINTERNET HttpOpenRequestA(HINTERNET hConnection, LPCSTR pszVerb, LPCSTR pszObject, LPCSTR pszVersion,
                           LPCSTR pszReferer, LPCSTR* ppszAcceptTypes, DWORD nFlags, DWORD_PTR nContext);
BOOL HttpSendRequestA(HINTERNET hRequest, LPCSTR pszHeaders, DWORD nHeadersLength, LPVOID pBody, DWORD nBodyLength);
BOOL HttpQueryInfoA(HINTERNET hRequest, DWORD nLevel, LPVOID pBuffer, LPDWORD pnSize, LPDWORD pnIndex);
BOOL InternetReadFile(HINTERNET hRequest, LPVOID pBuffer, DWORD nCount, LPDWORD pnRead);
BOOL InternetQueryDataAvailable(HINTERNET hRequest, LPDWORD pnAvailable, DWORD nFlags, DWORD_PTR nContext);
BOOL InternetQueryOptionA(HINTERNET hRequest, DWORD nOption, LPVOID pBuffer, LPDWORD pnSize);
BOOL InternetSetOptionA(HINTERNET hRequest, DWORD nOption, LPVOID pBuffer, DWORD nSize);
BOOL InternetCloseHandle(HINTERNET hAny);
DWORD InternetErrorDlg(HWND hWindow, HINTERNET hRequest, DWORD nError, DWORD nFlags, LPVOID* ppData);
BOOL InternetCheckConnectionA(LPCSTR pszUrl, DWORD nFlags, DWORD nReserved);
}
