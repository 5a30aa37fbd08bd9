#pragma once

// The panel's record of what is selected. Internal to the panel; not installed.

#include <vector>

class CTroveListCtrl;
class CXrefPanelCtrlItem;
class CXrefTreeCtrl;

/// Keeps the selection the views last reported, which every other pane follows, and whether
/// selecting is allowed now (not while a property edit runs).
class SelectionBinding
{
public:
    const std::vector<CXrefPanelCtrlItem*>& Items() const { return m_items; }
    void Record(const std::vector<CXrefPanelCtrlItem*>& items) { m_items = items; }
    bool Contains(const CXrefPanelCtrlItem& item) const;
    /// Empties both views' selections and the record.
    void Clear(CTroveListCtrl* list, CXrefTreeCtrl* tree);
    /// Forgets the record only; the views are being emptied anyway.
    void Forget() { m_items.clear(); }

    bool IsEnabled() const { return m_enabled; }

private:
    std::vector<CXrefPanelCtrlItem*> m_items;
    bool m_enabled = true;
};
