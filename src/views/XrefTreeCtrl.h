#pragma once

#include "kvxreftroveui_export.h"

#include "framework/ZuUiImageList.h"
#include "views/TreeItemHandle.h"

#include <QTreeView>

#include <vector>

class CXrefPanelCtrlItem;
class CXrefTreeModel;

/// The panel's nested view of the references: the host drawing at the root, its references
/// below, as the panel inserts them. Nodes are records in CXrefTreeModel; the view draws their
/// text, type icon with overlay badge and repository state image. Single selection.
class KVXREFTROVEUI_EXPORT CXrefTreeCtrl : public QTreeView
{
    Q_OBJECT
public:
    /// @p stateImageFlag is handed to the panel when it fills the state image list.
    explicit CXrefTreeCtrl(bool stateImageFlag, QWidget* parent = nullptr);
    ~CXrefTreeCtrl() override;

    CXrefTreeModel& Model() const { return *m_model; }

    /// Appends a node for @p item under @p parent (null: at the root) and returns it, for the
    /// panel to hand to the item.
    HTREEITEM InsertItem(CXrefPanelCtrlItem& item, HTREEITEM parent);
    /// Removes @p node and its subtree; the items are not destroyed.
    bool DeleteItem(HTREEITEM node);
    /// Deletes the subtree below @p node, deepest first: for each child, its own children, then
    /// ItemToBeDeleted, then the node, whose item is destroyed. Stops with false at the first
    /// node that cannot be deleted.
    bool DeleteChildren(HTREEITEM node);
    /// Removes every node; the items are not destroyed.
    void DeleteAllItems();
    /// The items of @p node's direct children, in tree order.
    std::vector<CXrefPanelCtrlItem*> GetChildren(HTREEITEM node) const;
    HTREEITEM GetRootItem() const;
    int GetCount() const;
    void Expand(HTREEITEM node);
    bool IsExpanded(HTREEITEM node) const;
    /// Between these, insertions are one batch for the view (see CXrefTreeModel::BeginBatch);
    /// expansions asked for meanwhile happen at the end.
    void BeginBatch();
    void EndBatch();

    /// The selected node's item, or none.
    std::vector<CXrefPanelCtrlItem*> GetSelectedItems() const;

    /// The item of the node at @p index, or null.
    CXrefPanelCtrlItem* ItemFromIndex(const QModelIndex& index) const;
    /// The index of @p item's node; invalid when the item has no node here.
    QModelIndex IndexFromItem(const CXrefPanelCtrlItem& item) const;
    /// The item of the node under @p point, in viewport coordinates, or null.
    CXrefPanelCtrlItem* ItemAt(const QPoint& point) const;

    /// The image lists the type icons are drawn from, for the light and the dark theme; the
    /// view does not own them. Without them no type icon is drawn.
    void SetItemImageLists(const CZuUiImageList* light, const CZuUiImageList* dark);
    /// The item image list for the theme in use, or null.
    const CZuUiImageList* ItemImageList() const;

    CZuUiImageList& StateImageList() { return m_stateImageList; }
    const CZuUiImageList& StateImageList() const { return m_stateImageList; }
    bool GetStateImageFlag() const { return m_stateImageFlag; }
    void SetStateImageFlag(bool flag) { m_stateImageFlag = flag; }

signals:
    /// @p item's node is about to be deleted.
    void ItemToBeDeleted(CXrefPanelCtrlItem* item);

private:
    void applyTheme();
    /// Announces the batch's nodes so far and makes the expansions waiting for them.
    void settleBatch();

    CXrefTreeModel* m_model;
    CZuUiImageList m_stateImageList;
    bool m_stateImageFlag;
    std::vector<HTREEITEM> m_pendingExpansions;
    const CZuUiImageList* m_itemImages[2] = {nullptr, nullptr};
};
