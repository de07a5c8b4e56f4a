// Shared by the windows of the module.
#include "Dialogs.h"

GtkWidget* NewDialog(const char* pszCaption, GtkWidget** ppOk)
{
    GtkWidget* const pDialog = gtk_dialog_new();
    gtk_window_set_title(GTK_WINDOW(pDialog), pszCaption);
    gtk_window_set_position(GTK_WINDOW(pDialog), GTK_WIN_POS_CENTER);
    gtk_container_set_border_width(GTK_CONTAINER(pDialog), 8);
    gtk_dialog_add_button(GTK_DIALOG(pDialog), "_Cancel", GTK_RESPONSE_CANCEL);
    *ppOk = gtk_dialog_add_button(GTK_DIALOG(pDialog), "_OK", GTK_RESPONSE_OK);
    gtk_dialog_set_default_response(GTK_DIALOG(pDialog), GTK_RESPONSE_OK);
    gtk_box_set_spacing(GTK_BOX(gtk_dialog_get_content_area(GTK_DIALOG(pDialog))), 8);
    return pDialog;
}

void DestroyWindow(GtkWidget* pWindow)
{
    gtk_widget_destroy(pWindow);
    gdk_display_flush(gdk_display_get_default());   // a turn of the main loop would run what the host has in it
}
