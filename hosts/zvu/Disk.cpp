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
    {
        std::cerr << "zvu: the disk does not answer\n";
        return eFailed;
    }
    std::cout << dPercent << '\n' << ulMegabytes << '\n';
    return eSucceeded;
}
}

void AddDisk(CLI::App& oApp, Action& action)
{
    const auto pDirectory = std::make_shared<std::string>();
    auto* const pCommand = oApp.add_subcommand("disk", "Print how much of a disk is free, in percent and in MiB");
    pCommand->add_option("DIRECTORY", *pDirectory, "Any directory on it; the current one at first");
    pCommand->footer("Example: zvu disk /tmp");
    pCommand->callback([pDirectory, &action] { action = [pDirectory] { return Disk(*pDirectory); }; });
}
