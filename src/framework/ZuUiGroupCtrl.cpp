#include "framework/ZuUiGroupCtrl.h"

#include "framework/ZuUiHiDpi.h"
#include "framework/ZuUiTheme.h"

#include <QHelpEvent>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QPainterPath>
#include <QToolTip>

namespace {

constexpr int kCollapseButton = -1;
constexpr int kNoButton = -2;

} // namespace

CZuUiGroupCtrl::CZuUiGroupCtrl(QWidget* parent) : QWidget(parent)
{
    setAttribute(Qt::WA_OpaquePaintEvent);
    setFocusPolicy(Qt::TabFocus);
    setMouseTracking(true);
    connect(&CZuUiTheme::Instance(), &CZuUiTheme::themeChanged, this, [this] {
        ReloadPageIcons();
        update();
    });
}

CZuUiGroupCtrl::~CZuUiGroupCtrl()
{
    // The pages die with the QWidget part, after this object's own part: they must not call
    // back into it then.
    for (const Page& page : m_pages) {
        if (page.widget)
            disconnect(page.widget, nullptr, this, nullptr);
    }
}

int CZuUiGroupCtrl::AddPage(QWidget* page, const QString& title, const QString& key)
{
    if (!page)
        return -1;
    page->setParent(this);
    m_pages.push_back(Page{page, page, title, key, PageIcon(key)});
    connect(page, &QObject::destroyed, this, &CZuUiGroupCtrl::onPageDestroyed);
    const int index = GetPageCount() - 1;
    if (m_selected < 0) {
        m_selected = index;
        layoutPages();
        emit paneVisibilityChanging(page, PaneShown);
    } else {
        page->hide();
    }
    update();
    return index;
}

QWidget* CZuUiGroupCtrl::GetPage(int index) const
{
    return index >= 0 && index < GetPageCount() ? m_pages[size_t(index)].widget.data() : nullptr;
}

QString CZuUiGroupCtrl::GetPageTitle(int index) const
{
    return index >= 0 && index < GetPageCount() ? m_pages[size_t(index)].title : QString();
}

void CZuUiGroupCtrl::SetPageTitle(int index, const QString& title)
{
    if (index < 0 || index >= GetPageCount() || m_pages[size_t(index)].title == title)
        return;
    m_pages[size_t(index)].title = title;
    update(HeaderRect());
}

QString CZuUiGroupCtrl::GetPageKey(int index) const
{
    return index >= 0 && index < GetPageCount() ? m_pages[size_t(index)].key : QString();
}

int CZuUiGroupCtrl::FindPage(const QString& key) const
{
    for (int i = 0; i < GetPageCount(); ++i) {
        if (m_pages[size_t(i)].key == key)
            return i;
    }
    return -1;
}

int CZuUiGroupCtrl::IndexOf(const QWidget* page) const
{
    for (int i = 0; i < GetPageCount(); ++i) {
        if (page && m_pages[size_t(i)].widget == page)
            return i;
    }
    return -1;
}

bool CZuUiGroupCtrl::SetSelIndex(int index)
{
    if (index < 0 || index >= GetPageCount())
        return false;
    if (index == m_selected)
        return true;
    if (QWidget* old = GetPage(m_selected))
        emit paneVisibilityChanging(old, PaneHidden);
    m_selected = index;
    layoutPages();
    update();
    if (QWidget* page = GetPage(index))
        emit paneVisibilityChanging(page, PaneShown);
    return true;
}

void CZuUiGroupCtrl::SetCollapsed(bool collapsed)
{
    if (collapsed == m_collapsed)
        return;
    if (collapsed) {
        if (QWidget* page = GetPage(m_selected))
            emit paneVisibilityChanging(page, PaneHidden);
    }
    m_collapsed = collapsed;
    layoutPages();
    updateGeometry();
    update();
    emit collapsedChanged(collapsed);
    if (!collapsed) {
        if (QWidget* page = GetPage(m_selected))
            emit paneVisibilityChanging(page, PaneRevealed);
    }
}

int CZuUiGroupCtrl::GetHeaderHeight() const
{
    return m_headerHeight >= 0 ? m_headerHeight : CZuUiHiDpi::ScaleY(kDefaultHeaderHeight);
}

void CZuUiGroupCtrl::SetHeaderHeight(int pixels)
{
    m_headerHeight = pixels < 0 ? -1 : pixels;
    layoutPages();
    updateGeometry();
    update();
}

void CZuUiGroupCtrl::SetActive(bool active)
{
    if (active == m_active)
        return;
    m_active = active;
    update(HeaderRect());
}

int CZuUiGroupCtrl::FrameWidth() const
{
    return std::max(1, CZuUiHiDpi::Round(CZuUiHiDpi::GetMonitorDpiYScale()));
}

QRect CZuUiGroupCtrl::HeaderRect() const
{
    return QRect(0, 0, width(), std::min(GetHeaderHeight(), height()));
}

