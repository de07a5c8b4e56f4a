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

// What is written from here on to a terminal, by std::cout or std::cerr, looks like this. Without effect on any other
// stream.
void SetStyle(eStandardStream eStream, eStyle eHow);
