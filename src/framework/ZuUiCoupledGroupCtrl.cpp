#include "framework/ZuUiCoupledGroupCtrl.h"

#include "framework/ZuUiGroupCtrl.h"
#include "framework/ZuUiHiDpi.h"
#include "framework/ZuUiTheme.h"

#include <QMouseEvent>
#include <QPainter>

#include <cmath>

CZuUiCoupledGroupCtrl::CZuUiCoupledGroupCtrl(QWidget* parent) : QWidget(parent)
{
    setMouseTracking(true);
    connect(&CZuUiTheme::Instance(), &CZuUiTheme::themeChanged, this,
            qOverload<>(&QWidget::update));
}

CZuUiCoupledGroupCtrl::~CZuUiCoupledGroupCtrl()
{
    // The panes die with the QWidget part; their signals must not reach this part then.
    for (QWidget* pane : {m_upper.data(), m_lower.data()}) {
        if (pane) {
            disconnect(pane, nullptr, this, nullptr);
            pane->removeEventFilter(this);
        }
    }
}

void CZuUiCoupledGroupCtrl::setPane(QPointer<QWidget>& slot, QWidget* pane)
{
    if (slot == pane)
        return;
    if (slot) {
        disconnect(slot, nullptr, this, nullptr);
        slot->removeEventFilter(this);
    }
    slot = pane;
    if (pane) {
        if (pane->parentWidget() != this)
            pane->setParent(this);
        if (auto* group = qobject_cast<CZuUiGroupCtrl*>(pane))
            connect(group, &CZuUiGroupCtrl::collapsedChanged, this,
                    &CZuUiCoupledGroupCtrl::RecalcLayout);
        else
            pane->installEventFilter(this); // a plain window reports minimising as an event
    }
    RecalcLayout();
}

void CZuUiCoupledGroupCtrl::SetUpperGroup(CZuUiGroupCtrl* group)
{
    setPane(m_upper, group);
}

void CZuUiCoupledGroupCtrl::SetLowerGroup(CZuUiGroupCtrl* group)
{
    setPane(m_lower, group);
}

void CZuUiCoupledGroupCtrl::SetUpperWindow(QWidget* window)
{
    setPane(m_upper, window);
}

void CZuUiCoupledGroupCtrl::SetLowerWindow(QWidget* window)
{
    setPane(m_lower, window);
}

CZuUiGroupCtrl* CZuUiCoupledGroupCtrl::GetUpperGroup() const
{
    return qobject_cast<CZuUiGroupCtrl*>(m_upper.data());
}

CZuUiGroupCtrl* CZuUiCoupledGroupCtrl::GetLowerGroup() const
{
    return qobject_cast<CZuUiGroupCtrl*>(m_lower.data());
}

void CZuUiCoupledGroupCtrl::SetSplitRatio(double ratio)
{
    if (std::isnan(ratio))
        return;
    m_ratio = std::clamp(ratio, 0.0, 1.0);
    RecalcLayout();
}

void CZuUiCoupledGroupCtrl::SetReady(bool ready)
{
    m_ready = ready;
    RecalcLayout();
}

int CZuUiCoupledGroupCtrl::GetSplitterHeight() const
{
    return CZuUiHiDpi::ScaleY(kSplitterHeight);
}

int CZuUiCoupledGroupCtrl::PaneHeaderHeight(const QWidget* pane) const
{
    if (const auto* group = qobject_cast<const CZuUiGroupCtrl*>(pane))
        return group->GetHeaderHeight();
    return CZuUiHiDpi::ScaleY(kDefaultHeaderHeight);
}

bool CZuUiCoupledGroupCtrl::IsPaneCollapsed(const QWidget* pane)
{
    if (!pane)
        return false;
    if (const auto* group = qobject_cast<const CZuUiGroupCtrl*>(pane))
        return group->IsCollapsed();
    return pane->isMinimized();
}

void CZuUiCoupledGroupCtrl::RecalcLayout()
{
    LayoutPanes(width(), height());
}

void CZuUiCoupledGroupCtrl::SetSplitterCursor(const QCursor& cursor)
{
    m_splitterCursor = cursor;
    if (m_hovered)
        setCursor(m_splitterCursor);
}

