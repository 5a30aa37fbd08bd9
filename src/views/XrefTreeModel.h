#pragma once

#include "kvxreftroveui_export.h"

#include "views/XrefTreeNode.h"

#include <QAbstractItemModel>

#include <memory>
#include <vector>

class CXrefPanelCtrlItem;

/// The tree view's nodes. A model index's internal pointer is its node; a node knows its parent
/// and its position, so going from a node to its index and back never searches.
///
/// Nodes own their children. The model does not own items: when nodes go while their items
/// stay, the items are told (their node handle is cleared).
class KVXREFTROVEUI_EXPORT CXrefTreeModel : public QAbstractItemModel
{
    Q_OBJECT
public:
    explicit CXrefTreeModel(QObject* parent = nullptr);
    ~CXrefTreeModel() override;

    QModelIndex index(int row, int column,
                      const QModelIndex& parent = QModelIndex()) const override;
    QModelIndex parent(const QModelIndex& child) const override;
    int rowCount(const QModelIndex& parent = QModelIndex()) const override;
    int columnCount(const QModelIndex& parent = QModelIndex()) const override;
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;

    /// Appends a node for @p item as the last child of @p parent (null: a top-level node).
    HTREEITEM InsertNode(CXrefPanelCtrlItem& item, HTREEITEM parent);
    /// Removes @p node with everything below it. Items are not touched here.
    bool RemoveNode(HTREEITEM node);
    /// Removes every node.
    void RemoveAll();

    QModelIndex IndexOf(HTREEITEM node) const;
    static HTREEITEM NodeOf(const QModelIndex& index);
    HTREEITEM RootNode() const;
    /// How many nodes the tree holds.
    int NodeCount() const { return m_nodeCount; }
    const std::vector<std::unique_ptr<CXrefTreeNode>>& TopLevelNodes() const { return m_top; }

    void SetText(HTREEITEM node, const QString& text);
    void SetImages(HTREEITEM node, int image, int selectedImage);
    /// Writes the @p mask bits of @p state.
    void SetState(HTREEITEM node, unsigned state, unsigned mask);

private:
    std::vector<std::unique_ptr<CXrefTreeNode>>& siblingsOf(HTREEITEM node);
    void nodeChanged(HTREEITEM node);
    static int countNodes(const CXrefTreeNode& node);
    static void detachItems(CXrefTreeNode& node);

    std::vector<std::unique_ptr<CXrefTreeNode>> m_top;
    int m_nodeCount = 0;
};
