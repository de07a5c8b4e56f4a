// The framework's own texts, by the numbers of their string resources.
#pragma once

enum eFrameworkText : unsigned
{
    eMailLoadFailed = 61840,
    eMailEntryMissing = 61841
};

// Empty for a number that has no text.
const char* FrameworkText(unsigned nId) noexcept;
