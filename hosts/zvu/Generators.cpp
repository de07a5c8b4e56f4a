// zvu guid and zvu password: new identifiers and passwords, from the library's generators.
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

// 62 letters and digits, and three characters that come up rarely. Asked for more, the generator never returns.
constexpr int nMostCharacters = 65;

int Password(const int& nLength)
{
    std::string strPassword;
    CSPasswordUtils().GeneratePassword(strPassword, nLength);
    std::cout << strPassword << '\n';
    return eSucceeded;
}

void DefineGuid(CLI::App& oCommand, Action& action)
{
    oCommand.callback([&action] { action = &Guid; });
}
const Command s_oGuidCommand("guid", "Print a new GUID", "guid", &DefineGuid);

void DefinePassword(CLI::App& oCommand, Action& action)
{
    AddArgument(oCommand, "LENGTH", Runs(oCommand, action, &Password),
                "Least number of characters, 1 to 65; up to two more may come")
        ->check(CLI::Range(1, nMostCharacters).description(""));
}
const Command s_oPasswordCommand("password", "Print a password, the same one throughout a second", "password 12",
                                 &DefinePassword);
}
