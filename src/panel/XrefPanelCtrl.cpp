#include "panel/XrefPanelCtrl.h"

#include "framework/ControlId.h"
#include "framework/ZuUiImageList.h"
#include "items/TroveListCtrlItem.h"
#include "items/XrefPanelCtrlItem.h"
#include "items/XrefPanelCtrlItemTypes.h"
#include "resources/TemporaryResourceOverride.h"
#include "services/XrefMessageBox.h"
#include "toolbar/XrefToolBar.h"
#include "util/ResourceModule.h"
#include "views/TroveListCtrl.h"
#include "views/TroveListModel.h"
#include "views/XrefPreview.h"
#include "views/XrefTreeCtrl.h"
#include "views/XrefTreeModel.h"
#include "views/XrefTreeNode.h"

#include <algorithm>

namespace {

constexpr int kListViewId = 30102;
constexpr int kTreeViewId = 30101;
constexpr int kPreviewId = 30202;

// Text ids of the menu values; 0, 2, 40 and 41 have none.
constexpr std::pair<Trove::MenuItems, unsigned> kMenuTextIds[] = {
    {Trove::HostSubMenu1, 1166},
    {Trove::HostCommand3, 1011},
    {Trove::Attach, 1012},
    {Trove::AttachImage, 1028},
    {Trove::HostCommand6, 1013},
    {Trove::HostCommand7, 1014},
    {Trove::ReloadAllXRefs, 1022},
    {Trove::HostCommand9, 1015},
    {Trove::HostCommand10, 1016},
    {Trove::RemovePath, 1167},
    {Trove::MakePathRelative, 1168},
    {Trove::MakePathAbsolute, 1174},
    {Trove::SelectNewPath, 32786},
    {Trove::FindAndReplace, 32787},
    {Trove::HostCommand16, 1020},
    {Trove::Refresh, 1021},
    {Trove::HostCommand18, 1023},
    {Trove::TooltipClose, 1027},
    {Trove::AttachDWG, 1121},
    {Trove::AttachDWF, 1122},
    {Trove::AttachDGN, 1123},
    {Trove::AttachPDF, 1164},
    {Trove::HostCommand24, 1068},
    {Trove::HostCommand25, 1071},
    {Trove::AttachPointCloud, 1169},
    {Trove::AttachOrbiskModel, 1024},
    {Trove::Tooltips, 1160},
    {Trove::TooltipClassic, 1152},
    {Trove::TooltipPreview, 1153},
    {Trove::PreviewSmall, 1156},
    {Trove::PreviewMedium, 1157},
    {Trove::PreviewLarge, 1158},
    {Trove::TooltipDetails, 1154},
    {Trove::TooltipPreviewDetails, 1155},
    {Trove::PreviewDetailsSmall, 1159},
    {Trove::PreviewDetailsMedium, 1162},
    {Trove::PreviewDetailsLarge, 1163},
    {Trove::PreviewDetailsPane, 1161},
    {Trove::HostSubMenu42, 1171},
    {Trove::HostCommand43, 1172},
    {Trove::HostCommand44, 1173},
    {Trove::HostSubMenu45, 1182},
    {Trove::HostCommand46, 1183},
    {Trove::HostCommand47, 1184},
};
static_assert(std::size(kMenuTextIds) == 44);

} // namespace

std::map<Trove::MenuItems, std::wstring> CXrefPanelCtrl::m_MenuItemstrings;

CXrefPanelCtrl::CXrefPanelCtrl(CXREFPalette* palette, std::shared_ptr<CXrefToolBar> toolBar,
                               std::shared_ptr<CXrefMessageBox> messageBox, bool troveMode,
                               FileReferenceViewType referenceView, DetailsViewType detailsView,
                               int listOption, bool listFlag)
    : QWidget(nullptr), m_palette(palette), m_toolBar(std::move(toolBar)),
      m_messageBox(std::move(messageBox)), m_troveMode(troveMode), m_listOption(listOption),
      m_listFlag(listFlag), m_referenceViewType(referenceView), m_detailsViewType(detailsView)
{
    if (m_toolBar)
        m_toolBar->SetParentPanel(this);
}

CXrefPanelCtrl::~CXrefPanelCtrl()
{
    // The tool bar and the message strip are shared with the host, which may keep them longer
    // than the panel: they must neither be deleted with the panel's children nor keep pointing
    // at it.
    if (m_toolBar) {
        if (m_toolBar->ParentPanel() == this)
            m_toolBar->SetParentPanel(nullptr);
        if (m_toolBar->parent() == this)
            m_toolBar->setParent(nullptr);
    }
    if (m_messageBox && m_messageBox->parent() == this)
        m_messageBox->setParent(nullptr);
}

