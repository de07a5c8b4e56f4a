// Texts that several commands make: of times, numbers and failures. They stand here so that each is worded one way.
#pragma once

#include "ZevrinUtils/framework/Exception.h"

#include <chrono>
#include <cstdlib>
#include <memory>
#include <sstream>
#include <string>

// The pieces as one text.
template <class... Piece>
std::string Text(const Piece&... oPiece)
{
    std::ostringstream oText;
    (oText << ... << oPiece);
    return oText.str();
}

// 1234567 as "1,234,567".
std::string Grouped(unsigned long long nNumber);

// "117 us", "4.2 ms", "12 s", "1:30", "2:00:00".
std::string TimeText(std::chrono::duration<double> nTime);

// 4300 as "4.2 KiB".
std::string SizeText(double nBytes);

// The system's text for a Win32 error number, on one line.
std::string ErrorText(unsigned long nError);

// The text of an exception that the library has thrown. It deletes the exception, which is the catcher's duty.
std::string TextOf(CException* pError);

// A text of the library that the caller has to free.
struct Free
{
    void operator()(char* pText) const { std::free(pText); }
};
using OwnedText = std::unique_ptr<char, Free>;
