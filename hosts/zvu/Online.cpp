// zvu online: whether a server answers.
#include "Command.h"

#include "ZevrinUtils/HttpServices.h"

namespace
{
int Online(const std::string& strUrl)
{
    CString strAsked = strUrl;
    return PrintAnswer(CHttpServices().IsOnline(strAsked) != 0);
}

// The library takes an empty text or a long one for no URL at all, which says nothing about any server.
std::string CheckLength(const std::string& strUrl)
{
    return strUrl.empty() || strUrl.size() > 259 ? "a URL has 1 to 259 bytes" : "";
}
}

void AddOnline(CLI::App& oApp, Action& action)
{
    auto& oCommand =
        AddCommand(oApp, "online", "Tell whether a server answers a URL's connection", "online http://127.0.0.1:8080/");
    AddArgument(oCommand, "URL", Runs(oCommand, action, &Online), "URL of at most 259 bytes")->check(CheckLength, "");
}
