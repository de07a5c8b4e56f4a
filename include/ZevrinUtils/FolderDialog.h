/// @file
/// The folder picker: lets the user choose a folder in the shell's browser.
#pragma once

#include "ZevrinUtils/Export.h"
#include "ZevrinUtils/ShellTypes.h"
#include "ZevrinUtils/framework/InterfacePtr.h"
#include "ZevrinUtils/framework/Wnd.h"

/// Shows the shell's folder browser, which is a CWnd of this object while it is open. Adds to it a folder that is
/// selected at first, paths that the user types, and a memory of the folder picked last.
///
///     CWnd oParent(hMyWindow);
///     CFolderDialog oDialog(&oParent);
///     const CString strFolder = oDialog.GetValidFolder("Where to?", true);   // empty: canceled
///
/// A browse call returns when the browser has closed. An object can browse any number of times.
///
/// Item lists: those that BrowseForFolder returns are the caller's, for FreePIDL. The operations that give a path
/// leave one unfreed each time, and so does the overload with a root path.
///
/// Limits: a title and a path must be shorter than 260 bytes; of a longer start folder the first 259 count. A title
/// must not be null, and lives for the call.
///
/// Threads: an object belongs to one thread, which on Windows has started COM (the new dialog style needs it). The
/// memory of the last folder is shared by all objects and guarded by nothing.
///
/// On Linux the browser is a window of GTK 3. Where there is no display, or the library was built without GTK, every
/// browse ends as canceled at once.
class ZEVRINUTILS_API CFolderDialog : public CWnd
{
public:
    /// @param pParent  owner of the browser, not null; it may hold no window
    explicit CFolderDialog(CWnd* pParent);
    ~CFolderDialog() override;

    /// Browses the file system, with an edit box whose text is checked. Gives the chosen item, null if
    /// the user canceled.
    const ITEMIDLIST* BrowseForFolder(const char* pszTitle);

    /// Browses below a folder, in the same way but that the edit box is not checked.
    const ITEMIDLIST* BrowseForFolder(const char* pszTitle, const CString& strRootPath);

    /// Browses as the caller likes. Gives the chosen item, null if the user canceled.
    ///
    /// @param pszTitle  text above the tree
    /// @param nFlags    BIF_ flags of the shell
    /// @param pRoot     the item at the top, which must live on; null: the desktop
    /// @param nOption   stored, and without any effect
    const ITEMIDLIST* BrowseForFolder(const char* pszTitle, unsigned int nFlags, const ITEMIDLIST* pRoot, int nOption);

    /// The path of the folder that was chosen; empty if the user canceled, or typed a path that the shell does not
    /// know. This one is the old dialog, without an edit box, and its title is fixed: "Pick a folder, dude!".
    CString GetFolder();
    CString GetFolder(const CString& strTitle);   ///< the same in the new dialog

    /// Like GetFolder with a title, but begins in a folder.
    ///
    /// @param strTitle        text above the tree
    /// @param strStartFolder  selected at first, by this and all later browses of the object
    CString GetFolder(const CString& strTitle, const CString& strStartFolder);

    /// Like GetFolder with a title, but a typed path counts too if there is a file or folder of that name. The answer
    /// is remembered for the rest of the process.
    ///
    /// @param strTitle        text above the tree
    /// @param bUseLastFolder  true: what was remembered is selected at first
    CString GetValidFolder(const CString& strTitle, bool bUseLastFolder);

    /// The name under which the shell shows the folder that was chosen last.
    CString GetDisplayName();

    /// Path of an item; empty for null and for what has none.
    static CString GetPathName(const ITEMIDLIST* pItem);

    /// Name of an item in a folder of the shell, by SHGDN_ flags; empty on failure.
    static CString GetDisplayNameOf(IShellFolder* pFolder, const ITEMIDLIST* pItem, unsigned long nFlags);

    /// Frees an item list of the shell; null does nothing.
    static void FreePIDL(const ITEMIDLIST* pItem);

protected:
    /// The function that the shell calls; nData is the object.
    static int CALLBACK CallbackProc(HWND hWindow, UINT nMessage, LPARAM nValue, LPARAM nData);

    /// A message of the browser: passes it to the hook for it. The value is a `long` but where that is too narrow for a
    /// pointer, on 64-bit Windows. The result is the browser's answer.
    virtual int OnMessage(unsigned int nMessage, LPARAM nValue);

    /// The browser has opened. This one selects the start folder.
    virtual void OnInitialized();

    /// Another item is selected. This one keeps its path.
    virtual void OnSelChanged(const ITEMIDLIST* pItem);

    /// The user has pressed OK, and the edit box holds what the shell does not know. 0 closes the browser, anything
    /// else keeps it open. This one accepts a path of something that exists, and shows a message for any other.
    virtual int OnValidateFailed(const char* pszPath);

    /// For the hooks: enables the open browser's OK button, or with 0 disables it.
    void EnableOK(int nEnable);
    void SetOKText(const unsigned short* pszText);   ///< its text: UTF-16, ended by a zero, read during the call

    /// The item of a path, null if there is none. It is the caller's, for FreePIDL.
    ITEMIDLIST* ConvertPathToLpItemIdList(const char* pszPath);

private:
    friend struct CFolderDialogPeer;   // the tests: the layout

    BROWSEINFOA m_oBrowseInfo{};
    CString m_strDisplayName;
    int m_bBrowseOption = 0;
    CInterfacePtr<IShellFolder> m_pDesktopFolder;
    CString m_strStartFolder;
    CString m_strCurrentFolder;
    bool m_bFolderTyped = false;
};
