// The host's requests to the system, on Windows.
#include "../System.h"

#include "ZevrinUtils/Types.h"

#include <fcntl.h>
#include <io.h>
#include <ole2.h>

#include <array>
#include <iostream>
#include <iterator>

namespace
{
HANDLE HandleOf(eStandardStream eStream)
{
    return reinterpret_cast<HANDLE>(_get_osfhandle(eStream));
}
}

bool StartSocketLayer()
{
    WSADATA oData{};
    return WSAStartup(MAKEWORD(2, 2), &oData) == 0;
}

bool StartUserInterface()
{
    return SUCCEEDED(OleInitialize(nullptr));
}

std::string ProgramPath()
{
    std::array<char, MAX_PATH> achPath{};
    return {achPath.data(), GetModuleFileNameA(nullptr, achPath.data(), MAX_PATH)};
}

void SetEnvironment(const char* pszName, const std::string& strValue)
{
    SetEnvironmentVariableA(pszName, strValue.c_str());
}

void MakeBinary(eStandardStream eStream)
{
    _setmode(eStream, _O_BINARY);
}

bool IsTerminal(eStandardStream eStream)
{
    return _isatty(eStream) != 0;
}

std::FILE* OpenForWriting(const std::filesystem::path& oPath)
{
    return _wfopen(oPath.c_str(), L"wb");
}

// An open file cannot be removed, so it is closed. Handlers run on a thread of their own and may wait for a write to
// end.
void RemoveInHandler(const std::filesystem::path& oPath, std::FILE* pFile)
{
    if (pFile)
        _close(_fileno(pFile));
    _wunlink(oPath.c_str());
}

int TerminalColumns(eStandardStream eStream)
{
    CONSOLE_SCREEN_BUFFER_INFO oInfo{};   // the null device counts as a terminal, but has none
    const bool bKnown = GetConsoleScreenBufferInfo(HandleOf(eStream), &oInfo);
    return bKnown ? oInfo.srWindow.Right - oInfo.srWindow.Left + 1 : 0;
}

// By attributes: not every console understands escape sequences, and one that does not may claim to.
void SetStyle(eStyle eHow)
{
    constexpr WORD nGrey = FOREGROUND_RED | FOREGROUND_GREEN | FOREGROUND_BLUE;
    constexpr WORD anAttributes[] = {nGrey,
                                     nGrey | FOREGROUND_INTENSITY,
                                     FOREGROUND_INTENSITY,
                                     FOREGROUND_GREEN,
                                     FOREGROUND_RED | FOREGROUND_INTENSITY,
                                     FOREGROUND_RED | FOREGROUND_GREEN};
    static_assert(std::size(anAttributes) == eStyles);
    std::cout.flush();
    SetConsoleTextAttribute(HandleOf(eStandardOutput), anAttributes[eHow]);   // fails on what is no terminal
}
