#pragma once

// Gathers a model's cell changes into few dataChanged announcements. Not installed.

#include <QMetaObject>
#include <QObject>

#include <algorithm>
#include <functional>

/// A fill writes every cell of thousands of rows; announcing each write would make the views
/// re-lay out thousands of times. The coalescer keeps one pending range of changed rows under
/// one parent (a "group": null for a flat list) and announces it when control returns to the
/// event loop, or earlier when a change arrives for another group or the model asks.
class ChangeCoalescer
{
public:
    /// Called with the pending group and row range; the model clamps the range to the rows its
    /// views know.
    using Announce = std::function<void(const void* group, int first, int last)>;

    /// Deferred announcements run in @p context's thread and are dropped if it goes first.
    ChangeCoalescer(QObject* context, Announce announce)
        : m_context(context), m_announce(std::move(announce))
    {}
    ChangeCoalescer(const ChangeCoalescer&) = delete;
    ChangeCoalescer& operator=(const ChangeCoalescer&) = delete;

    /// Row @p row of @p group changed.
    void Note(const void* group, int row)
    {
        if (m_pending && m_group == group) {
            m_first = std::min(m_first, row);
            m_last = std::max(m_last, row);
            return;
        }
        // One deferred call serves every range of this turn of the event loop; a range for
        // another group pushes out the pending one at once.
        if (m_pending)
            Flush();
        else
            QMetaObject::invokeMethod(
                m_context, [this] { Flush(); }, Qt::QueuedConnection);
        m_pending = true;
        m_group = group;
        m_first = m_last = row;
    }

    /// Announces the pending range now, if there is one.
    void Flush()
    {
        if (!m_pending)
            return;
        m_pending = false;
        m_announce(m_group, m_first, m_last);
    }

private:
    QObject* m_context;
    Announce m_announce;
    bool m_pending = false;
    const void* m_group = nullptr;
    int m_first = 0;
    int m_last = 0;
};
