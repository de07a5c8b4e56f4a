// Between the library and the desktop module, which holds everything that needs GTK and is loaded when a window is
// first wanted. Plain C, as the two are built apart. Paths and texts are UTF-8 and borrowed for the call.
#pragma once

struct DesktopBrowser;   // an open folder browser

struct DesktopBrowse
{
    const char* pszText;   // above the tree
    const char* pszRoot;   // the folder at the top; empty: the desktop
    bool bEditBox;
    bool bValidate;      // ask pfnRefused about a typed text that is no folder
    bool bFoldersOnly;   // the desktop itself is no choice

    void* pContext;   // for the functions, which run during the call and throw nothing
    void (*pfnOpened)(void* pContext, DesktopBrowser* pBrowser);
    void (*pfnSelected)(void* pContext, const char* pszPath);   // empty: the desktop
    int (*pfnRefused)(void* pContext, const char* pszTyped);    // 0: close without a choice; otherwise stay open
    void (*pfnClosing)(void* pContext);                         // the last one
};

// For the thread that asked for them.
struct DesktopCalls
{
    // The chosen path, empty for the desktop, in memory of malloc; null if the user cancels.
    char* (*pfnBrowse)(const DesktopBrowse* pBrowse);

    void (*pfnSelect)(DesktopBrowser* pBrowser, const char* pszPath);
    void (*pfnEnableOk)(DesktopBrowser* pBrowser, bool bEnable);
    void (*pfnSetOkText)(DesktopBrowser* pBrowser, const char* pszText);
    const char* (*pfnCaption)(DesktopBrowser* pBrowser);
    void (*pfnCancel)(DesktopBrowser* pBrowser);

    // Waits until the user has read it. The owner may be null.
    void (*pfnShowError)(DesktopBrowser* pOwner, const char* pszText, const char* pszCaption);

    // False if the user cancels; otherwise both in memory of malloc.
    bool (*pfnAskForCredentials)(const char* pszWhat, char** ppszUser, char** ppszPassword);
};

// The module's one function: null where there is no display, or where another thread runs the process's windows.
using DesktopEntry = const DesktopCalls* (*)();
inline constexpr char s_szDesktopEntry[] = "ZevrinDesktop";
