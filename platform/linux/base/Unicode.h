// Text as this system has it, UTF-8, in the forms that Windows' calls want: in units of 16 bits, and without regard to
// case. Names of files and keys are bytes that need not be UTF-8; all of this leaves such bytes as they are.
#pragma once

#include "ZevrinUtils/Types.h"

#include <string>
#include <string_view>

// A byte that is no part of a character becomes a surrogate that stands alone, 0xDC00 and its value, so that every name
// comes back as it was.
std::u16string Widened(std::string_view strText);
std::string Narrowed(const WCHAR* pszWide);

// The text in capitals, which is the same for texts that differ in case alone.
std::string FoldCase(std::string_view strText);
