// The requests of zvu to the system that the library does not make for it. Only linux/ and windows/, which answer them,
// include headers of the system.
#pragma once

#include <cstdio>
#include <filesystem>
#include <string>

// The library leaves it to its host to start the socket layer and the user interface. Both last until the process ends.
// False if the system refuses.
bool StartSocketLayer();
bool StartUserInterface();

// The path of this program; empty if the system does not tell.
std::string ProgramPath();

// Sets a variable of the environment for the library and for processes that it starts.
void SetEnvironment(const char* pszName, const std::string& strValue);

enum eStandardStream
{
    eStandardInput = 0,
    eStandardOutput = 1,
    eStandardError = 2
};

// Lets bytes pass as they are. By default Windows translates line ends.
void MakeBinary(eStandardStream eStream);

bool IsTerminal(eStandardStream eStream);

// Creates or empties a file for bytes as they are; null, with errno, if that fails.
std::FILE* OpenForWriting(const std::filesystem::path& oPath);

// Removes a file that may still be open for writing through pFile, which may be null. Safe in a signal's handler.
void RemoveInHandler(const std::filesystem::path& oPath, std::FILE* pFile);

// The width of the terminal in characters; 0 if the stream is no terminal.
int TerminalColumns(eStandardStream eStream);

enum eStyle
{
    ePlain,
    eStrong,
    eFaint,
    eGood,
    eBad,
    eDoubtful,
    eStyles
};

// The style of all further standard output, on a terminal that can show it.
void SetStyle(eStyle eHow);
