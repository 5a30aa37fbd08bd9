#include "panel/detail/DetailsBinding.h"

#include "items/AttachmentFileType.h"
#include "items/XrefPanelCtrlItem.h"
#include "panel/ListViewColumn.h"
#include "panel/detail/SelectionBinding.h"
#include "resources/TroveResources.h"
#include "views/XrefPropListCtrl.h"

namespace {

using Trove::XrefProperties;
using Column = Trove::ListViewColumn;

CXrefProperty::XrefPropertyEditStyle editStyleOf(XrefProperties property)
{
    switch (property) {
    case XrefProperties::Name:
        return CXrefProperty::TextEdit;
    case XrefProperties::Type:
        return CXrefProperty::ComboBox;
    case XrefProperties::SavedPath:
        return CXrefProperty::FileEdit;
    default:
        return CXrefProperty::NotEditable;
    }
}

// The item is asked about an edit in the pane as about the same edit in the list, with the
// list column that shows the property, so that a host answers both alike.
int listColumnOf(XrefProperties property)
{
    switch (property) {
    case XrefProperties::Name:
        return Column::ReferenceName;
    case XrefProperties::Type:
        return Column::Type;
    case XrefProperties::SavedPath:
        return Column::SavedPath;
    default:
        return -1;
    }
}

std::wstring valueOf(const CXrefPanelCtrlItem& item, XrefProperties property)
{
    return item.GetProperty(property).value_or(std::wstring());
}

} // namespace

bool DetailsBinding::Concerns(const CXrefPanelCtrlItem& item, XrefProperties) const
{
    return m_selection.Contains(item);
}

std::wstring DetailsBinding::VariesText()
{
    return TroveUI::ResString(1133).toStdWString();
}

void DetailsBinding::ensureRows()
{
    if (!m_list || (!m_rows.empty() && m_list->RowOf(XrefProperties::Name) == 0))
        return;
    m_rows.clear();
    m_rows.reserve(kRowCount);
    for (int id = 0; id < kRowCount; ++id) {
        const auto property = XrefProperties(id);
        m_rows.emplace_back(property, std::wstring(), editStyleOf(property));
    }
    std::vector<CXrefProperty*> rows;
    for (CXrefProperty& row : m_rows)
        rows.push_back(&row);
    m_list->SetProperties(rows);
}

void DetailsBinding::ShowItem(const CXrefPanelCtrlItem& item)
{
    if (!m_list)
        return;
    m_rows.clear();
    ensureRows();
    m_list->SetRedraw(false);
    for (CXrefProperty& row : m_rows) {
        const XrefProperties property = row.GetProperty();
        const std::wstring value = valueOf(item, property);
        row.SetValue(value);
        m_list->SetPropertyValue(property, value);
        if (row.IsEditable())
            m_list->SetEditable(property,
                                item.IsPropertyEditable(property, listColumnOf(property)));
    }
    m_list->SetRedraw(true);

    std::wstring filter, extension, caption;
    if (item.GetDetailsEditContext(filter, extension, caption))
        m_list->SetBrowseSettings(
            QString::fromStdWString(filter), QString::fromStdWString(extension),
            QString::fromStdWString(caption), item.IsDetailsEditPreviewPresent(), true);
}

void DetailsBinding::ShowSelection(const std::vector<CXrefPanelCtrlItem*>& items)
{
    if (!m_list)
        return;
    if (items.empty()) {
        m_rows.clear();
        m_list->SetProperties({});
        return;
    }
    ensureRows();
    m_list->SetRedraw(false);
    for (CXrefProperty& row : m_rows) {
        row.SetValue(std::wstring());
        m_list->SetPropertyValue(row.GetProperty(), std::wstring());
    }
    m_list->SetEditable(XrefProperties(CXrefPropListCtrl::kAllProperties), false);
    m_list->SetRedraw(true);
    if (items.size() < 2)
        return;

    const std::wstring varies = VariesText();
    SetValue(XrefProperties::Name, varies);
    // Type texts are compared exactly: "Attach" and "attach" are two types.
    const std::wstring firstType =
        items.front() ? valueOf(*items.front(), XrefProperties::Type) : std::wstring();
    bool sameType = true;
    bool allDrawings = true;
    for (std::size_t i = 0; i < items.size(); ++i) {
        const CXrefPanelCtrlItem* item = items[i];
        if (!item) {
            sameType = allDrawings = false;
            continue;
        }
        sameType = sameType && valueOf(*item, XrefProperties::Type) == firstType;
        allDrawings = allDrawings && item->FileType() == Attachment::FileType::Enum(1);
        // The first item is not put to the exclusion test: it is the one the user clicked
        // first, and the pane has always let its type stand for the others.
        if (i > 0)
            allDrawings = allDrawings && !item->IsExcluded();
    }
    SetValue(XrefProperties::Type, sameType ? firstType : varies);
    m_list->SetEditable(XrefProperties::Type, allDrawings);
}

void DetailsBinding::SetValue(XrefProperties property, const std::wstring& value)
{
    if (!m_list)
        return;
    const auto id = std::size_t(property);
    if (id < m_rows.size())
        m_rows[id].SetValue(value);
    m_list->SetPropertyValue(property, value);
}

bool DetailsBinding::TypeEditable() const
{
    if (!m_list)
        return false;
    const CXrefProperty* row = m_list->PropertyAt(m_list->RowOf(XrefProperties::Type));
    return row && m_list->IsEditable(*row);
}
