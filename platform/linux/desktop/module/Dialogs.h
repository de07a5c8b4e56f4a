// The module's dialogs, and what they share.
#pragma once

#include "platform/linux/desktop/DesktopCalls.h"
#include "util/Owned.h"

#include <string>

#include <gtk/gtk.h>

// GTK takes nothing but UTF-8; what is none is shown with marks in its place.
inline std::string Shown(const char* pszText)
{
    const Owned<char, g_free> pszValid(g_utf8_make_valid(pszText, -1));
    return pszValid.get();
}

// GTK serves one thread at a time, the one whose windows the process runs.
class MainContext
{
public:
    MainContext() : m_bOurs(g_main_context_acquire(nullptr)) {}
    ~MainContext()
    {
        if (m_bOurs)
            g_main_context_release(nullptr);
    }
    MainContext(const MainContext&) = delete;
    MainContext& operator=(const MainContext&) = delete;

    explicit operator bool() const noexcept { return m_bOurs; }

private:
    const bool m_bOurs;
};

// A dialog with the two buttons of all of them, the first of which is pressed by Enter.
GtkWidget* NewDialog(const char* pszCaption, GtkWidget** ppOk);

// Takes a window off the screen for good.
void DestroyWindow(GtkWidget* pWindow);

char* BrowseForFolder(const DesktopBrowse* pBrowse);
void SelectFolder(DesktopBrowser* pBrowser, const char* pszPath);
void EnableOk(DesktopBrowser* pBrowser, bool bEnable);
void SetOkText(DesktopBrowser* pBrowser, const char* pszText);
const char* CaptionOf(DesktopBrowser* pBrowser);
void CancelBrowse(DesktopBrowser* pBrowser);
GtkWindow* WindowOf(DesktopBrowser* pBrowser);   // null for null

bool AskForCredentialsInWindow(const char* pszWhat, char** ppszUser, char** ppszPassword);