QRect CZuUiGroupCtrl::ContentRect() const
{
    const int frame = FrameWidth();
    const int top = GetHeaderHeight();
    return QRect(frame, top, std::max(0, width() - 2 * frame), std::max(0, height() - top - frame));
}

QRect CZuUiGroupCtrl::CollapseButtonRect() const
{
    const int frame = FrameWidth();
    const int side = std::max(0, GetHeaderHeight() - 2 * frame);
    return QRect(frame, frame, side, side);
}

QRect CZuUiGroupCtrl::PageButtonRect(int index) const
{
    // A single page needs no button to bring it to front.
    if (GetPageCount() < 2 || index < 0 || index >= GetPageCount())
        return {};
    const int frame = FrameWidth();
    const int side = std::max(0, GetHeaderHeight() - 2 * frame);
    return QRect(width() - frame - (GetPageCount() - index) * side, frame, side, side);
}

QSize CZuUiGroupCtrl::sizeHint() const
{
    return QSize(CZuUiHiDpi::ScaleX(240), GetHeaderHeight() + CZuUiHiDpi::ScaleY(160));
}

QSize CZuUiGroupCtrl::minimumSizeHint() const
{
    return QSize(GetHeaderHeight() * 3, GetHeaderHeight());
}

QIcon CZuUiGroupCtrl::PageIcon(const QString&) const
{
    return {};
}

void CZuUiGroupCtrl::ReloadPageIcons()
{
    for (Page& page : m_pages)
        page.icon = PageIcon(page.key);
}

void CZuUiGroupCtrl::layoutPages()
{
    const QRect content = ContentRect();
    for (int i = 0; i < GetPageCount(); ++i) {
        QWidget* page = GetPage(i);
        if (!page)
            continue;
        if (i == m_selected && !m_collapsed) {
            page->setGeometry(content);
            page->show();
        } else {
            page->hide();
        }
    }
}

void CZuUiGroupCtrl::onPageDestroyed(QObject* page)
{
    for (int i = 0; i < GetPageCount(); ++i) {
        if (m_pages[size_t(i)].identity != page)
            continue;
        m_pages.erase(m_pages.begin() + i);
        const bool wasFront = i == m_selected;
        if (i < m_selected || (wasFront && m_selected >= GetPageCount()))
            --m_selected;
        layoutPages();
        update();
        if (wasFront) {
            if (QWidget* front = GetPage(m_selected))
                emit paneVisibilityChanging(front, PaneShown);
        }
        return;
    }
}

int CZuUiGroupCtrl::pageButtonAt(const QPoint& point) const
{
    if (CollapseButtonRect().contains(point))
        return kCollapseButton;
    for (int i = 0; i < GetPageCount(); ++i) {
        if (PageButtonRect(i).contains(point))
            return i;
    }
    return kNoButton;
}

void CZuUiGroupCtrl::paintEvent(QPaintEvent*)
{
    const CZuUiTheme& theme = CZuUiTheme::Instance();
    QPainter painter(this);
    painter.fillRect(rect(), theme.GetColor(CZuUiTheme::Background));
    DrawHeader(painter, HeaderRect());
    DrawFrame(painter);
}

