#include "items/XrefPanelCtrlItem.h"

#include "items/ItemPanel_p.h"
#include "items/ItemTreeLink_p.h"
#include "items/TroveListCtrlItem.h"
#include "items/XrefPanelCtrlItemStatus.h"
#include "items/XrefPanelCtrlItemTypes.h"
#include "resources/TroveResources.h"
#include "util/FormatMsg.h"
#include "views/TroveListCtrl.h"
#include "views/TroveListModel_p.h"
#include "views/XrefTreeCtrl.h"
#include "views/XrefTreeModel_p.h"
#include "views/XrefTreeNode_p.h"

namespace {

constexpr wchar_t kMarker = L'*';

// The list column that shows @p property, or -1.
int columnOf(Trove::XrefProperties property)
{
    using P = Trove::XrefProperties;
    using C = Trove::ListViewColumn;
    switch (property) {
    case P::Name:
        return C::ReferenceName;
    case P::Status:
        return C::Status;
    case P::Size:
        return C::Size;
    case P::Type:
        return C::Type;
    case P::Date:
        return C::Date;
    case P::SavedPath:
        return C::SavedPath;
    default:
        return -1;
    }
}

// Overlay 0 means none; anything outside the status icons shows the blank badge.
RefStatus::RefIcon clampOverlay(RefStatus::RefIcon overlay)
{
    if (overlay == RefStatus::NoIcon)
        return overlay;
    return RefStatus::IsValidIcon(overlay) ? overlay : RefStatus::Blank;
}

} // namespace

CXrefPanelCtrlItem::CXrefPanelCtrlItem(CXrefPanelCtrl& panel)
    : m_panel(panel), m_panelObject(ItemPanel::Object(panel)),
      m_listCtrl(ItemPanel::ListCtrl(&panel)), m_treeCtrl(ItemPanel::TreeCtrl(&panel)),
      m_date(Util::DateTime::get_Now())
{
    ItemPanel::PropertyChanged(livePanel(), *this, XrefProperties::FileVersion);
}

CXrefPanelCtrlItem::~CXrefPanelCtrlItem()
{
    // Nothing the panel keeps may point here once this returns, whoever deletes the item.
    ItemPanel::ItemGoing(livePanel(), *this);
    if (m_treeItem) {
        const HTREEITEM node = m_treeItem;
        m_treeItem = nullptr;
        if (node->item == this)
            node->item = nullptr;
        // The nodes below go too. Their items stay the host's, which owns them and may be
        // deleting them next: they only forget their nodes and keep their rows until then. In
        // the middle of a subtree removal the tree refuses, and its walk skips the empty node.
        if (m_treeCtrl)
            m_treeCtrl->DeleteItem(node);
    }
    if (m_listRowLink) {
        m_listRowLink->Items().erase(this);
        if (m_listRowLink.use_count() == 1 && m_listCtrl)
            m_listCtrl->DeleteRow(*m_listRowLink);
    }
}

CXrefPanelCtrl* CXrefPanelCtrlItem::livePanel() const
{
    return m_panelObject ? &m_panel : nullptr;
}

bool CXrefPanelCtrlItem::HasNoPreview() const
{
    return false;
}

bool CXrefPanelCtrlItem::GetDetailsEditContext(std::wstring&, std::wstring&, std::wstring&) const
{
    return false;
}

bool CXrefPanelCtrlItem::IsDetailsEditPreviewPresent() const
{
    return false;
}

bool CXrefPanelCtrlItem::IsNoteSuppressed(int) const
{
    return false;
}

bool CXrefPanelCtrlItem::NeedsNote() const
{
    return false;
}

bool CXrefPanelCtrlItem::IsExcluded() const
{
    return false;
}

bool CXrefPanelCtrlItem::IsSortItem() const
{
    return true;
}

bool CXrefPanelCtrlItem::IsHostDwgItem() const
{
    return false;
}

bool CXrefPanelCtrlItem::IsDataLinkItem() const
{
    return false;
}

bool CXrefPanelCtrlItem::IsImageItem() const
{
    return false;
}

Attachment::FileType::Enum CXrefPanelCtrlItem::FileType() const
{
    return Attachment::FileType::Enum(64);
}

bool CXrefPanelCtrlItem::isPendingRelativePath() const
{
    return false;
}

