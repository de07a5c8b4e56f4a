// zvu online: whether a server answers.
#include "Command.h"

#include "ZevrinUtils/HttpServices.h"

#include <iostream>

namespace
{
int Online(const std::string& strUrl)
{
    CString strAsked = strUrl;
    const bool bOnline = CHttpServices().IsOnline(strAsked) != 0;
    std::cout << (bOnline ? "online\n" : "offline\n");
    return bOnline ? eSucceeded : eFailed;
}
}

void AddOnline(CLI::App& oApp, Action& action)
{
    const auto pUrl = std::make_shared<std::string>();
    auto* const pCommand = oApp.add_subcommand("online", "Tell whether a server answers a URL's connection");
    // The library takes an empty text or a long one for no URL at all, which says nothing about any server.
    pCommand->add_option("URL", *pUrl, "URL of at most 259 bytes")->required()->check([](const std::string& strText) {
        return strText.empty() || strText.size() > 259 ? "a URL has 1 to 259 bytes" : std::string();
    });
    pCommand->footer("Example: zvu online http://127.0.0.1:8080/");
    pCommand->callback([pUrl, &action] { action = [pUrl] { return Online(*pUrl); }; });
}
