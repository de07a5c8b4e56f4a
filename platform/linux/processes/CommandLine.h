// Command lines as Windows reads them.
#pragma once

#include <string>
#include <string_view>
#include <vector>

// The program and its arguments. Blanks and tabs separate, quotes hold together; backslashes are themselves, unless
// a quote follows them: then two make one, and an odd one makes the quote a character. In the program's name they
// are themselves always.
std::vector<std::string> SplitCommandLine(std::string_view strLine);

// An argument as such a line holds it: in quotes where it would be split without.
std::string QuotedArgument(const std::string& strArgument);
