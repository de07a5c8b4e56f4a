// zvu disk, zvu error-text and zvu inside-manager: the questions to the system that CSystemInfo answers.
#include "Command.h"
#include "support/Texts.h"

#include "ZevrinUtils/SystemInfo.h"

#include <cstdint>
#include <iostream>

namespace
{
int Disk(const std::string& strDirectory)
{
    CSystemInfo oInfo;
    oInfo.SetDiskSpaceDirectory(strDirectory);
    double dPercent = 0;
    unsigned long ulMegabytes = 0;
    if (!oInfo.GetFreeDiskSpacePercent(dPercent, ulMegabytes))
        return Fail("the disk does not answer");
    std::cout << dPercent << '\n' << ulMegabytes << '\n';
    return eSucceeded;
}

int PrintErrorText(const std::uint32_t& nError)
{
    std::cout << ErrorText(nError) << '\n';
    return eSucceeded;
}

void DefineDisk(CLI::App& oCommand, Action& action)
{
    oCommand.add_option("DIRECTORY", Runs(oCommand, action, &Disk), "Any directory on it; the current one by default")
        ->type_name("");
}
const Command s_oDiskCommand("disk", "Print how much of a disk is free, in percent and in MiB", "disk /tmp",
                             &DefineDisk);

void DefineErrorText(CLI::App& oCommand, Action& action)
{
    AddArgument(oCommand, "NUMBER", Runs(oCommand, action, &PrintErrorText), "0 to 4294967295, also as 0x and digits");
}
const Command s_oErrorTextCommand("error-text", "Print the system's text for a Win32 error number", "error-text 5",
                                  &DefineErrorText);

void DefineInsideManager(CLI::App& oCommand, Action& action)
{
    oCommand.allow_extras();   // which are in the command line too
    oCommand.callback([&action] { action = [] { return PrintAnswer(CSystemInfo::IsExecutionInsideVDManager()); }; });
}
const Command s_oInsideManagerCommand("inside-manager", "Tell whether vdmanager.exe stands in the command line",
                                      "inside-manager VDManager.exe", &DefineInsideManager);
}
