/// @file
/// The records of Simple MAPI, for Linux: the same fields in the same order.
#pragma once

#include "ZevrinUtils/Types.h"

/// As the documentation of Simple MAPI tells, here and below.
/// @{
using FLAGS = ULONG;
using LHANDLE = std::uintptr_t;

inline constexpr ULONG MAPI_ORIG = 0;
inline constexpr ULONG MAPI_TO = 1;
inline constexpr ULONG MAPI_CC = 2;
inline constexpr ULONG MAPI_BCC = 3;

inline constexpr FLAGS MAPI_LOGON_UI = 1;
inline constexpr FLAGS MAPI_DIALOG = 8;

inline constexpr ULONG SUCCESS_SUCCESS = 0;
inline constexpr ULONG MAPI_E_USER_ABORT = 1;
inline constexpr ULONG MAPI_E_FAILURE = 2;
inline constexpr ULONG MAPI_E_LOGIN_FAILURE = 3;
inline constexpr ULONG MAPI_E_INSUFFICIENT_MEMORY = 5;
inline constexpr ULONG MAPI_E_TOO_MANY_FILES = 9;
inline constexpr ULONG MAPI_E_TOO_MANY_RECIPIENTS = 10;
inline constexpr ULONG MAPI_E_ATTACHMENT_NOT_FOUND = 11;
inline constexpr ULONG MAPI_E_ATTACHMENT_OPEN_FAILURE = 12;
inline constexpr ULONG MAPI_E_UNKNOWN_RECIPIENT = 14;
inline constexpr ULONG MAPI_E_BAD_RECIPTYPE = 15;
inline constexpr ULONG MAPI_E_TEXT_TOO_LARGE = 18;
inline constexpr ULONG MAPI_E_AMBIGUOUS_RECIPIENT = 21;
inline constexpr ULONG MAPI_E_INVALID_RECIPS = 25;

/// An attachment.
struct MapiFileDesc
{
    /// As the documentation of Simple MAPI tells.
    /// @{
    ULONG ulReserved;
    ULONG flFlags;
    ULONG nPosition;
    LPSTR lpszPathName;
    LPSTR lpszFileName;
    LPVOID lpFileType;
    /// @}
};
using lpMapiFileDesc = MapiFileDesc*;

/// A recipient, or the sender.
struct MapiRecipDesc
{
    /// As the documentation of Simple MAPI tells.
    /// @{
    ULONG ulReserved;
    ULONG ulRecipClass;
    LPSTR lpszName;
    LPSTR lpszAddress;
    ULONG ulEIDSize;
    LPVOID lpEntryID;
    /// @}
};
using lpMapiRecipDesc = MapiRecipDesc*;

/// A message.
struct MapiMessage
{
    /// As the documentation of Simple MAPI tells.
    /// @{
    ULONG ulReserved;
    LPSTR lpszSubject;
    LPSTR lpszNoteText;
    LPSTR lpszMessageType;
    LPSTR lpszDateReceived;
    LPSTR lpszConversationID;
    FLAGS flFlags;
    lpMapiRecipDesc lpOriginator;
    ULONG nRecipCount;
    lpMapiRecipDesc lpRecips;
    ULONG nFileCount;
    lpMapiFileDesc lpFiles;
    /// @}
};
using lpMapiMessage = MapiMessage*;

using LPMAPISENDMAIL = ULONG (*)(LHANDLE hSession, std::uintptr_t hParent, lpMapiMessage pMessage, FLAGS nFlags,
                                 ULONG nReserved);
/// @}
