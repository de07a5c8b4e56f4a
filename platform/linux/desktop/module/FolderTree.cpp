// Folders are read when they are opened, one level ahead, so that each shows whether there is anything in it.
#include "FolderTree.h"

#include <algorithm>
#include <vector>

namespace fs = std::filesystem;

namespace
{
enum eColumn
{
    eName,
    ePath,
    eUnread,   // its folders are not in the tree yet; one row stands for all of them
    eColumns
};

bool IsFolder(const fs::directory_entry& oEntry)
{
    std::error_code oIgnored;
    return oEntry.is_directory(oIgnored);
}

bool IsHidden(const fs::path& oPath)
{
    return oPath.filename().native().starts_with('.');
}

// The folders in a folder, by name; what cannot be read has none.
std::vector<fs::path> FoldersIn(const fs::path& oFolder, std::size_t nMost = std::size_t(-1))
{
    std::vector<fs::path> oFolders;
    std::error_code oError;
    for (fs::directory_iterator it(oFolder, oError), end; !oError && it != end && oFolders.size() < nMost;
         it.increment(oError))
        if (!IsHidden(it->path()) && IsFolder(*it))
            oFolders.push_back(it->path());
    std::sort(oFolders.begin(), oFolders.end());
    return oFolders;
}

bool LiesIn(const fs::path& oPath, const fs::path& oFolder)
{
    return std::mismatch(oFolder.begin(), oFolder.end(), oPath.begin(), oPath.end()).first == oFolder.end();
}

// Without a slash at its end, so that equal folders are equal paths.
fs::path Plain(const fs::path& oPath)
{
    const fs::path oNormal = oPath.lexically_normal();
    return oNormal.has_filename() || oNormal == oNormal.root_path() ? oNormal : oNormal.parent_path();
}
}

FolderTree::FolderTree(const fs::path& oRoot, std::function<void(const fs::path&)> onSelected)
    : m_onSelected(std::move(onSelected)),
      m_pStore(gtk_tree_store_new(eColumns, G_TYPE_STRING, G_TYPE_STRING, G_TYPE_BOOLEAN)),
      m_pView(gtk_tree_view_new_with_model(GTK_TREE_MODEL(m_pStore)))
{
    GtkTreeView* const pView = GTK_TREE_VIEW(m_pView);
    gtk_tree_view_set_headers_visible(pView, FALSE);
    gtk_tree_view_insert_column_with_attributes(pView, -1, "", gtk_cell_renderer_text_new(), "text", eName, nullptr);
    g_signal_connect(m_pView, "row-expanded", G_CALLBACK(OnExpanded), this);
    g_signal_connect(gtk_tree_view_get_selection(pView), "changed", G_CALLBACK(OnChanged), this);

    if (!oRoot.empty())
        Add(nullptr, Plain(oRoot));
    else
    {
        GtkTreeIter oDesktop = Add(nullptr, {}, "Desktop");
        if (const char* const pszHome = g_get_home_dir(); pszHome && *pszHome == '/')
            Add(&oDesktop, Plain(pszHome));
        Add(&oDesktop, "/", "File system");
    }
    GtkTreePath* const pTop = gtk_tree_path_new_first();
    gtk_tree_view_expand_row(pView, pTop, FALSE);
    gtk_tree_path_free(pTop);
}

FolderTree::~FolderTree()
{
    g_object_unref(m_pStore);
}

GtkTreeIter FolderTree::Add(GtkTreeIter* pParent, const fs::path& oFolder, const char* pszName)
{
    const std::string strName = Shown(pszName ? pszName : oFolder.filename().c_str());
    const bool bUnread = !oFolder.empty() && !FoldersIn(oFolder, 1).empty();
    GtkTreeIter oAdded, oUnread;
    gtk_tree_store_append(m_pStore, &oAdded, pParent);
    gtk_tree_store_set(m_pStore, &oAdded, eName, strName.empty() ? oFolder.c_str() : strName.c_str(), ePath,
                       oFolder.c_str(), eUnread, bUnread, -1);
    if (bUnread)
        gtk_tree_store_append(m_pStore, &oUnread, &oAdded);
    return oAdded;
}

std::string FolderTree::PathAt(GtkTreeIter oFolder) const
{
    char* pszPath = nullptr;
    gtk_tree_model_get(GTK_TREE_MODEL(m_pStore), &oFolder, ePath, &pszPath, -1);
    std::string strPath = pszPath ? pszPath : "";
    g_free(pszPath);
    return strPath;
}

