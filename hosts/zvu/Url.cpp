// zvu url: the percent-escapes of URLs.
#include "Command.h"
#include "StandardStreams.h"

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

void AddText(CLI::App& oUrl, Action& action, const char* pszName, const char* pszHelp,
             int (*pOperation)(const std::string&))
{
    const auto pText = std::make_shared<std::string>();
    auto* const pCommand = oUrl.add_subcommand(pszName, pszHelp);
    pCommand->add_option("TEXT", *pText, "The text")->required();
    pCommand->callback([=, &action] { action = [=] { return pOperation(*pText); }; });
}
}

void AddUrl(CLI::App& oApp, Action& action)
{
    auto* const pCommand = oApp.add_subcommand("url", "Escape a text for a URL, or undo that");
    pCommand->require_subcommand(1);
    AddText(*pCommand, action, "escape", "Print a text with all but letters and digits escaped", &Escape);
    AddText(*pCommand, action, "unescape", "Print a text with its escapes undone, and each + behind a ? as a blank",
            &Unescape);
    pCommand->footer("Example: zvu url escape 'a b&c'");
}
