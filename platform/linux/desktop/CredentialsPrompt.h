// The question to the user for a name and a password.
#pragma once

#include <optional>
#include <string>

struct Credentials
{
    std::string strUser;
    std::string strPassword;
};

// Asks in a window; where there is none to be had, on the process's terminal, without showing the password. Nothing if
// the user cancels (on a terminal by Ctrl-C, Ctrl-D or an empty name), or if there is neither, or the process does not
// hold its terminal's foreground.
std::optional<Credentials> AskForCredentials(const std::string& strWhat);
