#pragma once

#include "kvxreftroveui_export.h"

#include "views/XrefTreeNode_p.h"

#include <QAbstractItemModel>
#include <QHash>

#include <memory>
#include <vector>

class ChangeCoalescer;
class CXrefPanelCtrlItem;

/// The tree view's nodes. A model index's internal pointer is its node; a node knows its parent
/// and its position, so going from a node to its index and back never searches.
///
/// Nodes own their children. The model does not own items: when nodes go while their items
/// stay, the items are told (their node handle is cleared).
class KVXREFTROVEUI_TEST_EXPORT CXrefTreeModel : public QAbstractItemModel
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
    /// Removes all children of @p node (and their subtrees) at once.
    bool RemoveChildren(HTREEITEM node);
    /// Removes every node.
    void RemoveAll();

    QModelIndex IndexOf(HTREEITEM node) const;
    /// Whether @p node is one of this model's nodes (a walk up to its top-level node).
    bool Holds(HTREEITEM node) const;
    static HTREEITEM NodeOf(const QModelIndex& index);
    HTREEITEM RootNode() const;
    /// How many nodes the tree holds.
    int NodeCount() const { return m_nodeCount; }
    const std::vector<std::unique_ptr<CXrefTreeNode>>& TopLevelNodes() const { return m_top; }

    void SetText(HTREEITEM node, const QString& text);
    void SetImages(HTREEITEM node, int image, int selectedImage);
    /// Writes the @p mask bits of @p state.
    void SetState(HTREEITEM node, unsigned state, unsigned mask);

    /// While a batch is open, inserted nodes are kept but not yet announced to the views; the
    /// batch's end announces each parent's new children in one step. Removals end the batch's
    /// quiet part first. Calls nest.
    void BeginBatch();
    void EndBatch();
    bool InBatch() const { return m_batchDepth > 0; }
    /// Announces every node inserted so far in the batch.
    void AnnounceNodes();

    /// Node changes are announced (dataChanged) in one batch per parent when control returns to
    /// the event loop; this announces them now.
    void FlushChanges();

private:
    std::vector<std::unique_ptr<CXrefTreeNode>>& siblingsOf(HTREEITEM node);
    void nodeChanged(HTREEITEM node);
    void announceChanges(HTREEITEM changedParent, int first, int last);
    static int countNodes(const CXrefTreeNode& node);
    static void detachItems(CXrefTreeNode& node);

    std::vector<std::unique_ptr<CXrefTreeNode>> m_top;
    int m_nodeCount = 0;
    int m_batchDepth = 0;
    // Parents with children the views have not been told about, in the order they got the
    // first one (a parent always comes after its own parent), and how many they know of.
    std::vector<HTREEITEM> m_quietParents;
    QHash<HTREEITEM, int> m_announcedChildren;
    std::unique_ptr<ChangeCoalescer> m_changes;
};
