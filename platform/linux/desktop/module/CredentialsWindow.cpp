// The window that asks for a name and a password.
#include "Dialogs.h"

#include <cstring>

namespace
{
GtkWidget* AddEntry(GtkGrid* pGrid, int nRow, const char* pszLabel, bool bShown)
{
    GtkWidget* const pEntry = gtk_entry_new();
    GtkWidget* const pLabel = gtk_label_new_with_mnemonic(pszLabel);
    gtk_label_set_mnemonic_widget(GTK_LABEL(pLabel), pEntry);
    gtk_widget_set_halign(pLabel, GTK_ALIGN_START);
    gtk_widget_set_hexpand(pEntry, TRUE);
    gtk_entry_set_visibility(GTK_ENTRY(pEntry), bShown);
    gtk_entry_set_activates_default(GTK_ENTRY(pEntry), TRUE);
    gtk_grid_attach(pGrid, pLabel, 0, nRow, 1, 1);
    gtk_grid_attach(pGrid, pEntry, 1, nRow, 1, 1);
    return pEntry;
}

// There is no OK without a name.
void FollowName(GtkEditable* pName, gpointer pOk)
{
    gtk_widget_set_sensitive(GTK_WIDGET(pOk), *gtk_entry_get_text(GTK_ENTRY(pName)) != 0);
}
}

bool AskForCredentialsInWindow(const char* pszWhat, char** ppszUser, char** ppszPassword)
{
    const MainContext oContext;
    if (!oContext)
        return false;
    GtkWidget* pOk = nullptr;
    GtkWidget* const pDialog = NewDialog("Log on", &pOk);
    GtkContainer* const pContent = GTK_CONTAINER(gtk_dialog_get_content_area(GTK_DIALOG(pDialog)));
    GtkWidget* const pWhat = gtk_label_new(Shown(pszWhat).c_str());
    gtk_label_set_line_wrap(GTK_LABEL(pWhat), TRUE);
    gtk_widget_set_halign(pWhat, GTK_ALIGN_START);
    gtk_container_add(pContent, pWhat);
    GtkWidget* const pGrid = gtk_grid_new();
    gtk_grid_set_row_spacing(GTK_GRID(pGrid), 6);
    gtk_grid_set_column_spacing(GTK_GRID(pGrid), 12);
    gtk_container_add(pContent, pGrid);
    GtkWidget* const pName = AddEntry(GTK_GRID(pGrid), 0, "_User name:", true);
    GtkWidget* const pPassword = AddEntry(GTK_GRID(pGrid), 1, "_Password:", false);
    g_signal_connect(pName, "changed", G_CALLBACK(FollowName), pOk);
    gtk_widget_set_sensitive(pOk, FALSE);
    gtk_widget_show_all(pDialog);

    const bool bGiven = gtk_dialog_run(GTK_DIALOG(pDialog)) == GTK_RESPONSE_OK;
    if (bGiven)
    {
        *ppszUser = ::strdup(gtk_entry_get_text(GTK_ENTRY(pName)));
        *ppszPassword = ::strdup(gtk_entry_get_text(GTK_ENTRY(pPassword)));
    }
    DestroyWindow(pDialog);
    return bGiven;
}
