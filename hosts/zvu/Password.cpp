// zvu password: a generated password.
#include "Command.h"

#include "ZevrinUtils/Generators.h"

#include <iostream>

namespace
{
// 62 letters and digits, and three characters that come up rarely; for more the generator would draw for ever.
constexpr int nMostCharacters = 65;
}

void AddPassword(CLI::App& oApp, Action& action)
{
    const auto pLength = std::make_shared<int>();
    auto* const pCommand = oApp.add_subcommand("password", "Print a password, the same one throughout a second");
    pCommand->add_option("LENGTH", *pLength, "Least number of characters; up to two more may come")
        ->required()
        ->check(CLI::Range(1, nMostCharacters));
    pCommand->callback([pLength, &action] {
        action = [pLength] {
            std::string strPassword;
            CSPasswordUtils().GeneratePassword(strPassword, *pLength);
            std::cout << strPassword << '\n';
            return eSucceeded;
        };
    });
}
