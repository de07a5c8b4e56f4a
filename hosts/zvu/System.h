// What the host asks of the system by itself.
#pragma once

#include <cstdio>
#include <string>

// The library leaves it to its host to start the socket layer, and what windows need. Both last until the process
// ends. False if the system refuses.
bool StartSocketLayer();
bool StartUserInterface();

// The path of the program that runs; empty if the system does not tell.
std::string ProgramPath();

// A variable of the environment, as the library and the processes that it starts read it.
void SetEnvironment(const char* pszName, const std::string& strValue);

enum eStandardStream
{
    eStandardInput = 0,
    eStandardOutput = 1,
    eStandardError = 2
};

// Bytes pass as they are: on Windows, line ends are translated by default.
void MakeBinary(eStandardStream eStream);

bool IsTerminal(eStandardStream eStream);

// Removes a file in a signal's handler, although it may still be open for writing: through pFile, if that is not null.
void RemoveInHandler(const char* pszPath, std::FILE* pFile);

// How wide the terminal is, in characters; 0 if the stream is none.
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

// What is written to standard output from here on looks like this, on a terminal that can.
void SetStyle(eStyle eHow);
