/// @file
/// Parameters in the registry.
#pragma once

#include "ZevrinUtils/Export.h"
#include "ZevrinUtils/Types.h"

#include <string>
#include <vector>

/// Base of a host's own parameter classes: a thin layer over the registry, without any state.
///
/// A handle operation works on a key that the caller has opened, and closes nothing. A path operation takes a path
/// under HKEY_LOCAL_MACHINE, opens that key for the one call and closes it again. Each path operation, reads and
/// listings too, asks for all access and creates a key that is not there, with its parents.
///
/// Names and paths have backslashes between their parts and know no case. No text may be null where nothing else is
/// said. The operations may be called from any thread; a handle that threads share is theirs to arrange.
///
/// On Linux the registry is a database for the machine, or one of its own for an account that may not write that one;
/// the environment variable ZEVRIN_REGISTRY names another file. It has no root but HKEY_LOCAL_MACHINE.
class ZEVRINUTILS_API CConfigParamsBase
{
public:
    /// Calls OpenKeys, of this class: an override is not there yet.
    CConfigParamsBase();
    CConfigParamsBase(const CConfigParamsBase& oOther);              ///< without a call of OpenKeys
    CConfigParamsBase& operator=(const CConfigParamsBase& oOther);   ///< copies nothing
    virtual ~CConfigParamsBase();

    /// True if the key can be opened for reading. Never creates one.
    bool IsRegistryKeyExists(HKEY hRoot, const char* pszPath);

    /// Opens an existing key with all access.
    ///
    /// @param hRoot    the key that the path starts from: HKEY_LOCAL_MACHINE, or one that is open
    /// @param pszPath  the way from there
    /// @param hKey     receives the handle, for CloseRegistry; not set after a failure
    /// @return 0 (ERROR_SUCCESS) or the Win32 error number
    long OpenRegistryKey(HKEY hRoot, const char* pszPath, HKEY& hKey);

    /// Opens a key like OpenRegistryKey, but creates it if it is not there; the caller does not learn if it was. The
    /// handle is not set after a failure here either.
    long OpenRegistry(HKEY hRoot, const char* pszPath, HKEY& hKey);
    /// Likewise, under HKEY_LOCAL_MACHINE.
    long OpenRegistry(const char* pszPath, HKEY& hKey);

    /// Gives the key back. The variable keeps its value, which stands for nothing any more.
    void CloseRegistry(HKEY& hKey);

    /// Removes a value, if it is there and may be removed.
    void DeleteRegValue(HKEY& hKey, const char* pszName);

    /// Reads the bytes of a value of any type; a DWORD comes as its four bytes. No terminator is added.
    ///
    /// @param hKey     an open key
    /// @param pszName  the value's name
    /// @param pBuffer  receives the bytes
    /// @param nSize    the buffer's size in bytes
    /// @return false if there is no such value or it does not fit
    bool getRegString(HKEY& hKey, const char* pszName, char* pBuffer, int nSize);

    /// Reads a value of up to 2047 bytes, its terminator included, up to its first zero byte.
    ///
    /// @return false if there is no such value or it is longer; the text then means nothing
    bool getRegString(HKEY& hKey, const char* pszName, std::string& strValue);
    /// Reads it by path; a key that cannot be opened gives false and an empty text.
    bool getRegString(const char* pszPath, const char* pszName, std::string& strValue);

    /// Reads a value of up to four bytes and of any type into a number of 32 bits.
    ///
    /// @return false if there is no such value or it is longer; the number then stays
    bool getRegDWORD(HKEY& hKey, const char* pszName, unsigned long& nValue);
    /// Reads it by path; a key that cannot be opened gives false.
    bool getRegDWORD(const char* pszPath, const char* pszName, unsigned long& nValue);

    /// Writes a text, which must not be null, with its terminator (REG_SZ). A refusal is not reported.
    void setRegString(HKEY& hKey, const char* pszName, const char* pszValue);
    /// Writes it by path: true if the key could be opened, even when the value is refused. An exception on the way, and
    /// a text that is null, give false and leave the key open.
    bool setRegString(const char* pszPath, const char* pszName, const char* pszValue);

    /// Writes the number's low 32 bits (REG_DWORD). A refusal is not reported. A name has at most 267 bytes.
    void setRegDWORD(HKEY& hKey, const char* pszName, unsigned long nValue);

    /// Adds the names of the key's subkeys behind what the list holds, in the registry's order. A name of more than
    /// 255 bytes ends the listing, and so does any failure.
    void getRegSubKeys(const char* pszPath, std::vector<std::string>& oNames);

    /// Adds the data of the key's values, without their names, behind what the list holds: of each up to its first
    /// zero byte, whatever its type. A value without data gives the text of the value before it once more. A name of
    /// more than 255 bytes, or data of more than 256, ends the listing. Each call leaves one handle open for the rest
    /// of the process.
    void getRegSubKeyValues(const char* pszPath, std::vector<std::string>& oValues);

protected:
    /// For a derived class to open its keys; empty here.
    virtual void OpenKeys();
};
