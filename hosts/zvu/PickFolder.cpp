// zvu pick-folder: a folder that the user chooses.
#include "Command.h"
#include "UserInterface.h"

#include "ZevrinUtils/FolderDialog.h"

#include <iostream>

namespace
{
struct Options
{
    std::string strTitle = "Pick a folder";
    std::string strStart;
    std::string strRoot;
    bool bLast = false;
};

CString Pick(CFolderDialog& oDialog, const Options& oOptions)
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

int PickFolder(const Options& oOptions)
{
    if (!StartUserInterface())
    {
        std::cerr << "zvu: the user interface does not start\n";
        return eFailed;
    }
    CWnd oNoParent;
    CFolderDialog oDialog(&oNoParent);
    const CString strFolder = Pick(oDialog, oOptions);
    if (strFolder.IsEmpty())
    {
        std::cerr << "zvu: no folder was picked\n";
        return eFailed;
    }
    std::cout << strFolder << '\n';
    return eSucceeded;
}
}

void AddPickFolder(CLI::App& oApp, Action& action)
{
    const auto pOptions = std::make_shared<Options>();
    auto* const pCommand = oApp.add_subcommand("pick-folder", "Let the user choose a folder, and print its path");
    pCommand->add_option("--title", pOptions->strTitle, "Text above the folders")->capture_default_str();
    auto* const pStart = pCommand->add_option("--start", pOptions->strStart, "Folder that is selected at first");
    auto* const pRoot = pCommand->add_option("--root", pOptions->strRoot, "Folder at the top")->excludes(pStart);
    pCommand->add_flag("--last", pOptions->bLast, "Take a typed path that the browser does not know, such as a file's")
        ->excludes(pStart)
        ->excludes(pRoot);
    pCommand->footer("Example: zvu pick-folder --title 'Where to?' --start /tmp");
    pCommand->callback([pOptions, &action] { action = [pOptions] { return PickFolder(*pOptions); }; });
}
