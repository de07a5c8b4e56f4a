#include "../StandardStreams.h"

#include <sys/ioctl.h>
#include <unistd.h>

#include <cstdlib>
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

bool TakesColours(eStandardStream eStream)
{
    const char* const pszTerminal = std::getenv("TERM");
    return IsTerminal(eStream) && pszTerminal && std::string_view(pszTerminal) != "dumb";
}
