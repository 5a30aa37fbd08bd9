#include "panel/XrefPanelCtrl.h"

#include "framework/ControlId.h"
#include "framework/ZuUiImageList.h"
#include "items/TroveListCtrlItem.h"
#include "items/XrefPanelCtrlItem.h"
#include "panel/XrefPanelCtrl_p.h"
#include "services/XrefMessageBox.h"
#include "toolbar/XrefToolBar.h"
#include "views/TroveListCtrl.h"
#include "views/TroveListModel_p.h"
#include "views/XrefPreview.h"
#include "views/XrefTreeCtrl.h"
#include "views/XrefTreeModel_p.h"
#include "views/XrefTreeNode_p.h"

#include <algorithm>

std::map<Trove::MenuItems, std::wstring> CXrefPanelCtrl::m_MenuItemstrings;

CXrefPanelCtrl::CXrefPanelCtrl(CXREFPalette* palette, std::shared_ptr<CXrefToolBar> toolBar,
                               std::shared_ptr<CXrefMessageBox> messageBox, bool troveMode,
                               FileReferenceViewType referenceView, DetailsViewType detailsView,
                               int listOption, bool listFlag)
    : QWidget(nullptr),
      d(std::make_unique<CXrefPanelCtrlPrivate>(palette, std::move(toolBar), std::move(messageBox),
                                                troveMode, referenceView, detailsView, listOption,
                                                listFlag))
{
    if (d->toolBar)
        d->toolBar->SetParentPanel(this);
}

CXrefPanelCtrl::~CXrefPanelCtrl()
{
    // The tool bar and the message strip are shared with the host, which may keep them longer
    // than the panel: they must neither be deleted with the panel's children nor keep pointing
    // at it.
    if (d->toolBar) {
        if (d->toolBar->ParentPanel() == this)
            d->toolBar->SetParentPanel(nullptr);
        if (d->toolBar->parent() == this)
            d->toolBar->setParent(nullptr);
    }
    if (d->messageBox && d->messageBox->parent() == this)
        d->messageBox->setParent(nullptr);
}

bool CXrefPanelCtrl::Create(const wchar_t* windowName, const QRect& rect, QWidget* parent, int id)
{
    if (d->created)
        return false;
    setParent(parent);
    if (windowName)
        setWindowTitle(QString::fromWCharArray(windowName));
    setGeometry(rect);
    ControlId::Set(this, id);

    d->layout.CreateChildren(*this, d->troveMode);
    d->created = true;

    GetListCtrl()->SetColumnDipWidths(GetStoredColumnDipWidths());
    UpdateStateImageList();
    // Removing a subtree reports each descendant before it goes; the panel must release the
    // descendant's list row share at that moment.
    connect(GetTreeCtrl(), &CXrefTreeCtrl::ItemToBeDeleted, this,
            &CXrefPanelCtrl::onTreeItemToBeDeleted);
    return true;
}

void CXrefPanelCtrl::SetDetailColumnDipWidths(std::vector<int>& /*widths*/)
{
    // The widths belong to the details list, which this panel does not have yet.
}

bool CXrefPanelCtrl::IsCreated() const
{
    return d->created;
}

bool CXrefPanelCtrl::LoadTooltipSettings(QDomNode /*node*/)
{
    return false;
}

bool CXrefPanelCtrl::SaveTooltipSettings(QDomNode /*node*/)
{
    return false;
}

void CXrefPanelCtrl::SetIconSize(bool large)
{
    buildStateImageLists(large, large);
}

void CXrefPanelCtrl::UpdateStateImageList()
{
    buildStateImageLists(GetListCtrl() && GetListCtrl()->GetStateImageFlag(),
                         GetTreeCtrl() && GetTreeCtrl()->GetStateImageFlag());
}

void CXrefPanelCtrl::buildStateImageLists(bool listFlag, bool treeFlag)
{
    const auto rebuild = [this](CZuUiImageList& list, bool flag, int view) {
        list.Create(QSize(16, 16), CZuUiImageList::ColorDepth32 | CZuUiImageList::Mask, 10, 2);
        FillStateImageList(list, flag, view);
    };
    if (GetListCtrl()) {
        GetListCtrl()->SetStateImageFlag(listFlag);
        rebuild(GetListCtrl()->StateImageList(), listFlag, 0);
        GetListCtrl()->viewport()->update();
    }
    if (GetTreeCtrl()) {
        GetTreeCtrl()->SetStateImageFlag(treeFlag);
        rebuild(GetTreeCtrl()->StateImageList(), treeFlag, 1);
        GetTreeCtrl()->viewport()->update();
    }
}

void CXrefPanelCtrl::OnItemsSelected(const std::vector<CXrefPanelCtrlItem*>& items, bool /*flag*/)
{
    d->selection.Record(items);
}

