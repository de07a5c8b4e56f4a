// zvu disk: how much of a disk is free.
#include "Command.h"

#include "ZevrinUtils/SystemInfo.h"

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
}

void AddDisk(CLI::App& oApp, Action& action)
{
    auto& oCommand = AddCommand(oApp, "disk", "Print how much of a disk is free, in percent and in MiB", "disk /tmp");
    oCommand.add_option("DIRECTORY", Runs(oCommand, action, &Disk), "Any directory on it; the current one by default")
        ->type_name("");
}
