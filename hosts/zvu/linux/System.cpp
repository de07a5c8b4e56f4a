// The host's requests to the system, on Linux.
#include "../System.h"

#include <sys/ioctl.h>
#include <unistd.h>

#include <cstdlib>
#include <iostream>
#include <iterator>
#include <string_view>

// Linux has nothing to start.
bool StartSocketLayer()
{
    return true;
}

bool StartUserInterface()
{
    return true;
}

// Linux translates no bytes.
void MakeBinary(eStandardStream) {}

std::string ProgramPath()
{
    std::error_code oIgnored;
    return std::filesystem::read_symlink("/proc/self/exe", oIgnored).string();
}

void SetEnvironment(const char* pszName, const std::string& strValue)
{
    setenv(pszName, strValue.c_str(), 1);
}

bool IsTerminal(eStandardStream eStream)
{
    return isatty(eStream) != 0;
}

std::FILE* OpenForWriting(const std::filesystem::path& oPath)
{
    return std::fopen(oPath.c_str(), "wb");
}

void RemoveInHandler(const std::filesystem::path& oPath, std::FILE*)
{
    unlink(oPath.c_str());
}

int TerminalColumns(eStandardStream eStream)
{
    constexpr int nUsualColumns = 80;   // of a terminal that does not tell
    winsize oSize{};
    if (!IsTerminal(eStream))
        return 0;
    return ioctl(eStream, TIOCGWINSZ, &oSize) == 0 && oSize.ws_col > 0 ? oSize.ws_col : nUsualColumns;
}

void SetStyle(eStyle eHow)
{
    constexpr const char* apszSequences[] = {"\x1b[0m", "\x1b[1m", "\x1b[2m", "\x1b[32m", "\x1b[1;31m", "\x1b[33m"};
    static_assert(std::size(apszSequences) == eStyles);
    const char* const pszTerminal = std::getenv("TERM");
    if (IsTerminal(eStandardOutput) && pszTerminal && std::string_view(pszTerminal) != "dumb")
        std::cout << apszSequences[eHow];
}
