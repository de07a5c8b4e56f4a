// zvu online and zvu url: tells if a URL's server answers, and escapes and unescapes texts for URLs.
#include "Command.h"
#include "System.h"
#include "support/Texts.h"

#include "ZevrinUtils/HttpServices.h"

#include <cstring>
#include <iostream>
#include <string_view>

namespace
{
int Online(const std::string& strUrl)
{
    CString strAsked = strUrl;
    return PrintAnswer(CHttpServices().IsOnline(strAsked) != 0);
}

// The library takes an empty or a long text for no URL at all, and its answer would say nothing about a server.
std::string CheckLength(const std::string& strUrl)
{
    return strUrl.empty() || strUrl.size() > 259 ? "a URL has 1 to 259 bytes" : "";
}

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
    const OwnedText pText(CHttpServices().URL_Escape(strText.c_str(), 0));
    return Print(pText, pText ? std::strlen(pText.get()) : 0);
}

int Unescape(const std::string& strText)
{
    int nLength = 0;
    const OwnedText pText(CHttpServices().URL_UnEscape(strText.c_str(), 0, nLength));
    return Print(pText, static_cast<std::size_t>(nLength - 1));   // without the closing zero
}

void DefineOnline(CLI::App& oCommand, Action& action)
{
    AddArgument(oCommand, "URL", Runs(oCommand, action, &Online), "URL of at most 259 bytes")->check(CheckLength, "");
}
const Command s_oOnlineCommand("online", "Tell whether a server answers a URL's connection",
                               "online http://127.0.0.1:8080/", &DefineOnline);

void DefineUrl(CLI::App& oGroup, Action& action)
{
    oGroup.require_subcommand(1);
    auto& oEscape =
        AddCommand(oGroup, "escape", "Print a text with all but letters and digits escaped", "url escape 'a b&c'");
    AddArgument(oEscape, "TEXT", Runs(oEscape, action, &Escape), "Any text");
    auto& oUnescape =
        AddCommand(oGroup, "unescape", "Print a text with its escapes undone, and each + behind a ? as a blank",
                   "url unescape '?q=a+b%26c'");
    AddArgument(oUnescape, "TEXT", Runs(oUnescape, action, &Unescape), "Text with escapes of a % and two digits");
}
const Command s_oUrlCommand("url", "Escape a text for a URL, or undo that", "url escape 'a b&c'", &DefineUrl);
}
