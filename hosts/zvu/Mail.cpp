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

struct MailOptions
{
    std::vector<std::string> oTo;
    std::vector<std::string> oCc;
    std::vector<std::string> oPaths;
    std::string strSubject;
    std::string strText;
    std::string strFrom;
};

// Tells of the failure that the mail holds; false if there is none.
bool ReportFailure(CSIMapi& oMail)
{
    unsigned int nCode = 0;
    CString strText;
    oMail.GetLastError(nCode, strText);
    return nCode != 0 && Fail(static_cast<const char*>(strText));
}

std::vector<Attachment> AttachmentsAt(const std::vector<std::string>& oPaths)
{
    std::vector<Attachment> oAttachments;
    oAttachments.reserve(oPaths.size());
    for (const auto& strPath : oPaths)
        oAttachments.push_back({strPath, std::filesystem::path(strPath).filename().string()});
    return oAttachments;
}

int Mail(const MailOptions& oOptions)
{
    const auto oAttachments = AttachmentsAt(oOptions.oPaths);   // the mail keeps pointers to them
    CSIMapi oMail;
    if (ReportFailure(oMail))
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
    if (ReportFailure(oMail))
        return eFailed;
    if (oMail.Send(0))
        return eSucceeded;
    ReportFailure(oMail);
    return eFailed;
}
}

void AddMail(CLI::App& oApp, Action& action)
{
    auto& oCommand = AddCommand(oApp, "mail", "Show a message in the mail client, ready to be sent",
                                "mail --to jane@example.com --subject Report --attach report.pdf");
    auto& oOptions = Runs(oCommand, action, &Mail);
    oCommand.add_option("--to", oOptions.oTo, "Main recipient; may be repeated")->required()->expected(1, -1);
    oCommand.add_option("--cc", oOptions.oCc, "Copy recipient; may be repeated");
    oCommand.add_option("--subject", oOptions.strSubject, "Subject");
    oCommand.add_option("--text", oOptions.strText, "Text");
    oCommand.add_option("--from", oOptions.strFrom, "Sender, where the mail client takes one from others");
    oCommand.add_option("--attach", oOptions.oPaths, "File to attach; may be repeated");
}
