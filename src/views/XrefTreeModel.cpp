#include "views/XrefTreeModel_p.h"

#include "items/ItemTreeLink_p.h"
#include "views/ChangeCoalescer_p.h"
#include "views/XrefTreeNode_p.h"

#include <limits>

CXrefTreeModel::CXrefTreeModel(QObject* parent)
    : QAbstractItemModel(parent),
      m_changes(
          std::make_unique<ChangeCoalescer>(this, [this](const void* group, int first, int last) {
              announceChanges(static_cast<HTREEITEM>(const_cast<void*>(group)), first, last);
          }))
{}

CXrefTreeModel::~CXrefTreeModel()
{
    for (auto& node : m_top)
        detachItems(*node);
}

QModelIndex CXrefTreeModel::index(int row, int column, const QModelIndex& parent) const
{
    if (column != 0 || row < 0)
        return {};
    const std::vector<std::unique_ptr<CXrefTreeNode>>* siblings = &m_top;
    if (parent.isValid())
        siblings = &NodeOf(parent)->children;
    if (row >= rowCount(parent))
        return {};
    return createIndex(row, 0, (*siblings)[row].get());
}

QModelIndex CXrefTreeModel::parent(const QModelIndex& child) const
{
    const HTREEITEM node = NodeOf(child);
    return node ? IndexOf(node->parent) : QModelIndex();
}

int CXrefTreeModel::rowCount(const QModelIndex& parent) const
{
    if (parent.isValid() && parent.column() != 0)
        return 0;
    const HTREEITEM node = NodeOf(parent);
    if (!m_announcedChildren.isEmpty()) {
        const auto announced = m_announcedChildren.constFind(node);
        if (announced != m_announcedChildren.constEnd())
            return announced.value();
    }
    return int(node ? node->children.size() : m_top.size());
}

int CXrefTreeModel::columnCount(const QModelIndex&) const
{
    return 1;
}

QVariant CXrefTreeModel::data(const QModelIndex& index, int role) const
{
    const HTREEITEM node = NodeOf(index);
    if (!node)
        return {};
    if (role == Qt::DisplayRole || role == Qt::EditRole || role == Qt::AccessibleTextRole)
        return node->text;
    return {};
}

Qt::ItemFlags CXrefTreeModel::flags(const QModelIndex& index) const
{
    // Editable so that the view may open a rename editor; the model never takes the text (it has
    // no setData): renames reach a node only through its item.
    return index.isValid() ? Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemIsEditable
                           : Qt::NoItemFlags;
}

HTREEITEM CXrefTreeModel::InsertNode(CXrefPanelCtrlItem& item, HTREEITEM parent)
{
    std::vector<std::unique_ptr<CXrefTreeNode>>& siblings = parent ? parent->children : m_top;
    const int row = int(siblings.size());
    const bool quiet = m_batchDepth > 0;
    if (quiet && !m_announcedChildren.contains(parent)) {
        m_announcedChildren.insert(parent, row);
        m_quietParents.push_back(parent);
    }
    if (!quiet)
        beginInsertRows(IndexOf(parent), row, row);
    auto node = std::make_unique<CXrefTreeNode>();
    node->item = &item;
    node->parent = parent;
    node->row = row;
    if (parent && parent->level < std::numeric_limits<std::uint16_t>::max())
        node->level = std::uint16_t(parent->level + 1);
    else if (parent)
        node->level = parent->level;
    HTREEITEM handle = node.get();
    siblings.push_back(std::move(node));
    ++m_nodeCount;
    if (!quiet)
        endInsertRows();
    return handle;
}

bool CXrefTreeModel::RemoveNode(HTREEITEM node)
{
    if (!node)
        return false;
    FlushChanges();
    AnnounceNodes();
    std::vector<std::unique_ptr<CXrefTreeNode>>& siblings = siblingsOf(node);
    const int row = node->row;
    if (row < 0 || row >= int(siblings.size()) || siblings[row].get() != node)
        return false;
    beginRemoveRows(IndexOf(node->parent), row, row);
    m_nodeCount -= countNodes(*node);
    detachItems(*node);
    siblings.erase(siblings.begin() + row);
    for (int i = row; i < int(siblings.size()); ++i)
        siblings[i]->row = i;
    endRemoveRows();
    return true;
}

