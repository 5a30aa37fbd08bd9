#include "panel/detail/PanelLayout.h"

#include "framework/ControlId.h"
#include "framework/ZuUiHiDpi.h"
#include "items/XrefPanelCtrlItemTypes.h"
#include "resources/TroveResources.h"
#include "toolbar/XrefToolBar.h"
#include "views/TroveListCtrl.h"
#include "views/XrefCoupledGroupCtrl.h"
#include "views/XrefGroupCtrl.h"
#include "views/XrefPreview.h"
#include "views/XrefPropListCtrl.h"
#include "views/XrefTreeCtrl.h"

#include <QHeaderView>

#include <algorithm>
#include <cmath>

namespace {

int scaled(double dip, double scale)
{
    return CZuUiHiDpi::Round(dip * scale);
}

void setGeometryOf(QWidget* widget, const QRect& rect)
{
    widget->setGeometry(rect.x(), rect.y(), std::max(0, rect.width()), std::max(0, rect.height()));
}

} // namespace

int PanelLayout::MinimumToolBarHeight(double xs)
{
    return scaled(14, xs) + scaled(16, xs);
}

PanelGeometry PanelLayout::Arrange(int cx, int cy, int toolBarButtonHeight, double xs, double ys)
{
    PanelGeometry geometry;
    const int side = scaled(8, xs);
    const int edge = scaled(10, ys);
    const int unit = CZuUiHiDpi::Round(ys);

    int band = MinimumToolBarHeight(xs);
    if (toolBarButtonHeight >= 0) {
        band = std::max(toolBarButtonHeight, band);
        geometry.toolBar = QRect(side, edge, cx - 2 * side, band);
    }

    // The strip reaches down to the bottom of the client: its height includes the margin below.
    const int stripX = side + 2 * unit;
    const int stripY = cy - 22 * unit - edge;
    geometry.strip = QRect(stripX, stripY, cx - 2 * unit - stripX - edge, cy - stripY);

    const int top = scaled(6, ys) + edge + band;
    const int bottom = stripY - side;
    geometry.groups = QRect(side, top, cx - 2 * side, bottom - top);
    return geometry;
}

void PanelLayout::CreateChildren(QWidget& panel, bool troveMode, const Hooks& hooks)
{
    if (m_splitter)
        return;
    m_splitter = new CXrefCoupledGroupCtrl(&panel);

    m_upper = new CXrefGroupCtrl(m_splitter);
    ControlId::Set(m_upper, kUpperGroupId);
    m_list = new CTroveListCtrl(troveMode, m_listOption, m_listFlag, m_upper);
    ControlId::Set(m_list, kListViewId);
    if (hooks.listCreated)
        hooks.listCreated(*m_list);
    m_upper->AddPage(m_list, TroveUI::ResString(troveMode ? 1042 : 1039),
                     QStringLiteral("GRPCTRL_LISTVIEW"));
    m_tree = new CXrefTreeCtrl(troveMode, m_upper);
    ControlId::Set(m_tree, kTreeViewId);
    if (hooks.treeCreated)
        hooks.treeCreated(*m_tree);
    m_upper->AddPage(m_tree, TroveUI::ResString(1038), QStringLiteral("GRPCTRL_TREEVIEW"));

    m_lower = new CXrefGroupCtrl(m_splitter);
    ControlId::Set(m_lower, kLowerGroupId);
    m_details = new CXrefPropListCtrl(m_lower);
    ControlId::Set(m_details, kDetailsId);
    if (hooks.detailsCreated)
        hooks.detailsCreated(*m_details);
    if (hooks.viewsCreated)
        hooks.viewsCreated();
    m_lower->AddPage(m_details, TroveUI::ResString(1043), QStringLiteral("GRPCTRL_DETAILS"));
    m_preview = new CXrefPreview(m_lower);
    ControlId::Set(m_preview, kPreviewId);
    m_lower->AddPage(m_preview, TroveUI::ResString(1057), QStringLiteral("GRPCTRL_THUMBBTN"));

    // The views draw item icons from the type registry's lists, one per theme.
    m_list->SetItemImageLists(&CXrefPanelCtrlItemTypes::ImageList(false),
                              &CXrefPanelCtrlItemTypes::ImageList(true));
    m_tree->SetItemImageLists(&CXrefPanelCtrlItemTypes::ImageList(false),
                              &CXrefPanelCtrlItemTypes::ImageList(true));

    double ratio = kDefaultRatio;
    bool shown = m_showLowerPane;
    if (hooks.storedLowerGroup)
        hooks.storedLowerGroup(ratio, shown);
    m_showLowerPane = shown;
    m_splitter->SetLowerPaneShown(shown);
    m_splitter->SetUpperGroup(m_upper);
    m_splitter->SetLowerGroup(m_lower);
    m_splitter->SetSplitRatio(ratio);
    m_splitter->SetReady(true);

    // Named for assistive technology after their pages; the list and the tree share a title.
    m_list->setAccessibleName(
        QObject::tr("%1 list").arg(TroveUI::ResString(troveMode ? 1042 : 1039)));
    m_tree->setAccessibleName(QObject::tr("%1 tree").arg(TroveUI::ResString(1038)));
    m_details->setAccessibleName(TroveUI::ResString(1043));
    m_preview->setAccessibleName(TroveUI::ResString(1057));
    m_upper->setAccessibleName(QObject::tr("References"));
    m_lower->setAccessibleName(QObject::tr("Details and preview"));
}

