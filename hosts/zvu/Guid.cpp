// zvu guid: a new GUID.
#include "Command.h"

#include "ZevrinUtils/Generators.h"

#include <iostream>

void AddGuid(CLI::App& oApp, Action& action)
{
    auto* const pCommand = oApp.add_subcommand("guid", "Print a new GUID");
    pCommand->callback([&action] {
        action = [] {
            const std::string strGuid = CSGuid::CreateGUID();
            if (strGuid.empty())
            {
                std::cerr << "zvu: the system gives no identifier\n";
                return eFailed;
            }
            std::cout << strGuid << '\n';
            return eSucceeded;
        };
    });
}
