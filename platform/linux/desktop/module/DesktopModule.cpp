// The module's one door, and the box that shows an error. Whoever comes through the door has GTK running, and the right
// thread.
#include "Dialogs.h"

namespace
{
// A host that has no windows of its own keeps its locale.
bool StartGtk()
{
    if (gdk_display_get_default())
        return true;
    static bool s_bLocaleKept = false;
    if (!s_bLocaleKept)
        gtk_disable_setlocale();
    s_bLocaleKept = true;
    return gtk_init_check(nullptr, nullptr);
}

void ShowError(DesktopBrowser* pOwner, const char* pszText, const char* pszCaption)
{
    const MainContext oContext;
    if (!oContext)
        return;
    GtkWidget* const pDialog = gtk_message_dialog_new(WindowOf(pOwner), GTK_DIALOG_MODAL, GTK_MESSAGE_ERROR,
                                                      GTK_BUTTONS_OK, "%s", Shown(pszText).c_str());
    gtk_window_set_title(GTK_WINDOW(pDialog), Shown(pszCaption).c_str());
    gtk_dialog_run(GTK_DIALOG(pDialog));
    DestroyWindow(pDialog);
}

constexpr DesktopCalls s_oCalls = {&BrowseForFolder, &SelectFolder, &EnableOk,  &SetOkText,
                                   &CaptionOf,       &CancelBrowse, &ShowError, &AskForCredentialsInWindow};
}

extern "C" __attribute__((visibility("default"))) const DesktopCalls* ZevrinDesktop()
{
    const MainContext oContext;
    return oContext && StartGtk() ? &s_oCalls : nullptr;
}
