#include "framework/ZuUiCommandEvent.h"

#include <QCoreApplication>

CZuUiCommandEvent::CZuUiCommandEvent(unsigned commandId)
    : QEvent(EventType()), m_commandId(commandId)
{}

CZuUiCommandEvent::~CZuUiCommandEvent() = default;

QEvent::Type CZuUiCommandEvent::EventType()
{
    static const QEvent::Type type = QEvent::Type(QEvent::registerEventType());
    return type;
}

void CZuUiCommandEvent::Post(QObject* owner, unsigned commandId)
{
    if (owner && commandId != 0)
        QCoreApplication::postEvent(owner, new CZuUiCommandEvent(commandId));
}
