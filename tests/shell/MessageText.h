// A message as its receiver sees it, every field of it, as text.
#pragma once

#include "ZevrinUtils/MapiTypes.h"

#include <cstdint>
#include <string>

inline std::string OrNull(const char* pszText)
{
    return pszText ? std::string("'") + pszText + '\'' : "null";
}

inline std::string TextOf(const MapiRecipDesc& o)
{
    return std::to_string(o.ulRecipClass) + ' ' + OrNull(o.lpszName) +
           (o.ulReserved || o.lpszAddress || o.ulEIDSize || o.lpEntryID ? " and more" : "") + '\n';
}

inline std::string TextOf(LHANDLE hSession, std::uintptr_t hParent, const MapiMessage& o, FLAGS nFlags, ULONG nReserved)
{
    std::string strText = "flags " + std::to_string(nFlags) + " subject " + OrNull(o.lpszSubject) + " text " +
                          OrNull(o.lpszNoteText) + "\nfrom " + TextOf(*o.lpOriginator);
    if (hSession || hParent || nReserved || o.ulReserved || o.lpszMessageType || o.lpszDateReceived ||
        o.lpszConversationID || o.flFlags)
        strText += "and more\n";
    for (ULONG n = 0; n < o.nRecipCount; ++n)
        strText += TextOf(o.lpRecips[n]);
    for (ULONG n = 0; n < o.nFileCount; ++n)
    {
        const auto& oFile = o.lpFiles[n];
        strText += "at " + std::to_string(oFile.nPosition) + ' ' + OrNull(oFile.lpszPathName) + " as " +
                   OrNull(oFile.lpszFileName) +
                   (oFile.ulReserved || oFile.flFlags || oFile.lpFileType ? " and more" : "") + '\n';
    }
    return strText;
}