void PanelLayout::Resize(int cx, int cy, CXrefToolBar* toolBar, QWidget* strip)
{
    const bool hasToolBar = toolBar && toolBar->IsCreated();
    const PanelGeometry geometry =
        Arrange(cx, cy, hasToolBar ? toolBar->GetButtonSize().height() : -1,
                CZuUiHiDpi::GetMonitorDpiXScale(), CZuUiHiDpi::GetMonitorDpiYScale());
    if (hasToolBar)
        setGeometryOf(toolBar, geometry.toolBar);
    if (strip)
        setGeometryOf(strip, geometry.strip);
    QRect groups = geometry.groups;
    if (m_filterBar && !m_filterBar->isHidden()) {
        const int height = std::min(m_filterBar->sizeHint().height(), groups.height());
        m_filterBar->setGeometry(groups.left(), groups.top(), groups.width(), height);
        groups.setTop(groups.top() + height);
    }
    if (m_splitter && m_lower)
        setGeometryOf(m_splitter, groups);
    SetPreDetailsRect();
}

void PanelLayout::SetPreDetailsRect()
{
    if (!m_splitter)
        return;
    m_splitter->SetLowerPaneShown(m_showLowerPane);
    m_splitter->RecalcLayout();
}

bool PanelLayout::PaneVisibilityChanging(const QWidget* pane, unsigned flags)
{
    // Only a page that comes to front or into view counts; one that goes says nothing.
    if (!(flags & 5u) || !pane)
        return false;
    if (pane == m_list) {
        m_referenceView = Trove::FileReferenceViewType::ListView;
    } else if (pane == m_tree) {
        m_referenceView = Trove::FileReferenceViewType::TreeView;
    } else if (pane == m_details) {
        m_detailsView = Trove::DetailsViewType::Details;
    } else if (pane == m_preview) {
        m_detailsView = Trove::DetailsViewType::Preview;
        return true;
    }
    return false;
}

bool PanelLayout::ShowReferencePage(Trove::FileReferenceViewType type)
{
    return m_upper && m_upper->SetSelIndex(int(type));
}

bool PanelLayout::ShowDetailsPage(Trove::DetailsViewType type)
{
    return m_lower && m_lower->SetSelIndex(int(type));
}

void PanelLayout::SettleViewTypes()
{
    if (m_upper)
        m_referenceView = Trove::FileReferenceViewType(std::max(0, m_upper->GetSelIndex()));
    if (m_lower)
        m_detailsView = Trove::DetailsViewType(std::max(0, m_lower->GetSelIndex()));
}

void PanelLayout::ActivateGroupOf(const QWidget* widget)
{
    if (!m_upper || !m_lower)
        return;
    const auto holds = [widget](const QWidget* group) {
        return widget && (widget == group || group->isAncestorOf(widget));
    };
    const bool upper = holds(m_upper);
    const bool lower = !upper && holds(m_lower);
    m_upper->SetActive(upper);
    m_lower->SetActive(lower);
}

void PanelLayout::EnableChildren(bool enable, QWidget* toolBar)
{
    for (QWidget* child : {static_cast<QWidget*>(m_splitter), static_cast<QWidget*>(m_upper),
                           static_cast<QWidget*>(m_lower), static_cast<QWidget*>(m_tree),
                           static_cast<QWidget*>(m_list), toolBar, static_cast<QWidget*>(m_details),
                           static_cast<QWidget*>(m_preview)}) {
        if (child)
            child->setEnabled(enable);
    }
}

std::vector<int> PanelLayout::ColumnDipWidths() const
{
    const CXrefPropListCtrl* view = m_details;
    if (!view)
        return {};
    const double xs = CZuUiHiDpi::GetMonitorDpiXScale();
    return {CZuUiHiDpi::Round(view->columnWidth(0) / xs),
            CZuUiHiDpi::Round(view->columnWidth(1) / xs)};
}

void PanelLayout::SetColumnDipWidths(const std::vector<int>& widths)
{
    CXrefPropListCtrl* view = m_details;
    if (!view)
        return;
    const double xs = CZuUiHiDpi::GetMonitorDpiXScale();
    for (size_t column = 0; column < std::min<size_t>(widths.size(), 2); ++column) {
        if (widths[column] < 0)
            continue;
        // A column width is a 16-bit quantity: only the low bits of a larger value count.
        const long pixels = std::lround(widths[column] * xs) & 0xFFFF;
        view->setColumnWidth(int(column), int(pixels));
    }
}

double PanelLayout::TopToWholeRatio() const
{
    return m_splitter ? m_splitter->GetSplitRatio() : kDefaultRatio;
}
