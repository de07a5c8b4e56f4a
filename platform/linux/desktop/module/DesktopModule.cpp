// The module's one door. Whoever comes through it has GTK running, and the right thread.
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

constexpr DesktopCalls s_oCalls = {&BrowseForFolder, &SelectFolder, &EnableOk,  &SetOkText,
                                   &CaptionOf,       &CancelBrowse, &ShowError, &AskForCredentialsInWindow};
}

extern "C" __attribute__((visibility("default"))) const DesktopCalls* ZevrinDesktop()
{
    const MainContext oContext;
    return oContext && StartGtk() ? &s_oCalls : nullptr;
}
