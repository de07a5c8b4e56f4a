// Text in units of 16 bits. Names of files are bytes: one that is no part of a character becomes a surrogate that
// stands alone, 0xDC00 and its value, so that every name comes back as it was.
#pragma once

#include "ZevrinUtils/Types.h"

#include <string>
#include <string_view>

std::u16string Widened(std::string_view strText);
std::string Narrowed(const WCHAR* pszWide);
