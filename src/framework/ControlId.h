#pragma once

#include "kvuiframework_export.h"

class QObject;
class QWidget;

/// Child controls keep the numeric control id their owner gave them, so that owners and tests
/// can find a child by id and notifications can name their sender.
class KVUIFRAMEWORK_EXPORT ControlId
{
public:
    static void Set(QObject* control, int id);
    /// The control's id, 0 when none was given.
    static int Get(const QObject* control);
    /// The first descendant of @p parent with @p id (breadth first), or null.
    static QWidget* FindChild(const QWidget* parent, int id);
};
