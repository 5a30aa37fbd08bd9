#include "views/XrefTreeCtrl.h"

#include "views/XrefTreeModel_p.h"
#include "views/XrefTreeNode_p.h"

#include <QItemSelectionModel>
#include <QMetaObject>
#include <QShowEvent>

#include <utility>

// The tree's filter hides whole branches: a node stays when the filter accepts it or any node
// below it, so that a match deep down keeps the nodes that lead to it. Only the topmost node of
// each branch that goes is hidden; the view leaves out everything below it.

void CXrefTreeCtrl::SetItemFilter(ItemFilter shows)
{
    if (!shows && !m_filter)
        return;
    m_filter = std::move(shows);
    m_filterDirty = true;
    // A tree out of sight is filtered when it comes into view: a panel shows one of its views
    // at a time, and typing should pay only for the one the user sees.
    if (isVisible())
        applyFilter();
}

bool CXrefTreeCtrl::IsNodeShown(HTREEITEM node) const
{
    if (!node || !m_model->Holds(node))
        return false;
    for (HTREEITEM up = node; up; up = up->parent) {
        if (up->filteredOut)
            return false;
    }
    return true;
}

void CXrefTreeCtrl::showEvent(QShowEvent* event)
{
    QTreeView::showEvent(event);
    if (m_filterDirty)
        applyFilter();
}

void CXrefTreeCtrl::filterMayChange()
{
    if (!m_filter)
        return;
    m_filterDirty = true;
    if (m_filterPosted)
        return;
    m_filterPosted = true;
    QMetaObject::invokeMethod(
        this,
        [this] {
            m_filterPosted = false;
            if (m_filterDirty && isVisible())
                applyFilter();
        },
        Qt::QueuedConnection);
}

void CXrefTreeCtrl::applyFilter()
{
    // Nodes of an open batch are not known to the view yet; the batch's end comes back here.
    if (m_model->InBatch())
        return;
    m_filterDirty = false;

    // Which nodes go, children before their parents. Iterative: chains of references can be
    // far deeper than the stack.
    struct Frame
    {
        CXrefTreeNode* node;
        std::size_t next;
    };
    std::vector<Frame> stack;
    const auto& top = m_model->TopLevelNodes();
    for (const auto& root : top) {
        stack.push_back({root.get(), 0});
        while (!stack.empty()) {
            Frame& frame = stack.back();
            if (frame.next < frame.node->children.size()) {
                CXrefTreeNode* child = frame.node->children[frame.next++].get();
                stack.push_back({child, 0});
                continue;
            }
            CXrefTreeNode* node = frame.node;
            stack.pop_back();
            bool shown = !m_filter || !node->item || m_filter(*node->item);
            for (std::size_t i = 0; !shown && i < node->children.size(); ++i)
                shown = !node->children[i]->filteredOut;
            node->filteredOut = !shown;
        }
    }

    // The view's hidden rows follow, touching only those whose state differs. Nodes below a
    // hidden one are left as they are: they are out of sight with it and are put right when it
    // comes back.
    std::vector<CXrefTreeNode*> pending;
    for (const auto& root : top)
        pending.push_back(root.get());
    while (!pending.empty()) {
        CXrefTreeNode* node = pending.back();
        pending.pop_back();
        const QModelIndex parent = m_model->IndexOf(node->parent);
        if (isRowHidden(node->row, parent) != node->filteredOut)
            setRowHidden(node->row, parent, node->filteredOut);
        if (node->filteredOut)
            continue;
        for (const auto& child : node->children)
            pending.push_back(child.get());
    }

    // A selected node out of sight leaves the selection; the view reports the change.
    const QModelIndexList selected = selectionModel()->selectedIndexes();
    for (const QModelIndex& index : selected) {
        if (!IsNodeShown(CXrefTreeModel::NodeOf(index))) {
            selectionModel()->clearSelection();
            break;
        }
    }
}
