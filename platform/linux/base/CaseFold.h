// Names without regard to case.
#pragma once

#include <string>
#include <string_view>

// The text in capitals, which is the same for texts that differ in case alone. It is read as UTF-8; bytes that are
// none stay as they are.
std::string FoldCase(std::string_view strText);
