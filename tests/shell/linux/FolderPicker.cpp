// A host for the test of the browser's window: tells what its hooks hear, and answers as its arguments say.
//     folder_picker [START]
#include "ZevrinUtils/FolderDialog.h"

#include <iostream>

namespace
{
class HookedDialog final : public CFolderDialog
{
public:
    using CFolderDialog::CFolderDialog;

private:
    void OnInitialized() override
    {
        std::cout << "opened" << std::endl;
        const unsigned short szText[] = {'P', 'i', 'c', 'k', 0xE4, 0};
        SetOKText(szText);
        CFolderDialog::OnInitialized();
    }
    void OnSelChanged(const ITEMIDLIST* pItem) override
    {
        CFolderDialog::OnSelChanged(pItem);
        const CString strPath = GetPathName(pItem);
        std::cout << "selected " << strPath << std::endl;
        EnableOK(strPath.Find("forbidden") < 0);
    }
    int OnValidateFailed(const char* pszPath) override
    {
        std::cout << "refused " << pszPath << std::endl;
        return CFolderDialog::OnValidateFailed(pszPath);
    }
    LRESULT WindowProc(UINT nMessage, WPARAM wParam, LPARAM lParam) override
    {
        std::cout << "message " << nMessage << std::endl;
        return CFolderDialog::WindowProc(nMessage, wParam, lParam);
    }
};
}

int main(int nArguments, char** ppArguments)
{
    CWnd oNoParent;
    HookedDialog oDialog(&oNoParent);
    if (nArguments > 1)
    {
        const CString strFolder = oDialog.GetFolder("Where to?", ppArguments[1]);
        std::cout << "folder " << strFolder << std::endl;
    }
    const CString strValid = oDialog.GetValidFolder("Where to now?", true);
    std::cout << "valid " << strValid << '\n';
    std::cout << "name " << oDialog.GetDisplayName() << (oDialog.m_hWnd ? " held" : "") << std::endl;
}
