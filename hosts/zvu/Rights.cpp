// zvu rights: gives an account full access to a folder or file.
#include "Command.h"

#include "ZevrinUtils/FileAccessRights.h"

#include <iostream>

namespace
{
struct RightsOptions
{
    std::string strPath;
    std::string strAccount;
    bool bIsSid = false;
    bool bKeepInherited = false;
};

int Report(int nResult, const CString& strError)
{
    return nResult ? eSucceeded : Fail(static_cast<const char*>(strError));
}

int Set(const RightsOptions& o)
{
    CString strError;
    const int nResult =
        ZVUSetFileAccessRights(o.strPath.c_str(), o.strAccount.c_str(), o.bIsSid, o.bKeepInherited, strError);
    return Report(nResult, strError);
}

int Add(const RightsOptions& o)
{
    CString strError;
    const int nResult = ZVUAddFileAccessRights(o.strPath.c_str(), o.strAccount.c_str(), o.bIsSid, strError);
    return Report(nResult, strError);
}

RightsOptions& AddOperation(CLI::App& oCommand, Action& action, int (*pfnRun)(const RightsOptions&))
{
    auto& oOptions = Runs(oCommand, action, pfnRun);
    AddArgument(oCommand, "PATH", oOptions.strPath, "Folder or file");
    AddArgument(oCommand, "ACCOUNT", oOptions.strAccount, "Name of the account");
    oCommand.add_flag("--sid", oOptions.bIsSid, "ACCOUNT is the string form of a SID");
    return oOptions;
}

void DefineRights(CLI::App& oGroup, Action& action)
{
    oGroup.require_subcommand(1);
    auto& oSet = AddCommand(oGroup, "set", "Replace the access list by one entry",
                            "rights set photos S-1-1-0 --sid --keep-inherited");
    oSet.add_flag("--keep-inherited", AddOperation(oSet, action, &Set).bKeepInherited,
                  "Keep what the folder above hands down");
    AddOperation(AddCommand(oGroup, "add", "Put the entry into the access list", "rights add photos jane"), action,
                 &Add);
}
const Command s_oRightsCommand("rights", "Give an account full access to a folder or file", "rights add photos jane",
                               &DefineRights);
}
