#include "../OwnProcess.h"

#include <windows.h>

#include <array>

std::string ProgramPath()
{
    std::array<char, MAX_PATH> achPath{};
    return {achPath.data(), GetModuleFileNameA(nullptr, achPath.data(), MAX_PATH)};
}

void SetEnvironment(const char* pszName, const std::string& strValue)
{
    SetEnvironmentVariableA(pszName, strValue.c_str());
}
