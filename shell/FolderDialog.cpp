// The browser is the shell's; here it learns to begin in a folder, to take typed paths and to remember. It becomes this
// object's window with its first message, because nobody knows its window before. Flags differ by entry point, and item
// lists stay unfreed, as hosts know it (docs/folder-dialog.md).
#include "ZevrinUtils/FolderDialog.h"

#include "platform/Files.h"
#include "platform/Shell.h"
#include "platform/Text.h"
#include "platform/UserInterface.h"
#include "shell/LastFolder.h"

#include <algorithm>

namespace
{
constexpr int nPathSize = 260;

// The entry points differ on purpose; hosts know them so.
constexpr unsigned nStandardFlags =
    BIF_RETURNONLYFSDIRS | BIF_STATUSTEXT | BIF_EDITBOX | BIF_VALIDATE | BIF_NEWDIALOGSTYLE;
constexpr unsigned nBelowRootFlags = (nStandardFlags & ~BIF_VALIDATE) | BIF_SHAREABLE;
constexpr unsigned nOldDialogFlags = BIF_RETURNONLYFSDIRS | BIF_STATUSTEXT;

constexpr char s_szNotFound[] = "The folder %s could not be found.\r\nPlease check the path and folder name or select "
                                "an existing folder, then try again.";
}

CFolderDialog::CFolderDialog(CWnd* pParent)
{
    m_oBrowseInfo.hwndOwner = pParent->m_hWnd;
    ShellService().SHGetDesktopFolder(&m_pDesktopFolder);
}

CFolderDialog::~CFolderDialog() = default;

const ITEMIDLIST* CFolderDialog::BrowseForFolder(const char* pszTitle)
{
    return BrowseForFolder(pszTitle, nStandardFlags, nullptr, 0);
}

// The root's list is left in the record, unfreed.
const ITEMIDLIST* CFolderDialog::BrowseForFolder(const char* pszTitle, const CString& strRootPath)
{
    return BrowseForFolder(pszTitle, nBelowRootFlags, ConvertPathToLpItemIdList(strRootPath), 0);
}

const ITEMIDLIST* CFolderDialog::BrowseForFolder(const char* pszTitle, unsigned int nFlags, const ITEMIDLIST* pRoot,
                                                 int nOption)
{
    m_oBrowseInfo.pidlRoot = pRoot;
    m_oBrowseInfo.pszDisplayName = m_strDisplayName.GetBuffer(nPathSize);
    m_oBrowseInfo.lpszTitle = pszTitle;
    m_oBrowseInfo.ulFlags = nFlags;
    m_oBrowseInfo.lpfn = &CallbackProc;
    m_oBrowseInfo.lParam = reinterpret_cast<LPARAM>(this);
    m_bBrowseOption = nOption;
    const ITEMIDLIST* const pChosen = ShellService().SHBrowseForFolderA(&m_oBrowseInfo);
    m_strDisplayName.ReleaseBuffer();
    return pChosen;
}

CString CFolderDialog::GetFolder()
{
    return GetPathName(BrowseForFolder("Pick a folder, dude!", nOldDialogFlags, nullptr, 0));
}

CString CFolderDialog::GetFolder(const CString& strTitle)
{
    return GetPathName(BrowseForFolder(strTitle));
}

CString CFolderDialog::GetFolder(const CString& strTitle, const CString& strStartFolder)
{
    m_strStartFolder = strStartFolder;
    return GetFolder(strTitle);
}

CString CFolderDialog::GetValidFolder(const CString& strTitle, bool bUseLastFolder)
{
    if (bUseLastFolder)
        m_strStartFolder = g_strLastFolder;
    const CString strPicked = GetPathName(BrowseForFolder(strTitle));
    CString strAnswer = m_bFolderTyped ? m_strCurrentFolder : strPicked;
    if (!strAnswer.IsEmpty())
        g_strLastFolder = strAnswer;
    // Also when nothing was picked: a first cancelation remembers a lone backslash, and hosts know it.
    if (g_strLastFolder.Right(1) != "\\")
        g_strLastFolder += '\\';
    return strAnswer;
}

CString CFolderDialog::GetDisplayName()
{
    return m_strDisplayName;
}

CString CFolderDialog::GetPathName(const ITEMIDLIST* pItem)
{
    CString strPath;
    ShellService().SHGetPathFromIDListA(pItem, strPath.GetBuffer(nPathSize));
    strPath.ReleaseBuffer();
    return strPath;
}

