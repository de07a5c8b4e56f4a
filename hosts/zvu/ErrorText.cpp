// zvu error-text: what the system says of an error number.
#include "Command.h"

#include "ZevrinUtils/SystemInfo.h"

#include <cstdint>
#include <iostream>

namespace
{
int ErrorText(std::uint32_t nError)
{
    std::string strText;
    CSystemInfo::GetFormatedMessageForWin32ErrCode(nError, strText);
    strText.resize(strText.find_last_not_of("\r\n") + 1);   // the system ends its lines, the library none
    std::cout << strText << '\n';
    return eSucceeded;
}
}

void AddErrorText(CLI::App& oApp, Action& action)
{
    const auto pError = std::make_shared<std::uint32_t>();
    auto* const pCommand = oApp.add_subcommand("error-text", "Print the system's text for a Win32 error number");
    pCommand->add_option("NUMBER", *pError, "The number")->required();
    pCommand->footer("Example: zvu error-text 5");
    pCommand->callback([pError, &action] { action = [pError] { return ErrorText(*pError); }; });
}