bool CXrefPanelCtrl::Create(const wchar_t* windowName, const QRect& rect, QWidget* parent, int id)
{
    if (m_created)
        return false;
    setParent(parent);
    if (windowName)
        setWindowTitle(QString::fromWCharArray(windowName));
    setGeometry(rect);
    ControlId::Set(this, id);

    // The views stay hidden until the panel's groups show the page in front.
    m_listCtrl = new CTroveListCtrl(m_troveMode, m_listOption, m_listFlag, this);
    ControlId::Set(m_listCtrl, kListViewId);
    m_listCtrl->hide();
    m_treeCtrl = new CXrefTreeCtrl(m_troveMode, this);
    ControlId::Set(m_treeCtrl, kTreeViewId);
    m_treeCtrl->hide();
    m_preview = new CXrefPreview(this);
    ControlId::Set(m_preview, kPreviewId);
    m_preview->hide();
    m_created = true;

    // The views draw item icons from the type registry's lists, one per theme.
    m_listCtrl->SetItemImageLists(&CXrefPanelCtrlItemTypes::ImageList(false),
                                  &CXrefPanelCtrlItemTypes::ImageList(true));
    m_treeCtrl->SetItemImageLists(&CXrefPanelCtrlItemTypes::ImageList(false),
                                  &CXrefPanelCtrlItemTypes::ImageList(true));

    m_listCtrl->SetColumnDipWidths(GetStoredColumnDipWidths());
    UpdateStateImageList();
    // Removing a subtree reports each descendant before it goes; the panel must release the
    // descendant's list row share at that moment.
    connect(m_treeCtrl, &CXrefTreeCtrl::ItemToBeDeleted, this,
            &CXrefPanelCtrl::onTreeItemToBeDeleted);
    return true;
}

void CXrefPanelCtrl::SetDetailColumnDipWidths(std::vector<int>& /*widths*/)
{
    // The widths belong to the details list, which this panel does not have yet.
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
    buildStateImageLists(m_listCtrl && m_listCtrl->GetStateImageFlag(),
                         m_treeCtrl && m_treeCtrl->GetStateImageFlag());
}

void CXrefPanelCtrl::buildStateImageLists(bool listFlag, bool treeFlag)
{
    const auto rebuild = [this](CZuUiImageList& list, bool flag, int view) {
        list.Create(QSize(16, 16), CZuUiImageList::ColorDepth32 | CZuUiImageList::Mask, 10, 2);
        FillStateImageList(list, flag, view);
    };
    if (m_listCtrl) {
        m_listCtrl->SetStateImageFlag(listFlag);
        rebuild(m_listCtrl->StateImageList(), listFlag, 0);
        m_listCtrl->viewport()->update();
    }
    if (m_treeCtrl) {
        m_treeCtrl->SetStateImageFlag(treeFlag);
        rebuild(m_treeCtrl->StateImageList(), treeFlag, 1);
        m_treeCtrl->viewport()->update();
    }
}

void CXrefPanelCtrl::OnItemsSelected(const std::vector<CXrefPanelCtrlItem*>& items, bool /*flag*/)
{
    m_selectedItems = items;
    if (!m_enableSelect)
        return;
}

void CXrefPanelCtrl::SetToolTipStyle() {}

void CXrefPanelCtrl::EnableHostModStatus(bool enabled, bool modified)
{
    m_hostModStatusEnabled = enabled;
    m_hostModified = modified;
}

bool CXrefPanelCtrl::IsValidRefStatusIcon(RefStatus::RefIcon icon)
{
    return RefStatus::IsValidIcon(icon);
}

void CXrefPanelCtrl::SetDetailsProperty(const CXrefPanelCtrlItem& item, XrefProperties /*property*/)
{
    if (std::find(m_selectedItems.begin(), m_selectedItems.end(), &item) == m_selectedItems.end())
        return;
    // Only a selected item's row is shown; the details list that shows it is not part of this
    // panel yet.
}

void CXrefPanelCtrl::BeginUpdate()
{
    if (m_listCtrl) {
        m_listCtrl->setUpdatesEnabled(false);
        m_listCtrl->Model().BeginBatch();
    }
    if (m_treeCtrl) {
        m_treeCtrl->setUpdatesEnabled(false);
        m_treeCtrl->BeginBatch();
    }
}

void CXrefPanelCtrl::EndUpdate()
{
    if (m_listCtrl) {
        m_listCtrl->Model().EndBatch();
        m_listCtrl->setUpdatesEnabled(true);
        m_listCtrl->viewport()->update();
    }
    if (m_treeCtrl) {
        m_treeCtrl->EndBatch();
        m_treeCtrl->setUpdatesEnabled(true);
        m_treeCtrl->viewport()->update();
    }
    UpdateCurrentSelection();
}

