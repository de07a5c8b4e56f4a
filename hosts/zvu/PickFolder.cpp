// zvu pick-folder: a folder that the user chooses.
#include "Command.h"
#include "System.h"

#include "ZevrinUtils/FolderDialog.h"

#include <iostream>

namespace
{
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
}

void AddPickFolder(CLI::App& oApp, Action& action)
{
    auto& oCommand = AddCommand(oApp, "pick-folder", "Let the user choose a folder, and print its path",
                                "pick-folder --title 'Where to?' --start /tmp", "To cancel is a failure.");
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
