// A tree of folders, read from the disk as it is opened.
#pragma once

#include "Dialogs.h"

#include <filesystem>
#include <functional>
#include <optional>

class FolderTree
{
public:
    // Without a root the desktop stands at the top, with the user's own folder and the file system in it.
    FolderTree(const std::filesystem::path& oRoot, std::function<void(const std::filesystem::path&)> onSelected);
    ~FolderTree();
    FolderTree(const FolderTree&) = delete;
    FolderTree& operator=(const FolderTree&) = delete;

    GtkWidget* Widget() const noexcept { return m_pView; }

    // Opens the tree down to a folder and selects it; a path that is none below the root changes nothing.
    void Select(std::filesystem::path oFolder);
    void SelectTop();
    void SelectNone();

    // Nothing if no folder is selected; empty for the desktop.
    std::optional<std::filesystem::path> Selected() const;

private:
    GtkTreeIter Add(GtkTreeIter* pParent, const std::filesystem::path& oFolder, const char* pszName = nullptr);
    void Fill(GtkTreeIter oFolder);
    std::string PathAt(GtkTreeIter oFolder) const;
    std::optional<GtkTreeIter> FindTop(const std::filesystem::path& oFolder);
    std::optional<GtkTreeIter> FindChild(GtkTreeIter oParent, const std::filesystem::path& oFolder);

    static void OnExpanded(GtkTreeView* pView, GtkTreeIter* pFolder, GtkTreePath* pPath, gpointer pThis);
    static void OnChanged(GtkTreeSelection* pSelection, gpointer pThis);

    std::function<void(const std::filesystem::path&)> m_onSelected;
    GtkTreeStore* m_pStore;
    GtkWidget* m_pView;
};
