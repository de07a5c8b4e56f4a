// zvu run-and-wait: a process run to its end.
#include "Command.h"

#include "ZevrinUtils/Folder.h"

namespace
{
int RunAndWait(const std::string& strCommandLine)
{
    CSFolder::CreateProcessAndWait(nullptr, strCommandLine.c_str(), nullptr);
    return eSucceeded;
}
}

void AddRunAndWait(CLI::App& oApp, Action& action)
{
    auto& oCommand =
        AddCommand(oApp, "run-and-wait", "Run a command line and wait for its end", "run-and-wait 'touch \"a file\"'",
                   "Nothing is reported, not even a program that does not start.");
    AddArgument(oCommand, "COMMAND", Runs(oCommand, action, &RunAndWait),
                "Program and arguments, quoted as on Windows");
}
