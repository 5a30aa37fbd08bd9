#include "panel/detail/PanelInput.h"

#include <QCoreApplication>
#include <QMouseEvent>
#include <QWidget>

namespace {

// The widget that a press at @p event's position reaches first: the deepest one under it.
const QWidget* firstReceiver(const QWidget& widget, const QMouseEvent& event)
{
    const QWidget* window = widget.window();
    const QWidget* under = window->childAt(window->mapFromGlobal(event.globalPosition().toPoint()));
    return under ? under : window;
}

} // namespace

PanelInput::PanelInput(QWidget& panel, PressHandler pressed, ReleaseHandler rightReleased)
    : m_panel(panel), m_pressed(std::move(pressed)), m_rightReleased(std::move(rightReleased))
{
    // The application sees every widget's events before the widget does; a filter on the panel
    // alone would miss those of its children.
    QCoreApplication::instance()->installEventFilter(this);
}

PanelInput::~PanelInput()
{
    if (QCoreApplication::instance())
        QCoreApplication::instance()->removeEventFilter(this);
}

bool PanelInput::inPanel(const QWidget& widget) const
{
    return &widget == &m_panel || m_panel.isAncestorOf(&widget);
}

bool PanelInput::eventFilter(QObject* watched, QEvent* event)
{
    const QEvent::Type type = event->type();
    if ((type != QEvent::MouseButtonPress && type != QEvent::MouseButtonRelease) ||
        !watched->isWidgetType())
        return false;
    auto* widget = static_cast<QWidget*>(watched);
    if (!inPanel(*widget))
        return false;
    auto* mouse = static_cast<QMouseEvent*>(event);
    if (type == QEvent::MouseButtonPress) {
        if (firstReceiver(*widget, *mouse) != widget)
            return false;
        if (mouse->button() == Qt::RightButton)
            m_rightPressTarget = widget;
        if (m_pressed)
            m_pressed(*widget);
    } else if (mouse->button() == Qt::RightButton && m_rightPressTarget == widget) {
        m_rightPressTarget = nullptr;
        if (m_rightReleased)
            m_rightReleased(*widget, *mouse);
    }
    return false;
}
