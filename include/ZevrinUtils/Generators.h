/// @file
/// Generated passwords and GUIDs.
#pragma once

#include "ZevrinUtils/Export.h"

#include <string>

/// Makes texts of letters and digits in which no character stands twice.
///
/// The draws come from the C library's rand, which each call seeds with the clock's second: two calls within one
/// second give the same text, and who knows the second of a call knows its text. So use it for passwords that
/// are changed at the first use, and never for keys. The generator is the one that the host's own rand uses.
/// An object has no state; on Windows calls may come from any thread.
class ZEVRINUTILS_API CSPasswordUtils
{
public:
    CSPasswordUtils();
    CSPasswordUtils(const CSPasswordUtils& oOther);              ///< copies nothing
    CSPasswordUtils& operator=(const CSPasswordUtils& oOther);   ///< likewise
    virtual ~CSPasswordUtils();

    /// Appends nLength, or one or two more, new characters: capital, small letter, digit, capital and so on,
    /// where a draw that hits a character already there is left out. False for a length of 0, which does nothing
    /// at all; otherwise true, also for a negative length, which appends nothing.
    ///
    /// The text already in strPassword stays in front; its characters are not drawn again and do not count for the
    /// length.
    ///
    /// @warning Nothing is checked against what is left to draw: the call never returns if more characters are
    /// wanted than there are. There are 62 letters and digits, and three characters ('[', '{' and ':') that come
    /// up once in 32768 draws of their class each. So 62 is the most to ask of an empty text, 63 to 65 take very
    /// many draws, and 66 and more never end; what a text holds of them already is to be taken off.
    bool GeneratePassword(std::string& strPassword, int nLength);

protected:
    /// One draw from the range nFirst to nLast: appended if it is new, and nRemaining is one less then.
    void AddRandomValue(std::string& strPassword, int nFirst, int nLast, int& nRemaining);

    /// One draw: nFirst to nLast with about the same chance each, and nLast + 1 once in 32768 times.
    long GetRandomValue(int nFirst, int nLast);
};

/// Makes GUIDs. From any thread.
class ZEVRINUTILS_API CSGuid
{
public:
    CSGuid();
    CSGuid& operator=(const CSGuid& oOther);   ///< copies nothing
    ~CSGuid();                                 // NOLINT(performance-trivially-destructible): hosts may import it

    /// A new GUID: 36 characters, "8-4-4-4-12" small hexadecimal digits. Empty if the system has none to give,
    /// or no memory for its text.
    static std::string CreateGUID();
};
