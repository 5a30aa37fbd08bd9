#pragma once

#include "kvuiframework_export.h"

#include <QEvent>

class QObject;

/// A menu command delivered to the window that owned the menu, after the menu has closed. A
/// control that shows a menu on its owner's behalf (the panel shows the views' context menus)
/// hands the chosen command back this way, and the owner runs it as if it had chosen it itself.
class KVUIFRAMEWORK_EXPORT CZuUiCommandEvent : public QEvent
{
public:
    explicit CZuUiCommandEvent(unsigned commandId);
    ~CZuUiCommandEvent() override;

    /// The event type, registered once per process.
    static QEvent::Type EventType();

    unsigned CommandId() const { return m_commandId; }

    /// Queues @p commandId for @p owner: it arrives once control returns to the event loop, so
    /// the command never runs inside the code that showed the menu. Nothing is queued for a null
    /// owner or command 0 (a dismissed menu).
    static void Post(QObject* owner, unsigned commandId);

private:
    unsigned m_commandId;
};
