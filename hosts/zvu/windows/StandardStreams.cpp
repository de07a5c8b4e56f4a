#include "../StandardStreams.h"

#include <windows.h>

#include <fcntl.h>
#include <io.h>

#include <iostream>
#include <iterator>

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

void SetStyle(eStandardStream eStream, eStyle eHow)
{
    constexpr WORD nGrey = FOREGROUND_RED | FOREGROUND_GREEN | FOREGROUND_BLUE;
    constexpr WORD anAttributes[] = {nGrey,
                                     nGrey | FOREGROUND_INTENSITY,
                                     FOREGROUND_INTENSITY,
                                     FOREGROUND_GREEN,
                                     FOREGROUND_RED | FOREGROUND_INTENSITY,
                                     FOREGROUND_RED | FOREGROUND_GREEN};
    static_assert(std::size(anAttributes) == eStyles);
    (eStream == eStandardError ? std::cerr : std::cout).flush();
    SetConsoleTextAttribute(HandleOf(eStream), anAttributes[eHow]);   // fails on what is no terminal
}