CString CFolderDialog::GetDisplayNameOf(IShellFolder* pFolder, const ITEMIDLIST* pItem, unsigned long nFlags)
{
    CString strText;
    STRRET oName{};
    oName.uType = STRRET_CSTR;
    if (SUCCEEDED(pFolder->GetDisplayNameOf(pItem, static_cast<DWORD>(nFlags), &oName)))
        ShellService().StrRetToBufA(&oName, pItem, strText.GetBuffer(nPathSize), nPathSize);
    strText.ReleaseBuffer();
    return strText;
}

void CFolderDialog::FreePIDL(const ITEMIDLIST* pItem)
{
    CInterfacePtr<IMalloc> pMalloc;
    ShellService().SHGetMalloc(&pMalloc);
    if (pMalloc)
        pMalloc->Free(const_cast<ITEMIDLIST*>(pItem));
}

int CALLBACK CFolderDialog::CallbackProc(HWND hWindow, UINT nMessage, LPARAM nValue, LPARAM nData)
{
    auto& oDialog = *reinterpret_cast<CFolderDialog*>(nData);
    if (oDialog.m_hWnd != hWindow)   // the first message of a browser, whichever it is
    {
        if (oDialog.m_hWnd)
            oDialog.UnsubclassWindow();
        oDialog.SubclassWindow(hWindow);
    }
    return oDialog.OnMessage(nMessage, nValue);
}

int CFolderDialog::OnMessage(unsigned int nMessage, LPARAM nValue)
{
    switch (nMessage)
    {
    case BFFM_INITIALIZED: OnInitialized(); return 0;
    case BFFM_SELCHANGED: OnSelChanged(reinterpret_cast<const ITEMIDLIST*>(nValue)); return 0;
    case BFFM_VALIDATEFAILEDA: return OnValidateFailed(reinterpret_cast<const char*>(nValue));
    default: return 0;
    }
}

void CFolderDialog::OnInitialized()
{
    if (m_strStartFolder.IsEmpty())
        return;
    char szFolder[nPathSize] = {};
    std::copy_n(static_cast<const char*>(m_strStartFolder), std::min(m_strStartFolder.GetLength(), nPathSize - 1),
                szFolder);
    UserInterface().SendMessageA(m_hWnd, BFFM_SETSELECTIONA, TRUE, reinterpret_cast<LPARAM>(szFolder));
}

void CFolderDialog::OnSelChanged(const ITEMIDLIST* pItem)
{
    m_strCurrentFolder = GetPathName(pItem);
    m_bFolderTyped = false;
}

int CFolderDialog::OnValidateFailed(const char* pszPath)
{
    m_bFolderTyped = true;
    if (Files().GetFileAttributesA(pszPath) != INVALID_FILE_ATTRIBUTES)   // a file will do as well
    {
        m_strCurrentFolder = pszPath;
        return 0;
    }
    m_strCurrentFolder.Empty();
    CString strMessage(s_szNotFound);
    strMessage.Replace("%s", pszPath);   // no formatting: a path may hold percent signs
    CString strCaption;
    GetWindowText(strCaption);
    UserInterface().MessageBoxA(m_hWnd, strMessage, strCaption, MB_OK | MB_ICONHAND);
    return 1;
}

void CFolderDialog::EnableOK(int nEnable)
{
    UserInterface().SendMessageA(m_hWnd, BFFM_ENABLEOK, 0, nEnable);
}

void CFolderDialog::SetOKText(const unsigned short* pszText)
{
    UserInterface().SendMessageA(m_hWnd, BFFM_SETOKTEXT, 0, reinterpret_cast<LPARAM>(pszText));
}

ITEMIDLIST* CFolderDialog::ConvertPathToLpItemIdList(const char* pszPath)
{
    CInterfacePtr<IShellFolder> pDesktop;
    if (!SUCCEEDED(ShellService().SHGetDesktopFolder(&pDesktop)))
        return nullptr;
    WCHAR szPath[nPathSize + 1] = {};   // a path that fills it has its zero all the same
    Text().MultiByteToWideChar(CP_ACP, MB_PRECOMPOSED, pszPath, -1, szPath, nPathSize);
    ITEMIDLIST* pItem = nullptr;
    pDesktop->ParseDisplayName(nullptr, nullptr, szPath, nullptr, &pItem, nullptr);
    return pItem;
}
