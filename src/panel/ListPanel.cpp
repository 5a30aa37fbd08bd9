// The panel's answers to its list view (see views/ListPanel_p.h).

#include "views/ListPanel_p.h"

#include "panel/XrefPanelCtrl.h"

namespace ListPanel {

CXrefPanelCtrl* Find(const QWidget* view)
{
    for (QWidget* ancestor = view ? view->parentWidget() : nullptr; ancestor;
         ancestor = ancestor->parentWidget()) {
        if (auto* panel = dynamic_cast<CXrefPanelCtrl*>(ancestor))
            return panel;
    }
    return nullptr;
}

std::wstring TroveStateToolTipText(CXrefPanelCtrl& panel, CXrefPanelCtrlItem& item)
{
    return panel.GetTroveStateToolTipText(item);
}

ToolTipMenuSettings ToolTipSettings(const CXrefPanelCtrl& panel)
{
    return panel.GetToolTipMenuSettings();
}

} // namespace ListPanel