void FolderTree::Fill(GtkTreeIter oFolder)
{
    gboolean bUnread = FALSE;
    gtk_tree_model_get(GTK_TREE_MODEL(m_pStore), &oFolder, eUnread, &bUnread, -1);
    if (!bUnread)
        return;
    GtkTreeIter oPlaceholder;
    const bool bPlaceholder = gtk_tree_model_iter_children(GTK_TREE_MODEL(m_pStore), &oPlaceholder, &oFolder);
    for (const auto& oChild : FoldersIn(PathAt(oFolder)))
        Add(&oFolder, oChild);
    gtk_tree_store_set(m_pStore, &oFolder, eUnread, FALSE, -1);
    if (bPlaceholder)   // last, as a row without any below it would close
        gtk_tree_store_remove(m_pStore, &oPlaceholder);
}

std::optional<GtkTreeIter> FolderTree::FindTop(const fs::path& oFolder)
{
    GtkTreeModel* const pModel = GTK_TREE_MODEL(m_pStore);
    GtkTreeIter oRow, oChild;
    gtk_tree_model_get_iter_first(pModel, &oRow);
    if (!PathAt(oRow).empty())
        return LiesIn(oFolder, PathAt(oRow)) ? std::optional(oRow) : std::nullopt;
    // The user's own folder comes first of the two in the desktop.
    for (gboolean bMore = gtk_tree_model_iter_children(pModel, &oChild, &oRow); bMore;
         bMore = gtk_tree_model_iter_next(pModel, &oChild))
        if (LiesIn(oFolder, PathAt(oChild)))
            return oChild;
    return std::nullopt;
}

std::optional<GtkTreeIter> FolderTree::FindChild(GtkTreeIter oParent, const fs::path& oFolder)
{
    Fill(oParent);
    GtkTreeModel* const pModel = GTK_TREE_MODEL(m_pStore);
    GtkTreeIter oChild;
    for (gboolean bMore = gtk_tree_model_iter_children(pModel, &oChild, &oParent); bMore;
         bMore = gtk_tree_model_iter_next(pModel, &oChild))
        if (PathAt(oChild) == oFolder)
            return oChild;
    return IsFolder(fs::directory_entry(oFolder)) ? std::optional(Add(&oParent, oFolder)) : std::nullopt;   // hidden
}

void FolderTree::Select(fs::path oFolder)
{
    oFolder = Plain(oFolder);
    std::error_code oIgnored;
    auto oRow = fs::is_directory(oFolder, oIgnored) ? FindTop(oFolder) : std::nullopt;
    if (!oRow)
        return;
    fs::path oReached = PathAt(*oRow);
    for (const auto& oPart : oFolder.lexically_relative(oReached))
        if (oPart != ".")
            if (oRow = FindChild(*oRow, oReached /= oPart); !oRow)
                return;
    GtkTreePath* const pPath = gtk_tree_model_get_path(GTK_TREE_MODEL(m_pStore), &*oRow);
    gtk_tree_view_expand_to_path(GTK_TREE_VIEW(m_pView), pPath);
    gtk_tree_view_set_cursor(GTK_TREE_VIEW(m_pView), pPath, nullptr, FALSE);
    gtk_tree_view_scroll_to_cell(GTK_TREE_VIEW(m_pView), pPath, nullptr, TRUE, 0.5F, 0);
    gtk_tree_path_free(pPath);
}

void FolderTree::SelectTop()
{
    GtkTreePath* const pTop = gtk_tree_path_new_first();
    gtk_tree_view_set_cursor(GTK_TREE_VIEW(m_pView), pTop, nullptr, FALSE);
    gtk_tree_path_free(pTop);
}

void FolderTree::SelectNone()
{
    gtk_tree_selection_unselect_all(gtk_tree_view_get_selection(GTK_TREE_VIEW(m_pView)));
}

std::optional<fs::path> FolderTree::Selected() const
{
    GtkTreeIter oRow;
    if (!gtk_tree_selection_get_selected(gtk_tree_view_get_selection(GTK_TREE_VIEW(m_pView)), nullptr, &oRow))
        return std::nullopt;
    return PathAt(oRow);
}

void FolderTree::OnExpanded(GtkTreeView*, GtkTreeIter* pFolder, GtkTreePath*, gpointer pThis)
{
    static_cast<FolderTree*>(pThis)->Fill(*pFolder);
}

void FolderTree::OnChanged(GtkTreeSelection*, gpointer pThis)
{
    auto& oThis = *static_cast<FolderTree*>(pThis);
    if (const auto oSelected = oThis.Selected())
        oThis.m_onSelected(*oSelected);
}
