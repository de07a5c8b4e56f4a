// zvu rights: full access for an account.
#include "Command.h"

#include "ZevrinUtils/FileAccessRights.h"

#include <iostream>

namespace
{
struct Options
{
    std::string strPath;
    std::string strAccount;
    bool bIsSid = false;
    bool bKeepInherited = false;
};

int Report(int nResult, const CString& strError)
{
    if (nResult)
        return eSucceeded;
    std::cerr << "zvu: " << static_cast<const char*>(strError) << '\n';
    return eFailed;
}

int Set(const Options& o)
{
    CString strError;
    const int nResult =
        ZVUSetFileAccessRights(o.strPath.c_str(), o.strAccount.c_str(), o.bIsSid, o.bKeepInherited, strError);
    return Report(nResult, strError);
}

int Add(const Options& o)
{
    CString strError;
    const int nResult = ZVUAddFileAccessRights(o.strPath.c_str(), o.strAccount.c_str(), o.bIsSid, strError);
    return Report(nResult, strError);
}

void AddOperation(CLI::App& oGroup, const char* pszName, const char* pszHelp, int (*pfnRun)(const Options&),
                  Action& action)
{
    const auto pOptions = std::make_shared<Options>();
    auto* const pCommand = oGroup.add_subcommand(pszName, pszHelp);
    pCommand->add_option("PATH", pOptions->strPath, "Folder or file")->required();
    pCommand->add_option("ACCOUNT", pOptions->strAccount, "Name of the account")->required();
    pCommand->add_flag("--sid", pOptions->bIsSid, "ACCOUNT is the string form of a SID");
    if (pfnRun == &Set)
        pCommand->add_flag("--keep-inherited", pOptions->bKeepInherited, "Keep what the folder above hands down");
    pCommand->callback([pOptions, pfnRun, &action] { action = [pOptions, pfnRun] { return pfnRun(*pOptions); }; });
}
}

void AddRights(CLI::App& oApp, Action& action)
{
    auto* const pGroup = oApp.add_subcommand("rights", "Give an account full access to a folder or file");
    pGroup->require_subcommand(1);
    AddOperation(*pGroup, "set", "Replace the access list by one entry", &Set, action);
    AddOperation(*pGroup, "add", "Put the entry into the access list", &Add, action);
    pGroup->footer("Example: zvu rights set folder S-1-1-0 --sid --keep-inherited");
}
