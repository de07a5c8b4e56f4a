#include "Command.h"

#include "ZevrinUtils/framework/Exception.h"

#include <array>
#include <exception>
#include <iostream>

namespace
{
int Run(int nArguments, char** ppArguments)
{
    CLI::App oApp{"Calls the ZevrinUtils library from the command line.", "zvu"};
    oApp.require_subcommand(1);
    Action action;
    AddBase64(oApp, action);
    AddDisk(oApp, action);
    AddErrorText(oApp, action);
    AddFolder(oApp, action);
    AddGet(oApp, action);
    AddGuid(oApp, action);
    AddInsideManager(oApp, action);
    AddIp(oApp, action);
    AddListen(oApp, action);
    AddMail(oApp, action);
    AddOnline(oApp, action);
    AddPassword(oApp, action);
    AddPickFolder(oApp, action);
    AddRegistry(oApp, action);
    AddResolve(oApp, action);
    AddRights(oApp, action);
    AddRunAndWait(oApp, action);
    AddSql(oApp, action);
    AddTour(oApp, action);
    AddUrl(oApp, action);
    try
    {
        oApp.parse(nArguments, ppArguments);
    }
    catch (const CLI::ParseError& oError)
    {
        return oApp.exit(oError) == 0 ? eSucceeded : eWrongUsage;   // --help is a success
    }
    return action();
}
}

int main(int nArguments, char** ppArguments)
{
    try
    {
        return Run(nArguments, ppArguments);
    }
    catch (const std::exception& oError)
    {
        std::cerr << "zvu: " << oError.what() << '\n';
        return eFailed;
    }
    catch (CException* pError)
    {
        std::array<char, 1000> achText{};
        pError->GetErrorMessage(achText.data(), achText.size());
        pError->Delete();
        std::cerr << "zvu: " << achText.data() << '\n';
        return eFailed;
    }
}
