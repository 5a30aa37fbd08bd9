// The panel's answers to its items (see items/ItemPanel_p.h).

#include "items/ItemPanel_p.h"

#include "panel/XrefPanelCtrl.h"

namespace ItemPanel {

CTroveListCtrl* ListCtrl(const CXrefPanelCtrl& panel)
{
    return panel.GetListCtrl();
}

CXrefTreeCtrl* TreeCtrl(const CXrefPanelCtrl& panel)
{
    return panel.GetTreeCtrl();
}

CXrefPreview* PreviewCtrl(const CXrefPanelCtrl& panel)
{
    return panel.GetPreviewCtrl();
}

ToolTipMenuSettings ToolTipSettings(const CXrefPanelCtrl& panel)
{
    return panel.GetToolTipMenuSettings();
}

bool ShowsModifiedMarker(const CXrefPanelCtrl& panel)
{
    return panel.IsHostModStatusEnabled() && panel.IsHostModified();
}

void PropertyChanged(CXrefPanelCtrl& panel, const CXrefPanelCtrlItem& item,
                     Trove::XrefProperties property)
{
    panel.SetDetailsProperty(item, property);
}

} // namespace ItemPanel
