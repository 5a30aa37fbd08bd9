#pragma once

// Keeps the details pane in step with the selected items. Internal to the panel; not installed.

#include "items/XrefProperty.h"
#include "panel/XrefProperties.h"

#include <string>
#include <vector>

class CXrefPanelCtrlItem;
class CXrefPropListCtrl;
class SelectionBinding;

/// Fills the details pane for the selection. The pane shows the properties from the name to the
/// file version, one row each in property order, so a row's index is its property's value
/// (the pane reports edits by row).
class DetailsBinding
{
public:
    /// The properties the pane shows, from Name on.
    static constexpr int kRowCount = 8;

    explicit DetailsBinding(const SelectionBinding& selection) : m_selection(selection) {}

    /// The pane to fill; null until the panel made it.
    void SetList(CXrefPropListCtrl* list) { m_list = list; }

    /// Whether a change of @p property of @p item concerns the pane.
    bool Concerns(const CXrefPanelCtrlItem& item, Trove::XrefProperties property) const;

    /// One item selected: its values, its editable rows and the browse settings it gives.
    void ShowItem(const CXrefPanelCtrlItem& item);
    /// None or several selected: every value empty and nothing editable; for several, the name
    /// shows that the values differ, the type shows the items' common type text (or that it
    /// differs), and the type is editable for drawings alone. With none the rows go.
    void ShowSelection(const std::vector<CXrefPanelCtrlItem*>& items);

    /// Writes @p value into @p property's row.
    void SetValue(Trove::XrefProperties property, const std::wstring& value);
    /// Whether the type row may be edited now: an edit begun with several items selected then
    /// applies to all of them.
    bool TypeEditable() const;

    /// The text that stands for values that differ between the selected items.
    static std::wstring VariesText();

private:
    /// Shows the rows, with the edit style each property has in the pane, when they are not
    /// shown already.
    void ensureRows();

    const SelectionBinding& m_selection;
    CXrefPropListCtrl* m_list = nullptr;
    std::vector<CXrefProperty> m_rows;
};
