// zvu mail: a message in the mail client's window.
#include "Command.h"

#include "ZevrinUtils/SimpleMapi.h"

#include <filesystem>
#include <iostream>

namespace
{
struct Attachment
{
    std::string strPath;
    std::string strName;
};

struct Options
{
    std::vector<std::string> oTo;
    std::vector<std::string> oCc;
    std::vector<std::string> oPaths;
    std::string strSubject;
    std::string strText;
    std::string strFrom;
};

// True if the mail holds no failure; otherwise tells it.
bool IsWell(CSIMapi& oMail)
{
    unsigned int nCode = 0;
    CString strText;
    oMail.GetLastError(nCode, strText);
    if (nCode != 0)
        std::cerr << "zvu: " << strText << '\n';
    return nCode == 0;
}

std::vector<Attachment> AttachmentsAt(const std::vector<std::string>& oPaths)
{
    std::vector<Attachment> oAttachments;
    oAttachments.reserve(oPaths.size());
    for (const auto& strPath : oPaths)
        oAttachments.push_back({strPath, std::filesystem::path(strPath).filename().string()});
    return oAttachments;
}

int Mail(const Options& oOptions)
{
    const auto oAttachments = AttachmentsAt(oOptions.oPaths);   // the mail keeps pointers to them
    CSIMapi oMail;
    if (!IsWell(oMail))
        return eFailed;
    for (const auto& strName : oOptions.oTo)
        oMail.To(strName.c_str());
    for (const auto& strName : oOptions.oCc)
        oMail.Cc(strName.c_str());
    for (const auto& [strPath, strName] : oAttachments)
        oMail.Attach(strPath.c_str(), strName.c_str());
    if (!oOptions.strSubject.empty())
        oMail.SetSubject(oOptions.strSubject.c_str());
    if (!oOptions.strFrom.empty())
        oMail.SetFrom(oOptions.strFrom.c_str());
    oMail.SetText(oOptions.strText.c_str());
    if (IsWell(oMail) && oMail.Send(0))
        return eSucceeded;
    IsWell(oMail);   // tells why it was not sent
    return eFailed;
}
}

void AddMail(CLI::App& oApp, Action& action)
{
    const auto pOptions = std::make_shared<Options>();
    auto* const pCommand = oApp.add_subcommand("mail", "Show a message in the mail client, ready to be sent");
    pCommand->add_option("--to", pOptions->oTo, "Main recipient; may be repeated")->required()->expected(1, -1);
    pCommand->add_option("--cc", pOptions->oCc, "Copy recipient; may be repeated");
    pCommand->add_option("--subject", pOptions->strSubject, "Subject");
    pCommand->add_option("--text", pOptions->strText, "Text");
    pCommand->add_option("--from", pOptions->strFrom, "Sender, where the mail client takes one from others");
    pCommand->add_option("--attach", pOptions->oPaths, "File to attach; may be repeated");
    pCommand->footer("Example: zvu mail --to jane@example.com --subject Report --attach report.pdf");
    pCommand->callback([pOptions, &action] { action = [pOptions] { return Mail(*pOptions); }; });
}
