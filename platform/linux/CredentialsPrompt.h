// Asking the user for a name and a password.
#pragma once

#include <optional>
#include <string>

struct Credentials
{
    std::string strUser;
    std::string strPassword;
};

// Asks on the process's terminal, without showing the password. Nothing if the user cancels (Ctrl-C, Ctrl-D or an
// empty name), or if there is no terminal, or the process does not hold its foreground.
std::optional<Credentials> AskForCredentials(const std::string& strWhat);
