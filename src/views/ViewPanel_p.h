#pragma once

// What a view needs of the panel it sits in. The panel sits above the views and includes them,
// so the views reach it through these few calls instead of its header; they are defined with
// the panel. Not installed.

#include <vector>

class CXrefPanelCtrl;
class QWidget;

namespace ViewPanel {

/// The nearest ancestor of @p view that is a panel; null when the view is in none.
CXrefPanelCtrl* FindPanel(const QWidget* view);
/// The host's ninth callback on @p panel, which the details list makes once when it is made.
void HostCallback9(CXrefPanelCtrl& panel, std::vector<int>& widths);

} // namespace ViewPanel
