// What a process asks and sets of itself.
#pragma once

#include <string>

// The path of the program that runs; empty if the system does not tell.
std::string ProgramPath();

// A variable of the environment, as the library and processes that it starts read it.
void SetEnvironment(const char* pszName, const std::string& strValue);
