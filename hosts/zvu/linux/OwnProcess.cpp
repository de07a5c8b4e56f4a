#include "../OwnProcess.h"

#include <cstdlib>
#include <filesystem>

std::string ProgramPath()
{
    std::error_code oIgnored;
    return std::filesystem::read_symlink("/proc/self/exe", oIgnored).string();
}

void SetEnvironment(const char* pszName, const std::string& strValue)
{
    setenv(pszName, strValue.c_str(), 1);
}