void CZuUiGroupCtrl::DrawHeader(QPainter& painter, const QRect& area)
{
    const CZuUiTheme& theme = CZuUiTheme::Instance();
    painter.fillRect(area, theme.GetColor(m_active ? CZuUiTheme::ActiveGroupHeaderBackground
                                                   : CZuUiTheme::GroupHeaderBackground));
    const QColor text = isEnabled() ? theme.GetColor(CZuUiTheme::GroupHeaderText)
                                    : theme.GetColor(CZuUiTheme::DisabledText);
    const int line = FrameWidth();

    // Collapse button: a chevron pointing down while open, right while collapsed.
    const QRect button = CollapseButtonRect();
    if (m_hoveredButton == kCollapseButton)
        painter.fillRect(button, theme.GetColor(CZuUiTheme::ButtonHover));
    {
        painter.save();
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setPen(QPen(text, 1.5 * line, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
        const QPointF c = QRectF(button).center();
        const qreal r = button.height() / 6.0;
        QPainterPath chevron;
        if (m_collapsed) {
            chevron.moveTo(c.x() - r / 2, c.y() - r);
            chevron.lineTo(c.x() + r / 2, c.y());
            chevron.lineTo(c.x() - r / 2, c.y() + r);
        } else {
            chevron.moveTo(c.x() - r, c.y() - r / 2);
            chevron.lineTo(c.x(), c.y() + r / 2);
            chevron.lineTo(c.x() + r, c.y() - r / 2);
        }
        painter.drawPath(chevron);
        painter.restore();
    }

    // Page buttons, the one in front drawn pressed.
    int titleRight = area.right() - line;
    for (int i = 0; i < GetPageCount(); ++i) {
        const QRect r = PageButtonRect(i);
        if (r.isEmpty())
            continue;
        titleRight = std::min(titleRight, r.left() - 1);
        if (i == m_selected)
            painter.fillRect(r, theme.GetColor(CZuUiTheme::ButtonPressed));
        else if (i == m_hoveredButton)
            painter.fillRect(r, theme.GetColor(CZuUiTheme::ButtonHover));
        const Page& page = m_pages[size_t(i)];
        const int iconSide = std::min(CZuUiHiDpi::ScaleY(16), r.height() - 2 * line);
        const QRect iconRect(r.center().x() - iconSide / 2 + 1, r.center().y() - iconSide / 2 + 1,
                             iconSide, iconSide);
        if (!page.icon.isNull()) {
            page.icon.paint(&painter, iconRect, Qt::AlignCenter,
                            isEnabled() ? QIcon::Normal : QIcon::Disabled);
        } else {
            painter.setPen(text);
            painter.drawText(r, Qt::AlignCenter, page.title.left(1));
        }
    }

    // Title of the page in front.
    const QRect titleRect(button.right() + 1 + line, area.top(),
                          std::max(0, titleRight - button.right() - 2 * line), area.height());
    QFont font = this->font();
    font.setBold(true);
    painter.setFont(font);
    painter.setPen(text);
    const QString title = GetPageTitle(m_selected);
    painter.drawText(titleRect, Qt::AlignLeft | Qt::AlignVCenter | Qt::TextSingleLine,
                     QFontMetrics(font).elidedText(title, Qt::ElideRight, titleRect.width()));

    if (hasFocus()) {
        painter.save();
        painter.setPen(QPen(theme.GetColor(CZuUiTheme::FocusFrame), line, Qt::DotLine));
        painter.drawRect(titleRect.adjusted(0, line * 2, -1, -line * 2 - 1));
        painter.restore();
    }
}

void CZuUiGroupCtrl::DrawFrame(QPainter& painter)
{
    const CZuUiTheme& theme = CZuUiTheme::Instance();
    const int line = FrameWidth();
    const QColor border = theme.GetColor(CZuUiTheme::Border);
    const QRect all = rect();
    painter.fillRect(QRect(all.left(), all.top(), all.width(), line), border);
    painter.fillRect(QRect(all.left(), all.bottom() - line + 1, all.width(), line), border);
    painter.fillRect(QRect(all.left(), all.top(), line, all.height()), border);
    painter.fillRect(QRect(all.right() - line + 1, all.top(), line, all.height()), border);
    if (!m_collapsed && height() > GetHeaderHeight())
        painter.fillRect(QRect(all.left(), GetHeaderHeight() - line, all.width(), line), border);
}

void CZuUiGroupCtrl::resizeEvent(QResizeEvent* event)
{
    QWidget::resizeEvent(event);
    layoutPages();
}

void CZuUiGroupCtrl::mousePressEvent(QMouseEvent* event)
{
    if (event->button() != Qt::LeftButton || !HeaderRect().contains(event->pos())) {
        QWidget::mousePressEvent(event);
        return;
    }
    const int hit = pageButtonAt(event->pos());
    if (hit >= 0) {
        // Choosing a page of a collapsed group means the user wants to see it.
        SetSelIndex(hit);
        if (m_collapsed)
            SetCollapsed(false);
    } else {
        SetCollapsed(!m_collapsed);
    }
    event->accept();
}

void CZuUiGroupCtrl::mouseMoveEvent(QMouseEvent* event)
{
    const int hovered = pageButtonAt(event->pos());
    if (hovered != m_hoveredButton) {
        m_hoveredButton = hovered;
        update(HeaderRect());
    }
    QWidget::mouseMoveEvent(event);
}

void CZuUiGroupCtrl::leaveEvent(QEvent* event)
{
    if (m_hoveredButton != kNoButton) {
        m_hoveredButton = kNoButton;
        update(HeaderRect());
    }
    QWidget::leaveEvent(event);
}

void CZuUiGroupCtrl::keyPressEvent(QKeyEvent* event)
{
    switch (event->key()) {
    case Qt::Key_Space:
    case Qt::Key_Return:
    case Qt::Key_Enter:
        SetCollapsed(!m_collapsed);
        break;
    case Qt::Key_Left:
        if (m_selected > 0)
            SetSelIndex(m_selected - 1);
        break;
    case Qt::Key_Right:
        if (m_selected + 1 < GetPageCount())
            SetSelIndex(m_selected + 1);
        break;
    default:
        QWidget::keyPressEvent(event);
        return;
    }
    event->accept();
}

bool CZuUiGroupCtrl::event(QEvent* event)
{
    if (event->type() == QEvent::ToolTip) {
        auto* help = static_cast<QHelpEvent*>(event);
        const int hit = pageButtonAt(help->pos());
        if (hit >= 0)
            QToolTip::showText(help->globalPos(), GetPageTitle(hit), this, PageButtonRect(hit));
        else
            QToolTip::hideText();
        return true;
    }
    return QWidget::event(event);
}