bool CZuUiCoupledGroupCtrl::CheckChildControls() const
{
    return m_upper && m_lower && m_upper->parentWidget() == this && m_lower->parentWidget() == this;
}

void CZuUiCoupledGroupCtrl::SetSplitterRect(const QRect& rect)
{
    m_splitterRect = rect;
}

bool CZuUiCoupledGroupCtrl::canDrag() const
{
    return CheckChildControls() && !IsPaneCollapsed(m_upper) && !IsPaneCollapsed(m_lower) &&
           !m_splitterRect.isEmpty();
}

void CZuUiCoupledGroupCtrl::paintEvent(QPaintEvent*)
{
    const CZuUiTheme& theme = CZuUiTheme::Instance();
    QPainter painter(this);
    painter.fillRect(rect(), theme.GetColor(CZuUiTheme::Background));
    if (m_splitterRect.isEmpty())
        return;
    if (m_hovered || m_dragOffset >= 0)
        painter.fillRect(m_splitterRect, theme.GetColor(CZuUiTheme::SplitterBar));
    if (!canDrag())
        return;
    // A short grip in the middle tells that the bar can be moved.
    const int line = std::max(1, CZuUiHiDpi::Round(CZuUiHiDpi::GetMonitorDpiYScale()));
    const int gripWidth = std::min(CZuUiHiDpi::ScaleX(32), m_splitterRect.width());
    const QPoint centre = m_splitterRect.center();
    const QColor grip = theme.GetColor(CZuUiTheme::Border);
    painter.fillRect(QRect(centre.x() - gripWidth / 2, centre.y() - line, gripWidth, line), grip);
    painter.fillRect(QRect(centre.x() - gripWidth / 2, centre.y() + line, gripWidth, line), grip);
}

void CZuUiCoupledGroupCtrl::resizeEvent(QResizeEvent* event)
{
    QWidget::resizeEvent(event);
    LayoutPanes(width(), height());
}

void CZuUiCoupledGroupCtrl::mousePressEvent(QMouseEvent* event)
{
    const QPoint pos = event->position().toPoint();
    if (event->button() == Qt::LeftButton && canDrag() && m_splitterRect.contains(pos)) {
        m_dragOffset = pos.y() - m_splitterRect.top();
        update(m_splitterRect);
        event->accept();
        return;
    }
    QWidget::mousePressEvent(event);
}

void CZuUiCoupledGroupCtrl::mouseMoveEvent(QMouseEvent* event)
{
    const QPoint pos = event->position().toPoint();
    if (m_dragOffset >= 0) {
        const int available = height() - GetSplitterHeight();
        if (available > 0) {
            const QRect before = m_splitterRect;
            // Half a pixel in, so that the layout's truncation lands on the pixel meant.
            m_ratio = std::clamp((pos.y() - m_dragOffset + 0.5) / available, 0.0, 1.0);
            LayoutPanes(width(), height());
            // Keep the ratio of where the bar really went (the layout keeps both headers in
            // view), so that the next layout puts it on the same pixel.
            m_ratio = std::clamp((m_splitterRect.top() + 0.5) / available, 0.0, 1.0);
            if (m_splitterRect != before)
                emit splitRatioChanged(m_ratio);
        }
        event->accept();
        return;
    }
    const bool hovered = canDrag() && m_splitterRect.contains(pos);
    if (hovered != m_hovered) {
        m_hovered = hovered;
        if (hovered)
            setCursor(m_splitterCursor);
        else
            unsetCursor();
        update(m_splitterRect);
    }
    QWidget::mouseMoveEvent(event);
}

void CZuUiCoupledGroupCtrl::mouseReleaseEvent(QMouseEvent* event)
{
    if (m_dragOffset >= 0 && event->button() == Qt::LeftButton) {
        m_dragOffset = -1;
        update(m_splitterRect);
        event->accept();
        return;
    }
    QWidget::mouseReleaseEvent(event);
}

void CZuUiCoupledGroupCtrl::leaveEvent(QEvent* event)
{
    if (m_hovered && m_dragOffset < 0) {
        m_hovered = false;
        unsetCursor();
        update(m_splitterRect);
    }
    QWidget::leaveEvent(event);
}

bool CZuUiCoupledGroupCtrl::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::WindowStateChange && (watched == m_upper || watched == m_lower))
        RecalcLayout();
    return QWidget::eventFilter(watched, event);
}
