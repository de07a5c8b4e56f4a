// zvu mail and zvu pick-folder: the commands that open a window, in which the user does the rest.
#include "Command.h"
#include "System.h"

#include "ZevrinUtils/FolderDialog.h"
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

// Prints the failure that the mail holds. False if there is none.
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

struct PickFolderOptions
{
    std::string strTitle = "Pick a folder";
    std::string strStart;
    std::string strRoot;
    bool bLast = false;
};

CString Pick(CFolderDialog& oDialog, const PickFolderOptions& oOptions)
{
    const CString strTitle(oOptions.strTitle);
    if (oOptions.bLast)
        return oDialog.GetValidFolder(strTitle, true);
    if (!oOptions.strStart.empty())
        return oDialog.GetFolder(strTitle, CString(oOptions.strStart));
    if (oOptions.strRoot.empty())
        return oDialog.GetFolder(strTitle);
    const ITEMIDLIST* const pItem = oDialog.BrowseForFolder(strTitle, CString(oOptions.strRoot));
    CString strFolder = CFolderDialog::GetPathName(pItem);
    CFolderDialog::FreePIDL(pItem);
    return strFolder;
}

int PickFolder(const PickFolderOptions& oOptions)
{
    if (!StartUserInterface())
        return Fail("the user interface does not start");
    CWnd oNoParent;
    CFolderDialog oDialog(&oNoParent);
    const CString strFolder = Pick(oDialog, oOptions);
    if (strFolder.IsEmpty())
        return Fail("no folder was picked");
    std::cout << strFolder << '\n';
    return eSucceeded;
}

void DefineMail(CLI::App& oCommand, Action& action)
{
    auto& oOptions = Runs(oCommand, action, &Mail);
    oCommand.add_option("--to", oOptions.oTo, "Main recipient; may be repeated")->required()->expected(1, -1);
    oCommand.add_option("--cc", oOptions.oCc, "Copy recipient; may be repeated");
    oCommand.add_option("--subject", oOptions.strSubject, "Subject");
    oCommand.add_option("--text", oOptions.strText, "Text");
    oCommand.add_option("--from", oOptions.strFrom, "Sender, where the mail client takes one from others");
    oCommand.add_option("--attach", oOptions.oPaths, "File to attach; may be repeated");
}
const Command s_oMailCommand("mail", "Show a message in the mail client, ready to be sent",
                             "mail --to jane@example.com --subject Report --attach report.pdf", &DefineMail);

void DefinePickFolder(CLI::App& oCommand, Action& action)
{
    auto& oOptions = Runs(oCommand, action, &PickFolder);
    oCommand.add_option("--title", oOptions.strTitle, "Text above the folders")->capture_default_str();
    auto* const pStart = oCommand.add_option("--start", oOptions.strStart, "Folder that is selected at first");
    auto* const pRoot = oCommand.add_option("--root", oOptions.strRoot, "Folder at the top")->excludes(pStart);
    oCommand
        .add_flag("--last", oOptions.bLast,
                  "Begin with the folder that this process picked last, and take a typed path that the browser does "
                  "not know, such as a file's")
        ->excludes(pStart)
        ->excludes(pRoot);
}
const Command s_oPickFolderCommand("pick-folder", "Let the user choose a folder, and print its path",
                                   "pick-folder --title 'Where to?' --start /tmp", &DefinePickFolder,
                                   "To cancel is a failure.");
}
