#pragma once

// Mouse presses and right-button releases anywhere inside the panel. Internal to the panel; not
// installed.

#include <QObject>
#include <QPointer>

#include <functional>

class QMouseEvent;
class QWidget;

/// Watches the mouse buttons over the panel and all of its descendants, viewports and editors
/// included, which no handler of the panel's own sees: a press decides which group is drawn
/// active, a right-button release may open the tool-tip menu.
///
/// A mouse event that a widget ignores travels on to its parents, and each of them passes the
/// watch again; only the first delivery counts: a press at the widget under the pointer, a
/// release at the widget that took the right-button press.
class PanelInput : public QObject
{
public:
    using PressHandler = std::function<void(QWidget& widget)>;
    using ReleaseHandler = std::function<void(QWidget& widget, QMouseEvent& event)>;

    PanelInput(QWidget& panel, PressHandler pressed, ReleaseHandler rightReleased);
    ~PanelInput() override;
    PanelInput(const PanelInput&) = delete;
    PanelInput& operator=(const PanelInput&) = delete;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    bool inPanel(const QWidget& widget) const;

    QWidget& m_panel;
    PressHandler m_pressed;
    ReleaseHandler m_rightReleased;
    QPointer<QWidget> m_rightPressTarget;
};