bool CXrefTreeModel::RemoveChildren(HTREEITEM node)
{
    if (!node)
        return false;
    FlushChanges();
    AnnounceNodes();
    if (node->children.empty())
        return true;
    beginRemoveRows(IndexOf(node), 0, int(node->children.size()) - 1);
    for (auto& child : node->children) {
        m_nodeCount -= countNodes(*child);
        detachItems(*child);
    }
    node->children.clear();
    endRemoveRows();
    return true;
}

void CXrefTreeModel::RemoveAll()
{
    FlushChanges();
    AnnounceNodes();
    if (m_top.empty())
        return;
    beginResetModel();
    for (auto& node : m_top)
        detachItems(*node);
    m_top.clear();
    m_nodeCount = 0;
    endResetModel();
}

QModelIndex CXrefTreeModel::IndexOf(HTREEITEM node) const
{
    return node ? createIndex(node->row, 0, node) : QModelIndex();
}

HTREEITEM CXrefTreeModel::NodeOf(const QModelIndex& index)
{
    return index.isValid() ? static_cast<HTREEITEM>(index.internalPointer()) : nullptr;
}

HTREEITEM CXrefTreeModel::RootNode() const
{
    return m_top.empty() ? nullptr : m_top.front().get();
}

void CXrefTreeModel::SetText(HTREEITEM node, const QString& text)
{
    if (!node)
        return;
    node->text = text;
    nodeChanged(node);
}

void CXrefTreeModel::SetImages(HTREEITEM node, int image, int selectedImage)
{
    if (!node)
        return;
    node->image = image;
    node->selectedImage = selectedImage;
    nodeChanged(node);
}

void CXrefTreeModel::SetState(HTREEITEM node, unsigned state, unsigned mask)
{
    if (!node)
        return;
    node->state.Write(state, mask);
    nodeChanged(node);
}

std::vector<std::unique_ptr<CXrefTreeNode>>& CXrefTreeModel::siblingsOf(HTREEITEM node)
{
    return node->parent ? node->parent->children : m_top;
}

void CXrefTreeModel::nodeChanged(HTREEITEM node)
{
    // Siblings changed one after the other (a fill) are announced together.
    m_changes->Note(node->parent, node->row);
}

void CXrefTreeModel::BeginBatch()
{
    ++m_batchDepth;
}

void CXrefTreeModel::EndBatch()
{
    if (m_batchDepth > 0 && --m_batchDepth == 0)
        AnnounceNodes();
}

void CXrefTreeModel::AnnounceNodes()
{
    const std::vector<HTREEITEM> parents = std::move(m_quietParents);
    m_quietParents.clear();
    for (HTREEITEM parent : parents) {
        const int from = m_announcedChildren.value(parent);
        const int to = int(parent ? parent->children.size() : m_top.size()) - 1;
        if (from > to) {
            m_announcedChildren.remove(parent);
            continue;
        }
        beginInsertRows(IndexOf(parent), from, to);
        m_announcedChildren.remove(parent);
        endInsertRows();
    }
}

void CXrefTreeModel::FlushChanges()
{
    m_changes->Flush();
}

void CXrefTreeModel::announceChanges(HTREEITEM changedParent, int first, int last)
{
    // Nodes the views have not been told about yet come with their current data anyway.
    if (!m_quietParents.empty())
        return;
    const int count = int(changedParent ? changedParent->children.size() : m_top.size());
    last = std::min(last, count - 1);
    if (first > last)
        return;
    const QModelIndex parent = IndexOf(changedParent);
    emit dataChanged(index(first, 0, parent), index(last, 0, parent));
}

int CXrefTreeModel::countNodes(const CXrefTreeNode& node)
{
    int count = 0;
    std::vector<const CXrefTreeNode*> pending{&node};
    while (!pending.empty()) {
        const CXrefTreeNode* current = pending.back();
        pending.pop_back();
        ++count;
        for (const auto& child : current->children)
            pending.push_back(child.get());
    }
    return count;
}

void CXrefTreeModel::detachItems(CXrefTreeNode& node)
{
    // Iterative so that a very deep chain of references cannot exhaust the stack.
    std::vector<CXrefTreeNode*> pending{&node};
    while (!pending.empty()) {
        CXrefTreeNode* current = pending.back();
        pending.pop_back();
        if (current->item)
            ItemTreeLink::Detach(*current->item, current);
        current->item = nullptr;
        for (auto& child : current->children)
            pending.push_back(child.get());
    }
}

bool CXrefTreeModel::Holds(HTREEITEM node) const
{
    if (!node)
        return false;
    while (node->parent)
        node = node->parent;
    return node->row >= 0 && node->row < int(m_top.size()) && m_top[node->row].get() == node;
}
