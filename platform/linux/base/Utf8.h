// UTF-8, a character at a time.
#pragma once

#include <string>
#include <string_view>

inline constexpr char32_t nFirstHigh = 0xD800;   // of two surrogates, which stand for no characters
inline constexpr char32_t nFirstLow = 0xDC00;
inline constexpr char32_t nFirstInTwo = 0x10000;   // of those that take two units of UTF-16, and four bytes here

// The character that a text of at least one byte begins with, and its length; length 0 if there is none.
std::size_t Decode(std::string_view strText, char32_t& ch);

void Encode(char32_t ch, std::string& strText);
