#include "../StandardStreams.h"

#include <windows.h>

#include <fcntl.h>
#include <io.h>

namespace
{
HANDLE HandleOf(eStandardStream eStream)
{
    return reinterpret_cast<HANDLE>(_get_osfhandle(eStream));
}
}

void MakeBinary(eStandardStream eStream)
{
    _setmode(eStream, _O_BINARY);
}

bool IsTerminal(eStandardStream eStream)
{
    return _isatty(eStream) != 0;
}

int TerminalColumns(eStandardStream eStream)
{
    CONSOLE_SCREEN_BUFFER_INFO oInfo{};   // the null device counts as a terminal, but has none
    const bool bKnown = GetConsoleScreenBufferInfo(HandleOf(eStream), &oInfo);
    return bKnown ? oInfo.srWindow.Right - oInfo.srWindow.Left + 1 : 0;
}

bool TakesColours(eStandardStream eStream)
{
    DWORD nMode = 0;
    return GetConsoleMode(HandleOf(eStream), &nMode) &&
           SetConsoleMode(HandleOf(eStream), nMode | ENABLE_VIRTUAL_TERMINAL_PROCESSING);
}
