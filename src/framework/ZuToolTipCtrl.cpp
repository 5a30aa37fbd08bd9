#include "framework/ZuToolTipCtrl.h"

#include "framework/ZuUiTheme.h"

#include <QApplication>
#include <QEnterEvent>
#include <QHelpEvent>
#include <QMouseEvent>
#include <QToolTip>
#include <QWidget>

#include <algorithm>

namespace {

int defaultDelay(unsigned type)
{
    const int base = QApplication::doubleClickInterval();
    switch (type) {
    case CZuToolTipCtrl::AutoPop:
        return base * 10;
    case CZuToolTipCtrl::ReShow:
        return base / 5;
    default:
        return base;
    }
}

} // namespace

CZuToolTipCtrl::CZuToolTipCtrl(QObject* parent)
    : QObject(parent), m_initial(defaultDelay(Initial)), m_autoPop(defaultDelay(AutoPop)),
      m_reShow(defaultDelay(ReShow))
{
    m_timer.setSingleShot(true);
    connect(&m_timer, &QTimer::timeout, this, &CZuToolTipCtrl::showTip);
}

CZuToolTipCtrl::~CZuToolTipCtrl()
{
    DestroyWindow();
}

bool CZuToolTipCtrl::Create(QWidget* owner)
{
    if (!owner || m_owner)
        return false;
    m_owner = owner;
    return true;
}

void CZuToolTipCtrl::DestroyWindow()
{
    hideTip();
    m_timer.stop();
    for (const QPointer<QWidget>& widget : m_watched) {
        if (widget) {
            widget->removeEventFilter(this);
            disconnect(widget, nullptr, this, nullptr);
        }
    }
    m_watched.clear();
    m_tools.clear();
    m_hot = Hot();
    m_owner = nullptr;
}

CZuToolTipCtrl::Tool* CZuToolTipCtrl::find(const QWidget* widget, unsigned id)
{
    auto it = std::find_if(m_tools.begin(), m_tools.end(), [&](const Tool& tool) {
        return tool.widget == widget && tool.id == id;
    });
    return it == m_tools.end() ? nullptr : &*it;
}

const CZuToolTipCtrl::Tool* CZuToolTipCtrl::find(const QWidget* widget, unsigned id) const
{
    return const_cast<CZuToolTipCtrl*>(this)->find(widget, id);
}

bool CZuToolTipCtrl::AddTool(QWidget* widget, const QString& text, const QRect& rect, unsigned id)
{
    if (!IsWindow() || !widget)
        return false;
    if (Tool* tool = find(widget, id)) {
        tool->rect = rect;
        tool->text = text;
    } else {
        m_tools.push_back({widget, id, rect, text});
    }
    if (!rect.isEmpty())
        widget->setMouseTracking(true);
    watch(widget);
    return true;
}

void CZuToolTipCtrl::DelTool(QWidget* widget, unsigned id)
{
    const Hot removed{widget, id, true};
    if (m_shown == removed)
        hideTip();
    if (m_hot == removed) {
        m_hot = Hot();
        m_timer.stop();
    }
    m_tools.erase(
        std::remove_if(m_tools.begin(), m_tools.end(),
                       [&](const Tool& tool) { return tool.widget == widget && tool.id == id; }),
        m_tools.end());
    unwatchIfUnused(widget);
}

void CZuToolTipCtrl::UpdateTipText(const QString& text, QWidget* widget, unsigned id)
{
    Tool* tool = find(widget, id);
    if (!tool || tool->text == text)
        return;
    tool->text = text;
    if (m_shown == Hot{widget, id, true}) {
        if (text.isEmpty())
            hideTip();
        else
            showTip();
    }
}

void CZuToolTipCtrl::SetToolRect(QWidget* widget, unsigned id, const QRect& rect)
{
    if (Tool* tool = find(widget, id)) {
        tool->rect = rect;
        if (!rect.isEmpty() && widget)
            widget->setMouseTracking(true);
    }
}

