// The panel's answers to its items (see items/ItemPanel_p.h).

#include "items/ItemPanel_p.h"

#include "panel/XrefPanelCtrl.h"

namespace ItemPanel {

QObject* Object(CXrefPanelCtrl& panel)
{
    return &panel;
}

CTroveListCtrl* ListCtrl(const CXrefPanelCtrl* panel)
{
    return panel ? panel->GetListCtrl() : nullptr;
}

CXrefTreeCtrl* TreeCtrl(const CXrefPanelCtrl* panel)
{
    return panel ? panel->GetTreeCtrl() : nullptr;
}

CXrefPreview* PreviewCtrl(const CXrefPanelCtrl* panel)
{
    return panel ? panel->GetPreviewCtrl() : nullptr;
}

ToolTipMenuSettings ToolTipSettings(const CXrefPanelCtrl* panel)
{
    return panel ? panel->GetToolTipMenuSettings() : ToolTipMenuSettings();
}

bool ShowsModifiedMarker(const CXrefPanelCtrl* panel)
{
    return panel && panel->IsHostModStatusEnabled() && panel->IsHostModified();
}

void PropertyChanged(CXrefPanelCtrl* panel, const CXrefPanelCtrlItem& item,
                     Trove::XrefProperties property)
{
    if (panel)
        panel->SetDetailsProperty(item, property);
}

void ItemGoing(CXrefPanelCtrl* panel, CXrefPanelCtrlItem& item)
{
    if (panel)
        panel->forgetItem(item);
}

} // namespace ItemPanel
