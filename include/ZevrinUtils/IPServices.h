/// @file
/// Tests on the text of IPv4 addresses.
#pragma once

#include "ZevrinUtils/Export.h"

/// Static operations on their arguments alone, for any thread at any time.
class ZEVRINUTILS_API CSIPServices
{
public:
    CSIPServices& operator=(const CSIPServices& oOther);   ///< copies nothing

    /// True if a text has the form of an address: numbers from 0 to 255 with dots between. They are not counted,
    /// leading zeros are allowed, null is no address.
    static bool IsValidIP(const char* pszText);

    /// Tells if an address is one of this machine's.
    ///
    /// @param pszText   compared as a text with those of the adapters, of which the loopback is none; not checked
    /// @param bIsLocal  the answer; false if there is none
    /// @return false if the adapters cannot be read, or there are none
    static bool IsLocalIP(const char* pszText, bool& bIsLocal);
};
