// zvu error-text: what the system says of an error number.
#include "Command.h"

#include "ZevrinUtils/SystemInfo.h"

#include <cstdint>
#include <iostream>

namespace
{
int PrintErrorText(const std::uint32_t& nError)
{
    std::cout << ErrorText(nError) << '\n';
    return eSucceeded;
}
}

std::string ErrorText(unsigned long nError)
{
    std::string strText;
    CSystemInfo::GetFormatedMessageForWin32ErrCode(nError, strText);
    strText.resize(strText.find_last_not_of("\r\n") + 1);   // the system ends its lines, the library none
    return strText;
}

void AddErrorText(CLI::App& oApp, Action& action)
{
    auto& oCommand = AddCommand(oApp, "error-text", "Print the system's text for a Win32 error number", "error-text 5");
    AddArgument(oCommand, "NUMBER", Runs(oCommand, action, &PrintErrorText), "0 to 4294967295, also as 0x and digits");
}
