// What the standard library does not say or do about the three standard streams.
#pragma once

enum eStandardStream
{
    eStandardInput = 0,
    eStandardOutput = 1,
    eStandardError = 2
};

// Bytes pass as they are: on Windows, line ends are translated by default.
void MakeBinary(eStandardStream eStream);

bool IsTerminal(eStandardStream eStream);

// How wide the terminal is, in characters; 0 if the stream is none.
int TerminalColumns(eStandardStream eStream);

// Whether the terminal understands the escape sequences for colours, which some have to be told first.
bool TakesColours(eStandardStream eStream);