bool CZuToolTipCtrl::HasTool(QWidget* widget, unsigned id) const
{
    return find(widget, id) != nullptr;
}

QString CZuToolTipCtrl::GetText(QWidget* widget, unsigned id) const
{
    const Tool* tool = find(widget, id);
    return tool ? tool->text : QString();
}

void CZuToolTipCtrl::SetDelayTime(unsigned type, int milliseconds)
{
    auto value = [&](unsigned which) {
        return milliseconds < 0 ? defaultDelay(which) : milliseconds;
    };
    switch (type) {
    case Automatic:
        m_initial = value(Initial);
        m_autoPop = milliseconds < 0 ? defaultDelay(AutoPop) : milliseconds * 10;
        m_reShow = milliseconds < 0 ? defaultDelay(ReShow) : milliseconds / 5;
        break;
    case ReShow:
        m_reShow = value(ReShow);
        break;
    case AutoPop:
        m_autoPop = value(AutoPop);
        break;
    case Initial:
        m_initial = value(Initial);
        break;
    default:
        break;
    }
}

int CZuToolTipCtrl::GetDelayTime(unsigned type) const
{
    switch (type) {
    case ReShow:
        return m_reShow;
    case AutoPop:
        return m_autoPop;
    case Initial:
    case Automatic:
        return m_initial;
    default:
        return -1;
    }
}

void CZuToolTipCtrl::Activate(bool active)
{
    m_active = active;
    if (!active) {
        m_timer.stop();
        hideTip();
    }
}

void CZuToolTipCtrl::Pop()
{
    m_timer.stop();
    hideTip();
    m_suppressed = true;
}

bool CZuToolTipCtrl::IsTipShowing() const
{
    return m_shown.valid && QToolTip::isVisible() && QToolTip::text() == m_shownText;
}

QString CZuToolTipCtrl::ShownText() const
{
    return IsTipShowing() ? m_shownText : QString();
}

void CZuToolTipCtrl::RelayEvent(QWidget* widget, QEvent* event)
{
    if (!widget || !event || !IsWindow())
        return;
    switch (event->type()) {
    case QEvent::MouseMove: {
        const auto* move = static_cast<QMouseEvent*>(event);
        track(widget, move->position().toPoint(), move->globalPosition().toPoint());
        break;
    }
    case QEvent::Enter: {
        const auto* enter = static_cast<QEnterEvent*>(event);
        track(widget, enter->position().toPoint(), enter->globalPosition().toPoint());
        break;
    }
    case QEvent::Leave:
    case QEvent::Hide:
        if (m_hot.valid && m_hot.widget == widget)
            leave();
        break;
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonDblClick:
    case QEvent::Wheel:
    case QEvent::KeyPress:
    case QEvent::ContextMenu:
        suppress();
        break;
    default:
        break;
    }
}

bool CZuToolTipCtrl::eventFilter(QObject* watched, QEvent* event)
{
    auto* widget = qobject_cast<QWidget*>(watched);
    if (!widget)
        return false;
    if (event->type() == QEvent::ToolTip) {
        const auto* help = static_cast<QHelpEvent*>(event);
        // The tip over a tool is ours to show, with our timing.
        return hitTest(widget, help->pos()).valid;
    }
    RelayEvent(widget, event);
    return false;
}

CZuToolTipCtrl::Hot CZuToolTipCtrl::hitTest(const QWidget* widget, QPoint pos) const
{
    if (!widget || !widget->rect().contains(pos))
        return {};
    // A rectangle tool is more specific than the whole-widget tool of the same widget.
    const Tool* whole = nullptr;
    for (const Tool& tool : m_tools) {
        if (tool.widget != widget)
            continue;
        if (tool.rect.isEmpty()) {
            if (!whole)
                whole = &tool;
        } else if (tool.rect.contains(pos)) {
            return {const_cast<QWidget*>(widget), tool.id, true};
        }
    }
    if (whole)
        return {const_cast<QWidget*>(widget), whole->id, true};
    return {};
}

