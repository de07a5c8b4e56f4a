// zvu inside-manager: whether the manager's name stands in the command line.
#include "Command.h"

#include "ZevrinUtils/SystemInfo.h"

void AddInsideManager(CLI::App& oApp, Action& action)
{
    auto* const pCommand =
        oApp.add_subcommand("inside-manager", "Tell whether vdmanager.exe stands in the command line");
    pCommand->allow_extras();   // which are in the command line too
    pCommand->footer("Example: zvu inside-manager VDManager.exe");
    pCommand->callback([&action] { action = [] { return PrintAnswer(CSystemInfo::IsExecutionInsideVDManager()); }; });
}
