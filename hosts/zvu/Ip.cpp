// zvu ip: tests on addresses.
#include "Command.h"

#include "ZevrinUtils/IPServices.h"

#include <iostream>

namespace
{
int Valid(const std::string& strText)
{
    return PrintAnswer(CSIPServices::IsValidIP(strText.c_str()));
}

int Local(const std::string& strText)
{
    bool bIsLocal = false;
    if (CSIPServices::IsLocalIP(strText.c_str(), bIsLocal))
        return PrintAnswer(bIsLocal);
    return Fail("the network adapters cannot be read");
}
}

void AddIp(CLI::App& oApp, Action& action)
{
    auto& oGroup = AddGroup(oApp, "ip", "Test IPv4 addresses", "ip valid 192.0.2.1");
    auto& oValid = AddCommand(oGroup, "valid", "Tell whether a text has the form of an address", "ip valid 192.0.2.1",
                              "How many numbers it has is not looked at.");
    AddArgument(oValid, "TEXT", Runs(oValid, action, &Valid), "Numbers from 0 to 255 with dots between");
    auto& oLocal =
        AddCommand(oGroup, "local", "Tell whether an address is one of this machine's", "ip local 192.0.2.1");
    AddArgument(oLocal, "TEXT", Runs(oLocal, action, &Local), "IPv4 address as four numbers with dots between");
}
