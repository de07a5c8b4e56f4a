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
    std::cerr << "zvu: the network adapters cannot be read\n";
    return eFailed;
}

void AddText(CLI::App& oGroup, const char* pszName, const char* pszHelp, int (*pfnRun)(const std::string&),
             Action& action)
{
    const auto pText = std::make_shared<std::string>();
    auto* const pCommand = oGroup.add_subcommand(pszName, pszHelp);
    pCommand->add_option("TEXT", *pText, "The address")->required();
    pCommand->callback([pText, pfnRun, &action] { action = [pText, pfnRun] { return pfnRun(*pText); }; });
}
}

void AddIp(CLI::App& oApp, Action& action)
{
    auto* const pGroup = oApp.add_subcommand("ip", "Test IPv4 addresses");
    pGroup->require_subcommand(1);
    AddText(*pGroup, "valid", "Tell whether a text has the form of an address", &Valid, action);
    AddText(*pGroup, "local", "Tell whether an address is one of this machine's", &Local, action);
    pGroup->footer("Example: zvu ip valid 192.0.2.1");
}
