// The panel's answers to its views (see views/ViewPanel_p.h).

#include "views/ViewPanel_p.h"

#include "panel/XrefPanelCtrl.h"

namespace ViewPanel {

CXrefPanelCtrl* FindPanel(const QWidget* view)
{
    for (QWidget* ancestor = view ? view->parentWidget() : nullptr; ancestor;
         ancestor = ancestor->parentWidget()) {
        if (auto* panel = qobject_cast<CXrefPanelCtrl*>(ancestor))
            return panel;
    }
    return nullptr;
}

void HostCallback9(CXrefPanelCtrl& panel, std::vector<int>& widths)
{
    panel.HostCallback9(widths);
}

} // namespace ViewPanel