void CXrefPanelCtrlItem::getPathTypeEnabledStatus(bool&, bool&, bool&) const {}

// --- Tree node and list row ---------------------------------------------------------------------

int CXrefPanelCtrlItem::LVItemIndex() const
{
    return m_listRowLink ? m_listRowLink->Row() : -1;
}

CXrefPanelCtrlItem* CXrefPanelCtrlItem::GetListViewItem() const
{
    if (!m_listRowLink || m_listRowLink->Items().empty())
        return nullptr;
    return *m_listRowLink->Items().begin();
}

long CXrefPanelCtrlItem::GetReferenceCount() const
{
    return m_listRowLink ? m_listRowLink.use_count() : 0;
}

std::set<CXrefPanelCtrlItem*> CXrefPanelCtrlItem::GetLVItemReferences() const
{
    if (!m_listRowLink)
        return {};
    return std::set<CXrefPanelCtrlItem*>(m_listRowLink->Items().begin(),
                                         m_listRowLink->Items().end());
}

bool CXrefPanelCtrlItem::IsEqual(const CXrefPanelCtrlItem& other) const
{
    return m_treeItem == other.m_treeItem;
}

std::wstring CXrefPanelCtrlItem::FormatDisplayText(const std::wstring& text) const
{
    if (!text.empty() && IsHostDwgItem() && ItemPanel::ShowsModifiedMarker(livePanel()))
        return text + kMarker;
    return text;
}

void CXrefPanelCtrlItem::ParseDisplayText(const std::wstring& display, std::wstring& name,
                                          std::wstring& marker) const
{
    if (!display.empty() && display.back() == kMarker && IsHostDwgItem() &&
        ItemPanel::ShowsModifiedMarker(livePanel())) {
        name = display.substr(0, display.size() - 1);
        marker = std::wstring(1, kMarker);
        return;
    }
    name = display;
    marker.clear();
}

std::wstring CXrefPanelCtrlItem::GetText() const
{
    const std::wstring display = m_treeItem ? m_treeItem->text.toStdWString() : std::wstring();
    std::wstring name;
    std::wstring marker;
    ParseDisplayText(display, name, marker);
    return name;
}

void CXrefPanelCtrlItem::SetText(const std::wstring& text)
{
    // One string for both views: the node and the name cell share its storage.
    QString display = Util::ToQString(text);
    if (!text.empty() && IsHostDwgItem() && ItemPanel::ShowsModifiedMarker(livePanel()))
        display = Util::ToQString(FormatDisplayText(text));
    if (m_treeCtrl)
        m_treeCtrl->Model().SetText(m_treeItem, display);
    if (m_listCtrl)
        m_listCtrl->Model().SetCellText(LVItemIndex(), ListViewColumn::ReferenceName, display);
}

std::wstring CXrefPanelCtrlItem::GetListViewSubItemText(ListViewColumn::Enum column) const
{
    if (!m_listCtrl)
        return {};
    std::wstring text = m_listCtrl->Model().CellText(LVItemIndex(), column).toStdWString();
    if (column == ListViewColumn::SavedPath && !text.empty() && text.front() == kMarker)
        text.erase(0, 1);
    return text;
}

void CXrefPanelCtrlItem::SetListViewSubItemText(ListViewColumn::Enum column,
                                                const std::wstring& text)
{
    if (!m_listCtrl)
        return;
    QString written = Util::ToQString(text);
    if (column == ListViewColumn::SavedPath && isPendingRelativePath())
        written.prepend(QChar(kMarker));
    m_listCtrl->Model().SetCellText(LVItemIndex(), column, written);
}

// --- Repository state images --------------------------------------------------------------------

unsigned CXrefPanelCtrlItem::GetTroveStateIconIndexTreeView() const
{
    return m_treeItem ? ItemStateWord::StateImageOf(
                            m_treeItem->state.Masked(ItemStateWord::kStateImageMask))
                      : 0u;
}

unsigned CXrefPanelCtrlItem::GetTroveStateIconIndexListView() const
{
    if (!m_listCtrl)
        return 0;
    return ItemStateWord::StateImageOf(
        m_listCtrl->Model().ItemState(LVItemIndex(), ItemStateWord::kStateImageMask));
}

void CXrefPanelCtrlItem::SetTroveStateIconIndexTreeView(unsigned index)
{
    if (m_treeCtrl)
        m_treeCtrl->Model().SetState(m_treeItem, ItemStateWord::StateImageBits(index),
                                     ItemStateWord::kStateImageMask);
}

