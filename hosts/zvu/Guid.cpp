// zvu guid: a new identifier.
#include "Command.h"

#include "ZevrinUtils/Generators.h"

#include <iostream>

namespace
{
int Guid()
{
    const std::string strGuid = CSGuid::CreateGUID();
    if (strGuid.empty())
        return Fail("the system gives no identifier");
    std::cout << strGuid << '\n';
    return eSucceeded;
}
}

void AddGuid(CLI::App& oApp, Action& action)
{
    AddCommand(oApp, "guid", "Print a new GUID", "guid").callback([&action] { action = &Guid; });
}
