// The xcopy of systems that have none.
#pragma once

#include <string>
#include <vector>

// The arguments of a process that does what those of an xcopy ask for; none if they are not for xcopy.
std::vector<std::string> TranslateXCopy(const std::vector<std::string>& oArguments);
