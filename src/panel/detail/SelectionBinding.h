#pragma once

// The panel's record of what is selected and of the edit under way. Internal to the panel; not
// installed.

#include <vector>

class CTroveListCtrl;
class CXrefPanelCtrlItem;
class CXrefTreeCtrl;

/// Keeps the selection the views last reported, which every other pane follows, whether
/// selecting is allowed now (not while a property edit runs) and what a running edit applies
/// to.
class SelectionBinding
{
public:
    /// What an edit applies to once it is committed: the one item selected when it began, or
    /// every item selected when it is committed (for the one property several items share).
    struct EditTarget
    {
        CXrefPanelCtrlItem* single = nullptr;
        bool several = false;
        bool IsSet() const { return single || several; }
    };

    const std::vector<CXrefPanelCtrlItem*>& Items() const { return m_items; }
    void Record(const std::vector<CXrefPanelCtrlItem*>& items) { m_items = items; }
    bool Contains(const CXrefPanelCtrlItem& item) const;
    /// Empties both views' selections and the record.
    void Clear(CTroveListCtrl* list, CXrefTreeCtrl* tree);
    /// Forgets the record only; the views are being emptied anyway.
    void Forget() { m_items.clear(); }
    /// @p item is going: it leaves the record and the edit target. True when it was selected.
    bool Drop(const CXrefPanelCtrlItem& item);

    bool IsEnabled() const { return m_enabled; }
    void SetEnabled(bool enabled) { m_enabled = enabled; }

    const EditTarget& Target() const { return m_target; }
    void SetTarget(const EditTarget& target) { m_target = target; }
    void ClearTarget() { m_target = EditTarget(); }

private:
    std::vector<CXrefPanelCtrlItem*> m_items;
    EditTarget m_target;
    bool m_enabled = true;
};
