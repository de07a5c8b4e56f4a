// The program zvu: gathers the commands that have announced themselves, reads the command line and runs the one chosen.
#include "Command.h"
#include "support/Texts.h"

#include <algorithm>
#include <exception>
#include <iostream>
#include <string_view>

namespace
{
std::vector<const Command*> CommandsByName()
{
    auto oCommands = Command::All();
    std::ranges::sort(oCommands, {}, [](const Command* pCommand) { return std::string_view(pCommand->pszName); });
    return oCommands;
}

// The text of wrong usage names the command that it is about.
std::string UsageFailure(const CLI::App* pApp, const CLI::Error& oError)
{
    std::string strCommand = pApp->get_name();
    for (auto oChosen = pApp->get_subcommands(); !oChosen.empty(); oChosen = oChosen.front()->get_subcommands())
        strCommand += " " + oChosen.front()->get_name();
    return strCommand + ": " + oError.what() + "\n" + strCommand + " --help says more.\n";
}

int Run(int nArguments, char** ppArguments)
{
    CLI::App oApp{"Calls the ZevrinUtils library from the command line.", "zvu"};
    oApp.set_version_flag("--version", "zvu " ZVU_VERSION);
    oApp.require_subcommand(1);
    oApp.failure_message(&UsageFailure);
    oApp.footer("Put -- before a text that begins with a dash. Exit status: 0 success, or true; 1 failure, or false;\n"
                "2 wrong usage.\n"
                "Example: zvu resolve --help");
    Action action;
    for (const auto* const pCommand : CommandsByName())
        pCommand->pfnDefine(
            AddCommand(oApp, pCommand->pszName, pCommand->pszHelp, pCommand->pszExample, pCommand->pszNotes), action);
    try
    {
        oApp.parse(nArguments, ppArguments);
    }
    catch (const CLI::ParseError& oError)
    {
        return oApp.exit(oError) == 0 ? eSucceeded : eWrongUsage;   // --help is a success
    }
    const int nStatus = action();
    return std::cout.flush() ? nStatus : Fail("standard output cannot be written");
}
}

int main(int nArguments, char** ppArguments)
{
    std::ios::sync_with_stdio(false);   // a Windows console takes single characters slowly
    try
    {
        return Run(nArguments, ppArguments);
    }
    catch (const std::exception& oError)
    {
        return Fail(oError.what());
    }
    catch (CException* pError)
    {
        return Fail(TextOf(pError));
    }
}