void CXrefPanelCtrlItem::SetTroveStateIconIndexListView(unsigned index)
{
    // Row -1 addresses every row, as a list state write without a row always has.
    if (m_listCtrl)
        m_listCtrl->Model().SetItemState(LVItemIndex(), ItemStateWord::StateImageBits(index),
                                         ItemStateWord::kStateImageMask);
}

// --- Values -------------------------------------------------------------------------------------

boost::optional<std::wstring> CXrefPanelCtrlItem::GetProperty(XrefProperties property) const
{
    switch (property) {
    case XrefProperties::Name:
        return GetText();
    case XrefProperties::Status:
    case XrefProperties::Size:
    case XrefProperties::Type:
    case XrefProperties::Date:
    case XrefProperties::SavedPath:
        return GetListViewSubItemText(ListViewColumn::Enum(columnOf(property)));
    case XrefProperties::FoundAt:
        return m_foundAt;
    case XrefProperties::FileVersion:
        return m_fileVersion > 0 ? std::to_wstring(m_fileVersion) : std::wstring();
    case XrefProperties::PendingRelativePath:
        return TroveUI::ResStringW(isPendingRelativePath() ? 32789 : 32790);
    default:
        return boost::none;
    }
}

bool CXrefPanelCtrlItem::SetProperty(XrefProperties property, const std::wstring& text)
{
    const int column = columnOf(property);
    if (column >= 0)
        SetListViewSubItemText(ListViewColumn::Enum(column), text);
    ItemPanel::PropertyChanged(livePanel(), *this, property);
    return column >= 0;
}

void CXrefPanelCtrlItem::SetProperty_(XrefProperties property, const std::wstring& text)
{
    SetProperty(property, text);
}

void CXrefPanelCtrlItem::SetSize(std::int64_t bytes)
{
    m_size = bytes;
    if (bytes < 1) {
        SetProperty(XrefProperties::Size, std::wstring());
        return;
    }
    // The row keeps the number and formats it when shown: the same text, without formatting
    // 100,000 sizes that are never looked at.
    if (m_listCtrl)
        m_listCtrl->Model().SetCellBytes(LVItemIndex(), bytes);
    ItemPanel::PropertyChanged(livePanel(), *this, XrefProperties::Size);
}

std::wstring CXrefPanelCtrlItem::GetSizeDisplayText() const
{
    return GetProperty(XrefProperties::Size).value_or(std::wstring());
}

void CXrefPanelCtrlItem::SetType(const std::wstring& text)
{
    SetProperty(XrefProperties::Type, text);
}

std::wstring CXrefPanelCtrlItem::GetType() const
{
    return GetProperty(XrefProperties::Type).value_or(std::wstring());
}

void CXrefPanelCtrlItem::SetDate(const Util::DateTime& date)
{
    m_date = date;
    if (date.get_Day() == 1 && date.get_Month() == 1 && date.get_Year() == 1) {
        SetProperty(XrefProperties::Date, std::wstring());
        return;
    }
    // Kept as a value and written out in the general date-and-time form when shown.
    if (m_listCtrl)
        m_listCtrl->Model().SetCellDate(LVItemIndex(), date);
    ItemPanel::PropertyChanged(livePanel(), *this, XrefProperties::Date);
}

std::wstring CXrefPanelCtrlItem::GetDateDisplayText() const
{
    return GetProperty(XrefProperties::Date).value_or(std::wstring());
}

void CXrefPanelCtrlItem::SetSavedPath(const std::wstring& text)
{
    SetProperty(XrefProperties::SavedPath, text);
}

std::wstring CXrefPanelCtrlItem::GetSavedPath() const
{
    return GetProperty(XrefProperties::SavedPath).value_or(std::wstring());
}

void CXrefPanelCtrlItem::SetFoundAt(const std::wstring& text)
{
    if (&text != &m_foundAt)
        m_foundAt = text;
    ItemPanel::PropertyChanged(livePanel(), *this, XrefProperties::FoundAt);
}

void CXrefPanelCtrlItem::SetFileVersion(int version)
{
    m_fileVersion = version;
    ItemPanel::PropertyChanged(livePanel(), *this, XrefProperties::FileVersion);
}

