// The alphabet, and what each character means in a text.
#pragma once

#include <array>

inline constexpr char Base64Alphabet[] = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";

inline constexpr unsigned char nPaddingValue = 0xFF;
inline constexpr unsigned char nOtherValue = 0xFE;   // its low six bits count, and are those of '+'

// By character: 0 to 63, padding, or other. Texts from channels that set the top bit are read as if it were clear.
inline constexpr std::array<unsigned char, 256> g_anBase64Values = [] {
    std::array<unsigned char, 256> anValues{};
    anValues.fill(nOtherValue);
    const auto set = [&](char ch, unsigned char nValue) {
        anValues[static_cast<unsigned char>(ch)] = nValue;
        anValues[static_cast<unsigned char>(ch) | 0x80U] = nValue;
    };
    for (unsigned char n = 0; n < 64; ++n)
        set(Base64Alphabet[n], n);
    set('=', nPaddingValue);
    return anValues;
}();

// The characters that are skipped wherever they stand in a text: the control characters of lines and pages, and the
// blank.
inline constexpr unsigned char nFirstLineControl = 0x07;
inline constexpr unsigned char nLastLineControl = 0x0D;
inline constexpr unsigned char nBlank = 0x20;

constexpr bool IsSkipped(unsigned char nChar) noexcept
{
    return (nChar >= nFirstLineControl && nChar <= nLastLineControl) || nChar == nBlank;
}
