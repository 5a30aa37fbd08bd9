#include "views/XrefCoupledGroupCtrl.h"

#include <algorithm>

namespace {

void place(QWidget* pane, int x, int y, int width, int height)
{
    pane->setGeometry(x, y, std::max(0, width), std::max(0, height));
    pane->show();
}

} // namespace

CXrefCoupledGroupCtrl::CXrefCoupledGroupCtrl(QWidget* parent)
    : MyExKvTroveUiCoupledGroupCtrl(parent)
{}

void CXrefCoupledGroupCtrl::SetLowerPaneShown(bool shown)
{
    if (shown == m_lowerPaneShown)
        return;
    m_lowerPaneShown = shown;
    RecalcLayout();
}

void CXrefCoupledGroupCtrl::LayoutPanes(int cx, int cy)
{
    if (!CheckChildControls())
        return;
    QWidget* upper = GetUpperPane();
    QWidget* lower = GetLowerPane();
    const int upperHeader = PaneHeaderHeight(upper);
    const int lowerHeader = PaneHeaderHeight(lower);
    const int bar = GetSplitterHeight();

    if (IsPaneCollapsed(upper)) {
        place(upper, 0, 0, cx, upperHeader);
        place(lower, 0, upperHeader + bar, cx, cy - upperHeader - bar);
        SetSplitterRect(QRect(0, upperHeader, cx, bar));
    } else if (IsPaneCollapsed(lower)) {
        place(upper, 0, 0, cx, cy - lowerHeader - bar);
        place(lower, 0, cy - lowerHeader, cx, lowerHeader);
        SetSplitterRect(QRect(0, cy - lowerHeader - bar, cx, bar));
    } else {
        // Two open groups wait until their owner has filled them and says they are ready.
        if (GetUpperGroup() && GetLowerGroup() && !IsReady())
            return;
        int split = int((cy - bar) * GetSplitRatio());
        // The upper header always stays; the lower one only when the upper still fits.
        if (split < upperHeader)
            split = upperHeader;
        else if (split > cy - lowerHeader - bar)
            split = cy - lowerHeader - bar;
        place(upper, 0, 0, cx, split);
        place(lower, 0, split + bar, cx, cy - split - bar);
        SetSplitterRect(QRect(0, split, cx, bar));
    }
    if (!m_lowerPaneShown) {
        lower->move(0, cy / 2);
        upper->setGeometry(0, 0, std::max(0, cx), std::max(0, cy));
        upper->raise();
        // Nothing to drag while one pane covers the other.
        SetSplitterRect(QRect());
    }
    update();
}