void CZuToolTipCtrl::watch(QWidget* widget)
{
    const bool known = std::any_of(m_watched.begin(), m_watched.end(),
                                   [&](const QPointer<QWidget>& w) { return w == widget; });
    if (known)
        return;
    m_watched.emplace_back(widget);
    widget->installEventFilter(this);
    connect(widget, &QObject::destroyed, this, &CZuToolTipCtrl::forgetWidget);
}

void CZuToolTipCtrl::unwatchIfUnused(QWidget* widget)
{
    const bool used = std::any_of(m_tools.begin(), m_tools.end(),
                                  [&](const Tool& tool) { return tool.widget == widget; });
    if (used || !widget)
        return;
    widget->removeEventFilter(this);
    disconnect(widget, nullptr, this, nullptr);
    m_watched.erase(std::remove(m_watched.begin(), m_watched.end(), QPointer<QWidget>(widget)),
                    m_watched.end());
}

void CZuToolTipCtrl::forgetWidget(QObject* widget)
{
    if (m_hot.widget == widget) {
        m_hot = Hot();
        m_timer.stop();
    }
    if (m_shown.widget == widget)
        hideTip();
    m_tools.erase(std::remove_if(m_tools.begin(), m_tools.end(),
                                 [&](const Tool& tool) {
                                     return tool.widget.isNull() || tool.widget == widget;
                                 }),
                  m_tools.end());
    m_watched.erase(
        std::remove_if(m_watched.begin(), m_watched.end(),
                       [&](const QPointer<QWidget>& w) { return w.isNull() || w == widget; }),
        m_watched.end());
}

void CZuToolTipCtrl::track(QWidget* widget, QPoint pos, QPoint globalPos)
{
    m_globalPos = globalPos;
    const Hot hot = hitTest(widget, pos);
    if (hot == m_hot)
        return;
    // Moving on from a tip that was up (or only just went) shows the next one sooner.
    const bool recentTip =
        IsTipShowing() || (m_sinceHidden.isValid() && m_sinceHidden.elapsed() < m_initial);
    hideTip();
    m_hot = hot;
    m_suppressed = false;
    m_timer.stop();
    if (!m_hot.valid || !m_active)
        return;
    m_timer.start(recentTip ? m_reShow : m_initial);
}

void CZuToolTipCtrl::leave()
{
    hideTip();
    m_timer.stop();
    m_hot = Hot();
    m_suppressed = false;
}

void CZuToolTipCtrl::suppress()
{
    m_timer.stop();
    hideTip();
    m_suppressed = true;
}

void CZuToolTipCtrl::showTip()
{
    if (!m_active || m_suppressed || !m_hot.valid)
        return;
    const Tool* tool = find(m_hot.widget, m_hot.id);
    if (!tool || tool->text.isEmpty() || !tool->widget->isVisible())
        return;
    const QRect area = tool->rect.isEmpty() ? tool->widget->rect() : tool->rect;
    m_shown = m_hot;
    m_shownText = tool->text;
    // Tips wear the host theme like every other control of the framework.
    const CZuUiTheme& theme = CZuUiTheme::Instance();
    QPalette palette = QToolTip::palette();
    palette.setColor(QPalette::ToolTipBase, theme.GetColor(CZuUiTheme::ToolTipBackground));
    palette.setColor(QPalette::ToolTipText, theme.GetColor(CZuUiTheme::ToolTipText));
    palette.setColor(QPalette::Window, theme.GetColor(CZuUiTheme::ToolTipBackground));
    palette.setColor(QPalette::WindowText, theme.GetColor(CZuUiTheme::ToolTipText));
    QToolTip::setPalette(palette);
    QToolTip::showText(m_globalPos, tool->text, tool->widget, area, m_autoPop);
}

void CZuToolTipCtrl::hideTip()
{
    if (IsTipShowing()) {
        QToolTip::hideText();
        m_sinceHidden.start();
    }
    m_shown = Hot();
    m_shownText.clear();
}
