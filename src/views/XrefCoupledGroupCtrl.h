#pragma once

#include "kvxreftroveui_export.h"

#include "views/MyExKvTroveUiCoupledGroupCtrl.h"

/// The panel's splitter: the file references group above, the details or preview group below.
/// A collapsed pane keeps just its header and the other pane takes the rest; otherwise the split
/// ratio places the bar, kept far enough from either edge that both headers stay in view.
class KVXREFTROVEUI_EXPORT CXrefCoupledGroupCtrl : public MyExKvTroveUiCoupledGroupCtrl
{
    Q_OBJECT
public:
    explicit CXrefCoupledGroupCtrl(QWidget* parent = nullptr);

    /// Whether the lower pane shows (the default). While it does not, the upper pane takes the
    /// whole area and the lower one waits behind it, half-way down, with the size it last had,
    /// so that showing it again costs its page no new layout.
    bool IsLowerPaneShown() const { return m_lowerPaneShown; }
    void SetLowerPaneShown(bool shown);

protected:
    void LayoutPanes(int cx, int cy) override;

private:
    bool m_lowerPaneShown = true;
};
