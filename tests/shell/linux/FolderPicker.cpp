// A host for the test of the browser's window: tells what its hooks hear, and answers as its arguments say.
//     folder_picker [START [HOOK]]     the hook "opened" or "selected" throws
#include "ZevrinUtils/FolderDialog.h"

#include <iostream>
#include <stdexcept>
#include <string>

namespace
{
std::string s_strThrowing;

void Hear(const char* pszHook, const char* pszWhat)
{
    std::cout << pszHook << pszWhat << std::endl;
    if (s_strThrowing == pszHook)
        throw std::runtime_error(s_strThrowing);
}

class HookedDialog final : public CFolderDialog
{
public:
    using CFolderDialog::CFolderDialog;

private:
    void OnInitialized() override
    {
        Hear("opened", "");
        const unsigned short szText[] = {'P', 'i', 'c', 'k', 0xE4, 0};
        SetOKText(szText);
        CFolderDialog::OnInitialized();
    }
    void OnSelChanged(const ITEMIDLIST* pItem) override
    {
        CFolderDialog::OnSelChanged(pItem);
        const CString strPath = GetPathName(pItem);
        Hear("selected", " " + strPath);
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
        s_strThrowing = nArguments > 2 ? ppArguments[2] : "";
        try
        {
            const CString strFolder = oDialog.GetFolder("Where to?", ppArguments[1]);
            std::cout << "folder " << strFolder << std::endl;
        }
        catch (const std::runtime_error& oThrown)
        {
            std::cout << "caught " << oThrown.what() << std::endl;
            return 0;
        }
    }
    const CString strValid = oDialog.GetValidFolder("Where to now?", true);
    std::cout << "valid " << strValid << '\n';
    std::cout << "name " << oDialog.GetDisplayName() << (oDialog.m_hWnd ? " held" : "") << std::endl;
}