void CXrefPanelCtrlItem::SetReferenceStatus(RefStatus::RefIcon icon,
                                            Trove::FileDataStatus::Value status)
{
    if (!RefStatus::IsValidIcon(icon))
        icon = RefStatus::Blank;
    m_referenceStatusIcon = icon;
    m_referenceStatusText = status;
    if (m_listCtrl) {
        CTroveListModel& model = m_listCtrl->Model();
        const int row = LVItemIndex();
        model.SetCellText(row, ListViewColumn::Status, CXrefPanelCtrlItemStatus::ToString(status));
        model.SetSubItemImage(row, ListViewColumn::Status,
                              CXrefPanelCtrlItemTypes::StatusImage(icon));
    }
    SetTypeOverlayIcon(icon);
}

// --- Type icon ----------------------------------------------------------------------------------

void CXrefPanelCtrlItem::SetTypeIcon(const QString& iconName)
{
    m_typeIcon = iconName;
    const int image = CXrefPanelCtrlItemTypes::TypeImage(typeid(*this), iconName);
    if (m_listCtrl)
        m_listCtrl->Model().SetSubItemImage(LVItemIndex(), ListViewColumn::TypeIcon, image);
    if (m_treeCtrl)
        m_treeCtrl->Model().SetImages(m_treeItem, image, image);
}

void CXrefPanelCtrlItem::SetTypeIcon(RefStatus::RefIcon overlay, const QString& iconName)
{
    m_typeOverlayIcon = clampOverlay(overlay);
    SetTypeIcon(iconName);
    writeOverlay(m_typeOverlayIcon);
}

void CXrefPanelCtrlItem::SetTypeOverlayIcon(RefStatus::RefIcon overlay)
{
    m_typeOverlayIcon = clampOverlay(overlay);
    writeOverlay(m_typeOverlayIcon);
}

void CXrefPanelCtrlItem::writeOverlay(int overlay)
{
    const unsigned bits = ItemStateWord::OverlayBits(overlay);
    // Unlike a state image, an overlay is only ever written to an existing row.
    const int row = LVItemIndex();
    if (m_listCtrl && row >= 0)
        m_listCtrl->Model().SetItemState(row, bits, ItemStateWord::kOverlayMask);
    if (m_treeCtrl)
        m_treeCtrl->Model().SetState(m_treeItem, bits, ItemStateWord::kOverlayMask);
}

// --- Colours and fonts --------------------------------------------------------------------------

CXrefPanelCtrlItem::TextStyle& CXrefPanelCtrlItem::EditTextStyle()
{
    if (!m_textStyle)
        m_textStyle = std::make_unique<TextStyle>();
    return *m_textStyle;
}

const CXrefPanelCtrlItem::TextStyle& CXrefPanelCtrlItem::textStyle() const
{
    static const TextStyle defaults;
    return m_textStyle ? *m_textStyle : defaults;
}

const bool& CXrefPanelCtrlItem::UseDefaultColor() const
{
    return textStyle().useDefaultColor;
}

const bool& CXrefPanelCtrlItem::UseDefaultFont() const
{
    return textStyle().useDefaultFont;
}

const COLORREF& CXrefPanelCtrlItem::GetItemTextColor() const
{
    return textStyle().itemTextColor;
}

const LOGFONTW& CXrefPanelCtrlItem::GetListCtrlItemTextFont() const
{
    return textStyle().listCtrlItemTextFont;
}

const LOGFONTW& CXrefPanelCtrlItem::GetTreeCtrlItemTextFont() const
{
    return textStyle().treeCtrlItemTextFont;
}

QFont CXrefPanelCtrlItem::GetListCtrlFont() const
{
    return m_listCtrl ? m_listCtrl->font() : QFont();
}

QFont CXrefPanelCtrlItem::GetTreeCtrlFont() const
{
    return m_treeCtrl ? m_treeCtrl->font() : QFont();
}

// --- The tree's side of the node link -----------------------------------------------------------

void ItemTreeLink::Detach(CXrefPanelCtrlItem& item, HTREEITEM node)
{
    if (item.m_treeItem == node)
        item.m_treeItem = nullptr;
}

void ItemTreeLink::Destroy(CXrefPanelCtrlItem* item, HTREEITEM node)
{
    if (!item)
        return;
    Detach(*item, node);
    delete item;
}
