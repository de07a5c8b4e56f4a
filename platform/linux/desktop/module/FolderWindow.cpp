// The folder browser's window, which tells its caller of each selection and lets it answer.
#include "FolderTree.h"

#include <algorithm>
#include <cstring>

namespace fs = std::filesystem;

// The browser: a text, the tree, and an edit box where one is asked for.
struct DesktopBrowser
{
public:
    explicit DesktopBrowser(const DesktopBrowse& oBrowse);
    ~DesktopBrowser() { DestroyWindow(m_pDialog); }
    DesktopBrowser(const DesktopBrowser&) = delete;
    DesktopBrowser& operator=(const DesktopBrowser&) = delete;

    // Nothing if the user cancels, or typed what is accepted as no folder.
    std::optional<fs::path> Run();

    FolderTree& Tree() noexcept { return m_oTree; }
    GtkWindow* Window() const noexcept { return GTK_WINDOW(m_pDialog); }
    GtkWidget* OkButton() const noexcept { return m_pOk; }
    void EnableOk(bool bEnable);
    void Cancel();

private:
    void AddEntry(GtkContainer* pContent);
    void OnSelected(const fs::path& oFolder);
    static void OnChanged(GtkEditable* pEntry, gpointer pThis);
    static void OnCursor(GtkTreeView* pTree, gpointer pThis);
    bool IsTyped() const;
    std::optional<fs::path> FolderTyped() const;

    const DesktopBrowse& m_oBrowse;
    GtkWidget* m_pOk = nullptr;
    GtkWidget* m_pDialog = NewDialog("Browse for Folder", &m_pOk);
    GtkWidget* m_pEntry = nullptr;   // null: none
    std::string m_strShown;          // what the edit box showed last by itself
    bool m_bOpen = false;
    bool m_bCanceled = false;   // by the host; before the dialog runs it cannot be told
    bool m_bOk = true;          // as the selection or the host last had it
    FolderTree m_oTree{m_oBrowse.pszRoot, [this](const fs::path& oFolder) { OnSelected(oFolder); }};
};

DesktopBrowser::DesktopBrowser(const DesktopBrowse& oBrowse) : m_oBrowse(oBrowse)
{
    gtk_window_set_default_size(GTK_WINDOW(m_pDialog), 420, 480);
    GtkContainer* const pContent = GTK_CONTAINER(gtk_dialog_get_content_area(GTK_DIALOG(m_pDialog)));
    GtkWidget* const pText = gtk_label_new(Shown(m_oBrowse.pszText).c_str());
    gtk_label_set_line_wrap(GTK_LABEL(pText), TRUE);
    gtk_widget_set_halign(pText, GTK_ALIGN_START);
    gtk_container_add(pContent, pText);
    GtkWidget* const pScroll = gtk_scrolled_window_new(nullptr, nullptr);
    gtk_scrolled_window_set_shadow_type(GTK_SCROLLED_WINDOW(pScroll), GTK_SHADOW_IN);
    gtk_widget_set_vexpand(pScroll, TRUE);
    g_signal_connect(m_oTree.Widget(), "cursor-changed", G_CALLBACK(OnCursor), this);
    gtk_container_add(GTK_CONTAINER(pScroll), m_oTree.Widget());
    gtk_container_add(pContent, pScroll);
    if (m_oBrowse.bEditBox)
        AddEntry(pContent);
    gtk_widget_show_all(m_pDialog);
    gtk_widget_grab_focus(m_oTree.Widget());
    m_oTree.SelectNone();   // the focus has taken the first row
    m_bOpen = true;
}

void DesktopBrowser::AddEntry(GtkContainer* pContent)
{
    m_pEntry = gtk_entry_new();
    gtk_entry_set_activates_default(GTK_ENTRY(m_pEntry), TRUE);
    g_signal_connect(m_pEntry, "changed", G_CALLBACK(OnChanged), this);
    GtkWidget* const pLabel = gtk_label_new_with_mnemonic("_Folder:");
    gtk_label_set_mnemonic_widget(GTK_LABEL(pLabel), m_pEntry);
    GtkWidget* const pRow = gtk_box_new(GTK_ORIENTATION_HORIZONTAL, 12);
    gtk_box_pack_start(GTK_BOX(pRow), pLabel, FALSE, FALSE, 0);
    gtk_box_pack_start(GTK_BOX(pRow), m_pEntry, TRUE, TRUE, 0);
    gtk_container_add(pContent, pRow);
}

void DesktopBrowser::OnSelected(const fs::path& oFolder)
{
    if (!m_bOpen)
        return;
    m_strShown = Shown(oFolder.c_str());
    if (m_pEntry)
        gtk_entry_set_text(GTK_ENTRY(m_pEntry), m_strShown.c_str());
    EnableOk(!m_oBrowse.bFoldersOnly || !oFolder.empty());
    m_oBrowse.pfnSelected(m_oBrowse.pContext, oFolder.c_str());
}

