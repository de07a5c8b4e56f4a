// zvu password: a generated password.
#include "Command.h"

#include "ZevrinUtils/Generators.h"

#include <iostream>

namespace
{
// 62 letters and digits, and three characters that come up rarely; the generator never returns if it is asked for more.
constexpr int nMostCharacters = 65;

int Password(const int& nLength)
{
    std::string strPassword;
    CSPasswordUtils().GeneratePassword(strPassword, nLength);
    std::cout << strPassword << '\n';
    return eSucceeded;
}
}

void AddPassword(CLI::App& oApp, Action& action)
{
    auto& oCommand = AddCommand(oApp, "password", "Print a password, the same one throughout a second", "password 12");
    AddArgument(oCommand, "LENGTH", Runs(oCommand, action, &Password),
                "Least number of characters, 1 to 65; up to two more may come")
        ->check(CLI::Range(1, nMostCharacters).description(""));
}