void CXrefPanelCtrl::UpdateCurrentSelection()
{
    const std::vector<CXrefPanelCtrlItem*> selection = m_selectedItems;
    OnItemsSelected(selection, true);
}

void CXrefPanelCtrl::InsertRootItem(CXrefPanelCtrlItem& item)
{
    if (!m_treeCtrl || !m_listCtrl)
        return;
    item.m_treeItem = m_treeCtrl->InsertItem(item, nullptr);
    item.m_listRowLink = m_listCtrl->InsertItem(item, item.IsHostDwgItem());
}

void CXrefPanelCtrl::InsertItem(CXrefPanelCtrlItem& item, const CXrefPanelCtrlItem& parent,
                                const CXrefPanelCtrlItem* sharedWith)
{
    if (!m_treeCtrl || !m_listCtrl)
        return;
    const HTREEITEM parentNode = parent.m_treeItem;
    item.m_treeItem = m_treeCtrl->InsertItem(item, parentNode);
    // The root opens once, with its first child, and stays as the user leaves it; deeper parents
    // open with every insertion.
    if (m_treeCtrl->GetCount() == 2 || parentNode != m_treeCtrl->GetRootItem())
        m_treeCtrl->Expand(parentNode);

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
    item.m_listRowLink = m_listCtrl->InsertItem(item, item.IsHostDwgItem());
}

void CXrefPanelCtrl::clearSelection()
{
    if (m_treeCtrl && m_treeCtrl->selectionModel())
        m_treeCtrl->selectionModel()->clear();
    if (m_listCtrl && m_listCtrl->selectionModel())
        m_listCtrl->selectionModel()->clear();
    m_selectedItems.clear();
}

void CXrefPanelCtrl::OnTreeItemToBeDeleted(CXrefPanelCtrlItem& item)
{
    boost::shared_ptr<CTroveListCtrlItem>& link = item.m_listRowLink;
    if (!link)
        return;
    link->Items().erase(&item);
    if (m_listCtrl && link.use_count() == 1) {
        m_listCtrl->DeleteRow(*link);
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
    clearSelection();
    // A subtree's rows leave the list together once every item has been reported.
    if (m_listCtrl)
        m_listCtrl->Model().BeginRemovals();
    OnTreeItemToBeDeleted(item);
    if (m_treeCtrl && item.m_treeItem) {
        m_treeCtrl->DeleteChildren(item.m_treeItem);
        m_treeCtrl->DeleteItem(item.m_treeItem);
        item.m_treeItem = nullptr;
    }
    if (m_listCtrl)
        m_listCtrl->Model().EndRemovals();
}

void CXrefPanelCtrl::DeleteAllItems()
{
    clearSelection();
    // The rows go first, all at once: every one of them is going, and removing them one by one
    // as their items are reported would renumber the rows behind each of them. The host is told
    // about each item all the same.
    if (m_listCtrl)
        m_listCtrl->DeleteAllItems();
    if (m_treeCtrl) {
        const HTREEITEM root = m_treeCtrl->GetRootItem();
        if (root) {
            m_treeCtrl->DeleteChildren(root);
            CXrefPanelCtrlItem* rootItem = root->item;
            if (rootItem)
                OnTreeItemToBeDeleted(*rootItem);
            m_treeCtrl->DeleteItem(root);
            delete rootItem;
        }
        m_treeCtrl->DeleteAllItems();
    }
    m_selectedItems.clear();
}

CXrefPanelCtrlItem* CXrefPanelCtrl::GetRootItem() const
{
    const HTREEITEM root = m_treeCtrl ? m_treeCtrl->GetRootItem() : nullptr;
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
    return m_treeCtrl ? m_treeCtrl->GetChildren(item.m_treeItem)
                      : std::vector<CXrefPanelCtrlItem*>();
}

int CXrefPanelCtrl::GetUniqueXrefCount() const
{
    const int rows = m_listCtrl ? m_listCtrl->GetItemCount() : 0;
    return rows < 2 ? 0 : rows - 1;
}

void CXrefPanelCtrl::LoadMenuItemStrings()
{
    // One fill per process, safe even if two threads get here first at once.
    static const bool loaded = [] {
        for (const auto& [item, id] : kMenuTextIds)
            LoadMenuItemString(item, id);
        return true;
    }();
    (void)loaded;
}

void CXrefPanelCtrl::LoadMenuItemString(Trove::MenuItems item, unsigned id)
{
    CTemporaryResourceOverride resources;
    m_MenuItemstrings[item] = Util::LoadStrW(Util::CurrentResourceModule(), id);
}