void DesktopBrowser::EnableOk(bool bEnable)
{
    m_bOk = bEnable;
    gtk_widget_set_sensitive(m_pOk, bEnable);
}

void DesktopBrowser::Cancel()
{
    m_bCanceled = true;
    gtk_dialog_response(GTK_DIALOG(m_pDialog), GTK_RESPONSE_CANCEL);
}

// A click on the folder that is selected already takes it instead of what was typed. To the tree that is no change.
void DesktopBrowser::OnCursor(GtkTreeView*, gpointer pThis)
{
    auto& oThis = *static_cast<DesktopBrowser*>(pThis);
    const Owned<GdkEvent, gdk_event_free> pEvent(gtk_get_current_event());
    const bool bClicked = pEvent && (pEvent->type == GDK_BUTTON_PRESS || pEvent->type == GDK_BUTTON_RELEASE);
    const auto oSelected = oThis.m_oTree.Selected();
    if (bClicked && oSelected && oThis.IsTyped())
        oThis.OnSelected(*oSelected);
}

// A typed text can be tried, whatever is selected.
void DesktopBrowser::OnChanged(GtkEditable*, gpointer pThis)
{
    auto& oThis = *static_cast<DesktopBrowser*>(pThis);
    gtk_widget_set_sensitive(oThis.m_pOk, oThis.IsTyped() || oThis.m_bOk);
}

bool DesktopBrowser::IsTyped() const
{
    return m_pEntry && m_strShown != gtk_entry_get_text(GTK_ENTRY(m_pEntry));
}

// A path that does not begin at the root begins at the selected folder.
std::optional<fs::path> DesktopBrowser::FolderTyped() const
{
    std::string strTyped = gtk_entry_get_text(GTK_ENTRY(m_pEntry));
    std::replace(strTyped.begin(), strTyped.end(), '\\', '/');
    const fs::path oFolder = m_oTree.Selected().value_or("") / fs::path(strTyped);
    std::error_code oIgnored;
    if (strTyped.empty() || !oFolder.is_absolute() || !fs::is_directory(oFolder, oIgnored))
        return std::nullopt;
    // Two dots behind a link lead to where it points, which the text alone does not tell.
    if (strTyped.find("..") == std::string::npos)
        return oFolder.lexically_normal();
    const fs::path oReal = fs::canonical(oFolder, oIgnored);
    return oReal.empty() ? std::nullopt : std::optional(oReal);   // it is gone by now
}

std::optional<fs::path> DesktopBrowser::Run()
{
    while (!m_bCanceled && gtk_dialog_run(GTK_DIALOG(m_pDialog)) == GTK_RESPONSE_OK)
    {
        if (IsTyped())
        {
            if (auto oTyped = FolderTyped())
            {
                m_oBrowse.pfnSelected(m_oBrowse.pContext, oTyped->c_str());   // which ends an earlier refusal
                return oTyped;
            }
            if (m_oBrowse.bValidate)
            {
                const std::string strTyped = gtk_entry_get_text(GTK_ENTRY(m_pEntry));
                if (m_oBrowse.pfnRefused(m_oBrowse.pContext, strTyped.c_str()) == 0)
                    return std::nullopt;
                continue;
            }
        }
        auto oSelected = m_oTree.Selected();
        if (oSelected && !(m_oBrowse.bFoldersOnly && oSelected->empty()))
            return oSelected;
    }
    return std::nullopt;
}

char* BrowseForFolder(const DesktopBrowse* pBrowse)
{
    const MainContext oContext;
    if (!oContext)
        return nullptr;
    DesktopBrowser oBrowser(*pBrowse);
    pBrowse->pfnOpened(pBrowse->pContext, &oBrowser);
    if (!oBrowser.Tree().Selected())
        oBrowser.Tree().SelectTop();
    const auto oChosen = oBrowser.Run();
    pBrowse->pfnClosing(pBrowse->pContext);
    return oChosen ? ::strdup(oChosen->c_str()) : nullptr;
}

void SelectFolder(DesktopBrowser* pBrowser, const char* pszPath)
{
    pBrowser->Tree().Select(pszPath);
}

void EnableOk(DesktopBrowser* pBrowser, bool bEnable)
{
    pBrowser->EnableOk(bEnable);
}

void SetOkText(DesktopBrowser* pBrowser, const char* pszText)
{
    gtk_button_set_use_underline(GTK_BUTTON(pBrowser->OkButton()), FALSE);
    gtk_button_set_label(GTK_BUTTON(pBrowser->OkButton()), Shown(pszText).c_str());
}

void CancelBrowse(DesktopBrowser* pBrowser)
{
    pBrowser->Cancel();
}

const char* CaptionOf(DesktopBrowser* pBrowser)
{
    return gtk_window_get_title(pBrowser->Window());
}

GtkWindow* WindowOf(DesktopBrowser* pBrowser)
{
    return pBrowser ? pBrowser->Window() : nullptr;
}
