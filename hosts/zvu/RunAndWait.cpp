// zvu run-and-wait: a process run to its end.
#include "Command.h"

#include "ZevrinUtils/Folder.h"

void AddRunAndWait(CLI::App& oApp, Action& action)
{
    const auto pCommandLine = std::make_shared<std::string>();
    auto* const pCommand = oApp.add_subcommand("run-and-wait", "Run a command line and wait for its end");
    pCommand->add_option("COMMAND", *pCommandLine, "Program and arguments, quoted as on Windows")->required();
    pCommand->footer("Nothing is reported, not even a program that does not start.\n"
                     "Example: zvu run-and-wait 'touch \"a file\"'");
    pCommand->callback([pCommandLine, &action] {
        action = [pCommandLine] {
            CSFolder::CreateProcessAndWait(nullptr, pCommandLine->c_str(), nullptr);
            return eSucceeded;
        };
    });
}
