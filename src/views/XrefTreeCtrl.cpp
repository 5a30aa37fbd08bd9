#include "views/XrefTreeCtrl.h"

#include "framework/ZuUiHiDpi.h"
#include "framework/ZuUiTheme.h"
#include "items/ItemTreeLink_p.h"
#include "items/XrefPanelCtrlItem.h"
#include "views/XrefTreeDelegate_p.h"
#include "views/XrefTreeModel_p.h"
#include "views/XrefTreeNode_p.h"

#include <QHeaderView>
#include <QStyle>

CXrefTreeCtrl::CXrefTreeCtrl(bool stateImageFlag, QWidget* parent)
    : QTreeView(parent), m_model(new CXrefTreeModel(this)), m_stateImageFlag(stateImageFlag)
{
    setModel(m_model);
    setItemDelegate(new CXrefTreeDelegate(*this));
    // Every node has the same height; without this the view measures each node after a fill.
    setUniformRowHeights(true);
    setHeaderHidden(true);
    // The host drawing at the top has no expander of its own; its references do.
    setRootIsDecorated(false);
    setSelectionMode(QAbstractItemView::SingleSelection);
    setEditTriggers(QAbstractItemView::NoEditTriggers);
    header()->setStretchLastSection(true);
    // The icons grow with the DPI scale; the step to the next level must grow with them.
    setIndentation(
        CZuUiHiDpi::ScaleX(style()->pixelMetric(QStyle::PM_TreeViewIndentation, nullptr, this)));

    applyTheme();
    connect(&CZuUiTheme::Instance(), &CZuUiTheme::themeChanged, this, &CXrefTreeCtrl::applyTheme);
}

CXrefTreeCtrl::~CXrefTreeCtrl() = default;

HTREEITEM CXrefTreeCtrl::InsertItem(CXrefPanelCtrlItem& item, HTREEITEM parent)
{
    return m_model->InsertNode(item, parent);
}

bool CXrefTreeCtrl::DeleteItem(HTREEITEM node)
{
    settleBatch();
    return m_model->RemoveNode(node);
}

bool CXrefTreeCtrl::DeleteChildren(HTREEITEM node)
{
    if (!node)
        return true;
    settleBatch();
    // Deepest first: a node is reported after everything below it. The walk keeps its own stack
    // (a chain of nested references may be far deeper than the call stack allows), and the
    // nodes stay in the model until the end, when they leave in one removal: taking each level
    // out on its own would make an expanded view re-lay out once per level.
    struct Step
    {
        HTREEITEM node;
        std::size_t next; // the next child to visit
    };
    std::vector<Step> path{{node, 0}};
    while (!path.empty()) {
        Step& step = path.back();
        if (step.next < step.node->children.size()) {
            const HTREEITEM child = step.node->children[step.next++].get();
            path.push_back({child, 0});
            continue;
        }
        const HTREEITEM done = step.node;
        path.pop_back();
        if (path.empty())
            break; // @p node itself is not part of its subtree
        CXrefPanelCtrlItem* item = done->item;
        if (!item)
            continue;
        emit ItemToBeDeleted(item);
        if (done->item != item)
            continue; // the item went while it was being reported
        done->item = nullptr;
        ItemTreeLink::Destroy(item, done);
    }
    return m_model->RemoveChildren(node);
}

void CXrefTreeCtrl::DeleteAllItems()
{
    settleBatch();
    m_model->RemoveAll();
}

std::vector<CXrefPanelCtrlItem*> CXrefTreeCtrl::GetChildren(HTREEITEM node) const
{
    std::vector<CXrefPanelCtrlItem*> items;
    if (!node)
        return items;
    items.reserve(node->children.size());
    for (const auto& child : node->children)
        items.push_back(child->item);
    return items;
}

HTREEITEM CXrefTreeCtrl::GetRootItem() const
{
    return m_model->RootNode();
}

int CXrefTreeCtrl::GetCount() const
{
    return m_model->NodeCount();
}

void CXrefTreeCtrl::Expand(HTREEITEM node)
{
    if (!node)
        return;
    // The view cannot expand a node it has not been told about yet.
    if (m_model->InBatch())
        m_pendingExpansions.push_back(node);
    else
        expand(m_model->IndexOf(node));
}

void CXrefTreeCtrl::BeginBatch()
{
    m_model->BeginBatch();
}

void CXrefTreeCtrl::EndBatch()
{
    m_model->EndBatch();
    if (!m_model->InBatch())
        settleBatch();
}

void CXrefTreeCtrl::settleBatch()
{
    m_model->AnnounceNodes();
    const std::vector<HTREEITEM> expansions = std::move(m_pendingExpansions);
    m_pendingExpansions.clear();
    for (HTREEITEM node : expansions)
        expand(m_model->IndexOf(node));
}

bool CXrefTreeCtrl::IsExpanded(HTREEITEM node) const
{
    return node && isExpanded(m_model->IndexOf(node));
}

std::vector<CXrefPanelCtrlItem*> CXrefTreeCtrl::GetSelectedItems() const
{
    std::vector<CXrefPanelCtrlItem*> items;
    if (!selectionModel())
        return items;
    const QModelIndexList selected = selectionModel()->selectedIndexes();
    if (!selected.isEmpty()) {
        if (CXrefPanelCtrlItem* item = ItemFromIndex(selected.front()))
            items.push_back(item);
    }
    return items;
}

CXrefPanelCtrlItem* CXrefTreeCtrl::ItemFromIndex(const QModelIndex& index) const
{
    if (index.model() != m_model)
        return nullptr;
    const HTREEITEM node = CXrefTreeModel::NodeOf(index);
    return node ? node->item : nullptr;
}

QModelIndex CXrefTreeCtrl::IndexFromItem(const CXrefPanelCtrlItem& item) const
{
    const HTREEITEM node = item.GetTreeItem();
    if (!node || node->item != &item || !m_model->Holds(node))
        return {};
    return m_model->IndexOf(node);
}

CXrefPanelCtrlItem* CXrefTreeCtrl::ItemAt(const QPoint& point) const
{
    return ItemFromIndex(indexAt(point));
}

void CXrefTreeCtrl::SetItemImageLists(const CZuUiImageList* light, const CZuUiImageList* dark)
{
    m_itemImages[0] = light;
    m_itemImages[1] = dark;
    viewport()->update();
}

const CZuUiImageList* CXrefTreeCtrl::ItemImageList() const
{
    return m_itemImages[CZuUiTheme::Instance().IsDarkTheme() ? 1 : 0];
}

void CXrefTreeCtrl::applyTheme()
{
    setPalette(CZuUiTheme::Instance().Palette());
    viewport()->update();
}