void CXrefPanelCtrl::SetToolTipStyle() {}

void CXrefPanelCtrl::EnableHostModStatus(bool enabled, bool modified)
{
    d->hostModStatusEnabled = enabled;
    d->hostModified = modified;
}

bool CXrefPanelCtrl::IsHostModStatusEnabled() const
{
    return d->hostModStatusEnabled;
}

bool CXrefPanelCtrl::IsHostModified() const
{
    return d->hostModified;
}

CXrefPanelCtrl::FileReferenceViewType CXrefPanelCtrl::GetReferenceViewType() const
{
    return d->layout.ReferenceView();
}

CXrefPanelCtrl::DetailsViewType CXrefPanelCtrl::GetDetailsViewType() const
{
    return d->layout.DetailsView();
}

CXrefPanelCtrl::DetailsViewType CXrefPanelCtrl::GetActiveDetailViewType() const
{
    return d->layout.DetailsView();
}

bool CXrefPanelCtrl::GetEnableSelect() const
{
    return d->selection.IsEnabled();
}

const std::vector<CXrefPanelCtrlItem*>& CXrefPanelCtrl::GetSelectedItems() const
{
    return d->selection.Items();
}

bool CXrefPanelCtrl::IsTroveMode() const
{
    return d->troveMode;
}

ToolTipMenuSettings CXrefPanelCtrl::GetToolTipMenuSettings() const
{
    return d->toolTips.Current();
}

CTroveListCtrl* CXrefPanelCtrl::GetListCtrl() const
{
    return d->layout.List();
}

CXrefTreeCtrl* CXrefPanelCtrl::GetTreeCtrl() const
{
    return d->layout.Tree();
}

CXrefPreview* CXrefPanelCtrl::GetPreviewCtrl() const
{
    return d->layout.Preview();
}

const std::shared_ptr<CXrefToolBar>& CXrefPanelCtrl::GetToolBar() const
{
    return d->toolBar;
}

const std::shared_ptr<CXrefMessageBox>& CXrefPanelCtrl::GetMessageBox() const
{
    return d->messageBox;
}

CXREFPalette* CXrefPanelCtrl::GetPalette() const
{
    return d->palette;
}

bool CXrefPanelCtrl::IsValidRefStatusIcon(RefStatus::RefIcon icon)
{
    return RefStatus::IsValidIcon(icon);
}

void CXrefPanelCtrl::SetDetailsProperty(const CXrefPanelCtrlItem& item, XrefProperties property)
{
    if (!d->details.Concerns(item, property))
        return;
    // The details list that shows the row is not part of this panel yet.
}

void CXrefPanelCtrl::BeginUpdate()
{
    if (GetListCtrl()) {
        GetListCtrl()->setUpdatesEnabled(false);
        GetListCtrl()->Model().BeginBatch();
    }
    if (GetTreeCtrl()) {
        GetTreeCtrl()->setUpdatesEnabled(false);
        GetTreeCtrl()->BeginBatch();
    }
}

void CXrefPanelCtrl::EndUpdate()
{
    if (GetListCtrl()) {
        GetListCtrl()->Model().EndBatch();
        GetListCtrl()->setUpdatesEnabled(true);
        GetListCtrl()->viewport()->update();
    }
    if (GetTreeCtrl()) {
        GetTreeCtrl()->EndBatch();
        GetTreeCtrl()->setUpdatesEnabled(true);
        GetTreeCtrl()->viewport()->update();
    }
    UpdateCurrentSelection();
}

void CXrefPanelCtrl::UpdateCurrentSelection()
{
    const std::vector<CXrefPanelCtrlItem*> selection = d->selection.Items();
    OnItemsSelected(selection, true);
}

void CXrefPanelCtrl::InsertRootItem(CXrefPanelCtrlItem& item)
{
    if (!GetTreeCtrl() || !GetListCtrl())
        return;
    item.m_treeItem = GetTreeCtrl()->InsertItem(item, nullptr);
    item.m_listRowLink = GetListCtrl()->InsertItem(item, item.IsHostDwgItem());
}

void CXrefPanelCtrl::InsertItem(CXrefPanelCtrlItem& item, const CXrefPanelCtrlItem& parent,
                                const CXrefPanelCtrlItem* sharedWith)
{
    if (!GetTreeCtrl() || !GetListCtrl())
        return;
    const HTREEITEM parentNode = parent.m_treeItem;
    item.m_treeItem = GetTreeCtrl()->InsertItem(item, parentNode);
    // The root opens once, with its first child, and stays as the user leaves it; deeper parents
    // open with every insertion.
    if (GetTreeCtrl()->GetCount() == 2 || parentNode != GetTreeCtrl()->GetRootItem())
        GetTreeCtrl()->Expand(parentNode);

    if (sharedWith && sharedWith->m_listRowLink) {
        if (item.m_listRowLink != sharedWith->m_listRowLink) {
            if (item.m_listRowLink)
                item.m_listRowLink->Items().erase(&item);
            item.m_listRowLink = sharedWith->m_listRowLink;
        }
        item.m_listRowLink->Items().insert(&item);
        OnSharedRowItemInserted(*sharedWith);
        return;
    }
    item.m_listRowLink = GetListCtrl()->InsertItem(item, item.IsHostDwgItem());
}

