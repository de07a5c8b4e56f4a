// zvu registry: parameters read and written from the command line.
#include "Command.h"

#include "ZevrinUtils/ConfigParams.h"

#include <cstdint>
#include <iostream>
#include <string_view>

namespace
{
struct Options
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

// Gives the opened key to use(CConfigParamsBase&, HKEY&), whose result is the exit status.
template <class Use>
int WithKey(const Options& oOptions, Missing eMissing, Use use)
{
    CConfigParamsBase oParams;
    HKEY hKey = nullptr;
    const char* const pszPath = oOptions.strPath.c_str();
    const long nError = eMissing == Missing::eIsMade ? oParams.OpenRegistry(pszPath, hKey)
                                                     : oParams.OpenRegistryKey(HKEY_LOCAL_MACHINE, pszPath, hKey);
    if (nError)
    {
        std::cerr << "zvu: the key '" << oOptions.strPath << "' cannot be opened: error " << nError << '\n';
        return eFailed;
    }
    const int nStatus = use(oParams, hKey);
    oParams.CloseRegistry(hKey);
    return nStatus;
}

int NoSuchValue(const Options& oOptions, const char* pszWhy)
{
    std::cerr << "zvu: no value '" << oOptions.strName << "' that " << pszWhy << '\n';
    return eFailed;
}

int Written(const Options& oOptions, bool bIsThere)
{
    if (bIsThere)
        return eSucceeded;
    std::cerr << "zvu: the value '" << oOptions.strName << "' could not be written\n";
    return eFailed;
}

int Exists(const Options& oOptions)
{
    return PrintAnswer(CConfigParamsBase().IsRegistryKeyExists(HKEY_LOCAL_MACHINE, oOptions.strPath.c_str()));
}

// A listing does not tell whether it could open the key.
template <auto pList>
int List(const Options& oOptions)
{
    return WithKey(oOptions, Missing::eIsMade, [&](CConfigParamsBase& oParams, HKEY&) {
        std::vector<std::string> oLines;
        (oParams.*pList)(oOptions.strPath.c_str(), oLines);
        for (const auto& strLine : oLines)
            std::cout << strLine << '\n';
        return eSucceeded;
    });
}

int Get(const Options& oOptions)
{
    return WithKey(oOptions, Missing::eIsMade, [&](CConfigParamsBase& oParams, HKEY& hKey) -> int {
        std::string strValue;
        if (!oParams.getRegString(hKey, oOptions.strName.c_str(), strValue))
            return NoSuchValue(oOptions, "has at most 2047 bytes");
        std::cout << strValue << '\n';
        return eSucceeded;
    });
}

int GetDword(const Options& oOptions)
{
    return WithKey(oOptions, Missing::eIsMade, [&](CConfigParamsBase& oParams, HKEY& hKey) -> int {
        unsigned long nValue = 0;
        if (!oParams.getRegDWORD(hKey, oOptions.strName.c_str(), nValue))
            return NoSuchValue(oOptions, "has at most 4 bytes");
        std::cout << nValue << '\n';
        return eSucceeded;
    });
}

// A write does not tell whether it was refused.
int Set(const Options& oOptions)
{
    return WithKey(oOptions, Missing::eIsMade, [&](CConfigParamsBase& oParams, HKEY& hKey) {
        const char* const pszName = oOptions.strName.c_str();
        oParams.setRegString(hKey, pszName, oOptions.strValue.c_str());
        std::string strRead(oOptions.strValue.size() + 1, '\1');   // with the terminator
        const bool bRead = oParams.getRegString(hKey, pszName, strRead.data(), static_cast<int>(strRead.size()));
        return Written(oOptions, bRead && oOptions.strValue == std::string_view(strRead.data()));
    });
}

int SetDword(const Options& oOptions)
{
    return WithKey(oOptions, Missing::eIsMade, [&](CConfigParamsBase& oParams, HKEY& hKey) {
        const char* const pszName = oOptions.strName.c_str();
        oParams.setRegDWORD(hKey, pszName, oOptions.nValue);
        unsigned long nRead = ~0ul - oOptions.nValue;
        return Written(oOptions, oParams.getRegDWORD(hKey, pszName, nRead) && nRead == oOptions.nValue);
    });
}

int Delete(const Options& oOptions)
{
    return WithKey(oOptions, Missing::eFails, [&](CConfigParamsBase& oParams, HKEY& hKey) {
        oParams.DeleteRegValue(hKey, oOptions.strName.c_str());
        return eSucceeded;
    });
}

enum eArguments
{
    ePath,
    eName,   // and the path
    eText,   // and both
    eNumber
};

struct Operation
{
    const char* pszName;
    const char* pszHelp;
    eArguments eTakes;
    int (*pfnRun)(const Options&);
};
const Operation s_aOperations[] = {
    {"exists", "Tell whether a key is there", ePath, &Exists},
    {"keys", "Print the names of a key's subkeys", ePath, &List<&CConfigParamsBase::getRegSubKeys>},
    {"values", "Print the data of a key's values", ePath, &List<&CConfigParamsBase::getRegSubKeyValues>},
    {"get", "Print a text", eName, &Get},
    {"get-dword", "Print a number", eName, &GetDword},
    {"set", "Write a text", eText, &Set},
    {"set-dword", "Write a number", eNumber, &SetDword},
    {"delete", "Remove a value", eName, &Delete},
};

void AddOperation(CLI::App& oGroup, const Operation& oOperation, Action& action)
{
    const auto pOptions = std::make_shared<Options>();
    auto* const pCommand = oGroup.add_subcommand(oOperation.pszName, oOperation.pszHelp);
    pCommand->add_option("PATH", pOptions->strPath, "Key under HKEY_LOCAL_MACHINE")->required();
    if (oOperation.eTakes != ePath)
        pCommand->add_option("NAME", pOptions->strName, "Name of the value")->required();
    if (oOperation.eTakes == eText)
        pCommand->add_option("VALUE", pOptions->strValue, "Text to write")->required();
    if (oOperation.eTakes == eNumber)
        pCommand->add_option("VALUE", pOptions->nValue, "Number to write, of 32 bits")->required();
    pCommand->callback(
        [pOptions, pfnRun = oOperation.pfnRun, &action] { action = [pOptions, pfnRun] { return pfnRun(*pOptions); }; });
}
}

void AddRegistry(CLI::App& oApp, Action& action)
{
    auto* const pGroup = oApp.add_subcommand("registry", "Read and write parameters in the registry");
    pGroup->require_subcommand(1);
    for (const auto& oOperation : s_aOperations)
        AddOperation(*pGroup, oOperation, action);
    pGroup->footer("All but exists and delete create a key that is not there.\n"
                   "Example: zvu registry set 'Software\\Example' Greeting hello");
}
