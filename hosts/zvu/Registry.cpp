// zvu registry: reads and writes parameters. The library does not tell whether a change was refused, so zvu reads back
// what it has changed.
#include "Command.h"
#include "support/Texts.h"

#include "ZevrinUtils/ConfigParams.h"

#include <cstdint>
#include <iostream>
#include <string_view>

namespace
{
constexpr std::size_t nLargestData = 1 << 20;   // bytes of a value that can be told to be there

struct RegistryOptions
{
    std::string strPath;
    std::string strName;
    std::string strValue;
    std::uint32_t nValue = 0;
};

enum class Missing
{
    eFails,
    eIsMade
};

// Calls use(CConfigParamsBase&, HKEY&) with the opened key. Returns the exit status that it returns.
template <class Use>
int WithKey(const RegistryOptions& oOptions, Missing eMissing, Use use)
{
    CConfigParamsBase oParams;
    HKEY hKey = nullptr;
    const char* const pszPath = oOptions.strPath.c_str();
    const long nError = eMissing == Missing::eIsMade ? oParams.OpenRegistry(pszPath, hKey)
                                                     : oParams.OpenRegistryKey(HKEY_LOCAL_MACHINE, pszPath, hKey);
    if (nError)
        return Fail("the key '" + oOptions.strPath + "' cannot be opened: error " + std::to_string(nError) + ": " +
                    ErrorText(static_cast<unsigned long>(nError)));
    const int nStatus = use(oParams, hKey);
    oParams.CloseRegistry(hKey);
    return nStatus;
}

int NoSuchValue(const RegistryOptions& oOptions, const std::string& strThat = "")
{
    return Fail("no value '" + oOptions.strName + "'" + strThat);
}

int ReportChange(const RegistryOptions& oOptions, bool bChanged, const std::string& strHow)
{
    return bChanged ? eSucceeded : Fail("the value '" + oOptions.strName + "' could not be " + strHow);
}

int Exists(const RegistryOptions& oOptions)
{
    return PrintAnswer(CConfigParamsBase().IsRegistryKeyExists(HKEY_LOCAL_MACHINE, oOptions.strPath.c_str()));
}

// The library's listing does not tell if it could open the key, so the key is opened before.
template <auto pList>
int List(const RegistryOptions& oOptions)
{
    return WithKey(oOptions, Missing::eIsMade, [&](CConfigParamsBase& oParams, HKEY&) {
        std::vector<std::string> oLines;
        (oParams.*pList)(oOptions.strPath.c_str(), oLines);
        for (const auto& strLine : oLines)
            std::cout << strLine << '\n';
        return eSucceeded;
    });
}

int Get(const RegistryOptions& oOptions)
{
    return WithKey(oOptions, Missing::eIsMade, [&](CConfigParamsBase& oParams, HKEY& hKey) -> int {
        std::string strValue;
        if (!oParams.getRegString(hKey, oOptions.strName.c_str(), strValue))
            return NoSuchValue(oOptions, " that has at most 2047 bytes");
        std::cout << strValue << '\n';
        return eSucceeded;
    });
}

int GetDword(const RegistryOptions& oOptions)
{
    return WithKey(oOptions, Missing::eIsMade, [&](CConfigParamsBase& oParams, HKEY& hKey) -> int {
        unsigned long nValue = 0;
        if (!oParams.getRegDWORD(hKey, oOptions.strName.c_str(), nValue))
            return NoSuchValue(oOptions, " that has at most 4 bytes");
        std::cout << nValue << '\n';
        return eSucceeded;
    });
}

// The library does not tell if a write was refused, so the value is read back.
int Set(const RegistryOptions& oOptions)
{
    return WithKey(oOptions, Missing::eIsMade, [&](CConfigParamsBase& oParams, HKEY& hKey) {
        const char* const pszName = oOptions.strName.c_str();
        oParams.setRegString(hKey, pszName, oOptions.strValue.c_str());
        std::string strRead(oOptions.strValue.size() + 1, '\1');   // with the terminator
        const bool bRead = oParams.getRegString(hKey, pszName, strRead.data(), static_cast<int>(strRead.size()));
        return ReportChange(oOptions, bRead && oOptions.strValue == std::string_view(strRead.data()), "written");
    });
}

int SetDword(const RegistryOptions& oOptions)
{
    return WithKey(oOptions, Missing::eIsMade, [&](CConfigParamsBase& oParams, HKEY& hKey) {
        const char* const pszName = oOptions.strName.c_str();
        oParams.setRegDWORD(hKey, pszName, oOptions.nValue);
        unsigned long nRead = ~0ul - oOptions.nValue;
        const bool bRead = oParams.getRegDWORD(hKey, pszName, nRead);
        return ReportChange(oOptions, bRead && nRead == oOptions.nValue, "written");
    });
}

// The library does not tell if a removal was refused, either.
int Delete(const RegistryOptions& oOptions)
{
    return WithKey(oOptions, Missing::eFails, [&](CConfigParamsBase& oParams, HKEY& hKey) {
        std::vector<char> oData(nLargestData);
        const auto isThere = [&] {
            return oParams.getRegString(hKey, oOptions.strName.c_str(), oData.data(), static_cast<int>(oData.size()));
        };
        if (!isThere())
            return NoSuchValue(oOptions);
        oParams.DeleteRegValue(hKey, oOptions.strName.c_str());
        return ReportChange(oOptions, !isThere(), "removed");
    });
}

enum eArguments
{
    ePath,
    ePathName,
    ePathNameText,
    ePathNameNumber
};

struct RegistryOperation
{
    const char* pszName;
    const char* pszHelp;
    const char* pszExample;   // behind the name
    eArguments eTakes;
    int (*pfnRun)(const RegistryOptions&);
};
const RegistryOperation s_aRegistryOperations[] = {
    {"exists", "Tell whether a key is there", "'Software\\Example'", ePath, &Exists},
    {"keys", "Print the names of a key's subkeys", "Software", ePath, &List<&CConfigParamsBase::getRegSubKeys>},
    {"values", "Print the data of a key's values", "'Software\\Example'", ePath,
     &List<&CConfigParamsBase::getRegSubKeyValues>},
    {"get", "Print a text", "'Software\\Example' Greeting", ePathName, &Get},
    {"get-dword", "Print a number", "'Software\\Example' Answer", ePathName, &GetDword},
    {"set", "Write a text", "'Software\\Example' Greeting hello", ePathNameText, &Set},
    {"set-dword", "Write a number", "'Software\\Example' Answer 42", ePathNameNumber, &SetDword},
    {"delete", "Remove a value", "'Software\\Example' Greeting", ePathName, &Delete},
};

void DefineRegistry(CLI::App& oGroup, Action& action)
{
    oGroup.require_subcommand(1);
    for (const auto& [pszName, pszHelp, pszExample, eTakes, pfnRun] : s_aRegistryOperations)
    {
        const bool bCreates = pfnRun != &Exists && pfnRun != &Delete;
        auto& oCommand = AddCommand(oGroup, pszName, pszHelp, std::string("registry ") + pszName + " " + pszExample,
                                    bCreates ? "A key that is not there is created." : "");
        auto& oOptions = Runs(oCommand, action, pfnRun);
        AddArgument(oCommand, "PATH", oOptions.strPath, "Key under HKEY_LOCAL_MACHINE");
        if (eTakes != ePath)
            AddArgument(oCommand, "NAME", oOptions.strName, "Name of the value");
        if (eTakes == ePathNameText)
            AddArgument(oCommand, "VALUE", oOptions.strValue, "Text to write");
        if (eTakes == ePathNameNumber)
            AddArgument(oCommand, "VALUE", oOptions.nValue, "Number to write, 0 to 4294967295");
    }
}
const Command s_oRegistryCommand("registry", "Read and write parameters in the registry",
                                 "registry set 'Software\\Example' Greeting hello", &DefineRegistry);
}
