// zvu inside-manager: whether the manager's name stands in the command line.
#include "Command.h"

#include "ZevrinUtils/SystemInfo.h"

void AddInsideManager(CLI::App& oApp, Action& action)
{
    auto& oCommand = AddCommand(oApp, "inside-manager", "Tell whether vdmanager.exe stands in the command line",
                                "inside-manager VDManager.exe");
    oCommand.allow_extras();   // which are in the command line too
    oCommand.callback([&action] { action = [] { return PrintAnswer(CSystemInfo::IsExecutionInsideVDManager()); }; });
}
