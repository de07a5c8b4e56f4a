// zvu url: the percent-escapes of URLs.
#include "Command.h"
#include "System.h"

#include "ZevrinUtils/HttpServices.h"

#include <cstdlib>
#include <cstring>
#include <iostream>
#include <string_view>

namespace
{
using OwnedText = std::unique_ptr<char, decltype(&std::free)>;

int Print(const OwnedText& pText, std::size_t nLength)
{
    if (!pText)
        throw std::bad_alloc();
    MakeBinary(eStandardOutput);   // an escape may stand for any byte
    std::cout << std::string_view(pText.get(), nLength) << '\n';
    return eSucceeded;
}

int Escape(const std::string& strText)
{
    const OwnedText pText(CHttpServices().URL_Escape(strText.c_str(), 0), &std::free);
    return Print(pText, pText ? std::strlen(pText.get()) : 0);
}

int Unescape(const std::string& strText)
{
    int nLength = 0;
    const OwnedText pText(CHttpServices().URL_UnEscape(strText.c_str(), 0, nLength), &std::free);
    return Print(pText, static_cast<std::size_t>(nLength - 1));   // without the closing zero
}
}

void AddUrl(CLI::App& oApp, Action& action)
{
    auto& oGroup = AddGroup(oApp, "url", "Escape a text for a URL, or undo that", "url escape 'a b&c'");
    auto& oEscape =
        AddCommand(oGroup, "escape", "Print a text with all but letters and digits escaped", "url escape 'a b&c'");
    AddArgument(oEscape, "TEXT", Runs(oEscape, action, &Escape), "Any text");
    auto& oUnescape =
        AddCommand(oGroup, "unescape", "Print a text with its escapes undone, and each + behind a ? as a blank",
                   "url unescape '?q=a+b%26c'");
    AddArgument(oUnescape, "TEXT", Runs(oUnescape, action, &Unescape), "Text with escapes of a % and two digits");
}
