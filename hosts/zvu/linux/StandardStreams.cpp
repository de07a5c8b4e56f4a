#include "../StandardStreams.h"

#include <sys/ioctl.h>
#include <unistd.h>

#include <cstdlib>
#include <iostream>
#include <iterator>
#include <string_view>

constexpr int nUsualColumns = 80;   // of a terminal that does not tell

// Nothing is translated on Linux.
void MakeBinary(eStandardStream) {}

bool IsTerminal(eStandardStream eStream)
{
    return isatty(eStream) != 0;
}

int TerminalColumns(eStandardStream eStream)
{
    winsize oSize{};
    if (!IsTerminal(eStream))
        return 0;
    return ioctl(eStream, TIOCGWINSZ, &oSize) == 0 && oSize.ws_col > 0 ? oSize.ws_col : nUsualColumns;
}

void SetStyle(eStandardStream eStream, eStyle eHow)
{
    constexpr const char* apszSequences[] = {"\x1b[0m", "\x1b[1m", "\x1b[2m", "\x1b[32m", "\x1b[1;31m", "\x1b[33m"};
    static_assert(std::size(apszSequences) == eStyles);
    const char* const pszTerminal = std::getenv("TERM");
    if (IsTerminal(eStream) && pszTerminal && std::string_view(pszTerminal) != "dumb")
        (eStream == eStandardError ? std::cerr : std::cout) << apszSequences[eHow];
}
