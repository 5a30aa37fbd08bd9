#include "framework/ControlId.h"

#include <QQueue>
#include <QVariant>
#include <QWidget>

namespace {
constexpr const char* kProperty = "kvControlId";
}

void ControlId::Set(QObject* control, int id)
{
    if (control)
        control->setProperty(kProperty, id);
}

int ControlId::Get(const QObject* control)
{
    return control ? control->property(kProperty).toInt() : 0;
}

QWidget* ControlId::FindChild(const QWidget* parent, int id)
{
    if (!parent)
        return nullptr;
    QQueue<const QWidget*> queue;
    queue.enqueue(parent);
    while (!queue.isEmpty()) {
        const QWidget* widget = queue.dequeue();
        for (QWidget* child : widget->findChildren<QWidget*>(Qt::FindDirectChildrenOnly)) {
            if (Get(child) == id)
                return child;
            queue.enqueue(child);
        }
    }
    return nullptr;
}