void CXrefPanelCtrl::OnTreeItemToBeDeleted(CXrefPanelCtrlItem& item)
{
    boost::shared_ptr<CTroveListCtrlItem>& link = item.m_listRowLink;
    if (!link)
        return;
    link->Items().erase(&item);
    if (GetListCtrl() && link.use_count() == 1) {
        GetListCtrl()->DeleteRow(*link);
        link.reset();
        OnItemRemoved(item);
        return;
    }
    if (!link->Items().empty())
        OnSharedRowOwnerChanged(**link->Items().begin());
}

void CXrefPanelCtrl::onTreeItemToBeDeleted(CXrefPanelCtrlItem* item)
{
    if (item)
        OnTreeItemToBeDeleted(*item);
}

void CXrefPanelCtrl::DeleteTreeItem(CXrefPanelCtrlItem& item)
{
    d->selection.Clear(GetListCtrl(), GetTreeCtrl());
    // A subtree's rows leave the list together once every item has been reported.
    if (GetListCtrl())
        GetListCtrl()->Model().BeginRemovals();
    OnTreeItemToBeDeleted(item);
    if (GetTreeCtrl() && item.m_treeItem) {
        GetTreeCtrl()->DeleteChildren(item.m_treeItem);
        GetTreeCtrl()->DeleteItem(item.m_treeItem);
        item.m_treeItem = nullptr;
    }
    if (GetListCtrl())
        GetListCtrl()->Model().EndRemovals();
}

void CXrefPanelCtrl::DeleteAllItems()
{
    d->selection.Clear(GetListCtrl(), GetTreeCtrl());
    // The rows go first, all at once: every one of them is going, and removing them one by one
    // as their items are reported would renumber the rows behind each of them. The host is told
    // about each item all the same.
    if (GetListCtrl())
        GetListCtrl()->DeleteAllItems();
    if (GetTreeCtrl()) {
        const HTREEITEM root = GetTreeCtrl()->GetRootItem();
        if (root) {
            GetTreeCtrl()->DeleteChildren(root);
            CXrefPanelCtrlItem* rootItem = root->item;
            if (rootItem)
                OnTreeItemToBeDeleted(*rootItem);
            GetTreeCtrl()->DeleteItem(root);
            delete rootItem;
        }
        GetTreeCtrl()->DeleteAllItems();
    }
    d->selection.Forget();
}

CXrefPanelCtrlItem* CXrefPanelCtrl::GetRootItem() const
{
    const HTREEITEM root = GetTreeCtrl() ? GetTreeCtrl()->GetRootItem() : nullptr;
    return root ? root->item : nullptr;
}

CXrefPanelCtrlItem* CXrefPanelCtrl::GetParentItem(const CXrefPanelCtrlItem& item) const
{
    const HTREEITEM node = item.m_treeItem;
    return node && node->parent ? node->parent->item : nullptr;
}

Trove::ICXrefPanelCtrlItem&
CXrefPanelCtrl::GetParentItem(const Trove::ICXrefPanelCtrlItem& item) const
{
    const auto* panelItem = dynamic_cast<const CXrefPanelCtrlItem*>(&item);
    CXrefPanelCtrlItem* parent = panelItem ? GetParentItem(*panelItem) : nullptr;
    if (parent)
        return *parent;
    return const_cast<Trove::ICXrefPanelCtrlItem&>(item);
}

std::vector<CXrefPanelCtrlItem*> CXrefPanelCtrl::GetChildren(const CXrefPanelCtrlItem& item) const
{
    return GetTreeCtrl() ? GetTreeCtrl()->GetChildren(item.m_treeItem)
                         : std::vector<CXrefPanelCtrlItem*>();
}

int CXrefPanelCtrl::GetUniqueXrefCount() const
{
    const int rows = GetListCtrl() ? GetListCtrl()->GetItemCount() : 0;
    return rows < 2 ? 0 : rows - 1;
}

void CXrefPanelCtrl::LoadMenuItemStrings()
{
    ContextMenus::LoadTexts(m_MenuItemstrings);
}

void CXrefPanelCtrl::LoadMenuItemString(Trove::MenuItems item, unsigned id)
{
    ContextMenus::LoadText(m_MenuItemstrings, item, id);
}
