#pragma once

#include "kvuiframework_export.h"

#include <QElapsedTimer>
#include <QObject>
#include <QPoint>
#include <QPointer>
#include <QRect>
#include <QString>
#include <QTimer>
#include <QWidget> // complete: the inline accessors read a QPointer<QWidget>

#include <vector>

/// A tool-tip control for a window and its children: it knows a set of tools, each a widget (or a
/// rectangle of one) with an id and a text, watches the pointer over them and shows the text after
/// its own delays. Qt's tool tips wait a style-wide time before showing; owners here need their own
/// initial, re-show and auto-pop times per control, so the waiting is done here and only the
/// showing is left to QToolTip.
///
/// Tools are watched through an event filter on their widgets; owners that already see the
/// events may also feed them in with RelayEvent. A rectangle tool turns on mouse tracking for its
/// widget (moves inside the widget decide which rectangle is hit); a whole-widget tool does not
/// need it. Qt's own tool-tip request over a tool is consumed, so a widget's toolTip property does
/// not show a second tip there.
class KVUIFRAMEWORK_EXPORT CZuToolTipCtrl : public QObject
{
    Q_OBJECT
public:
    /// Which delay SetDelayTime sets (the classic TTDT_* values).
    enum DelayType : unsigned {
        Automatic = 0, ///< sets Initial to the time, AutoPop to ten times it, ReShow to a fifth
        ReShow = 1,    ///< wait before a tip shows when the pointer moves on from another tip
        AutoPop = 2,   ///< how long a tip stays up while the pointer rests
        Initial = 3,   ///< wait before the first tip shows
    };

    explicit CZuToolTipCtrl(QObject* parent = nullptr);
    ~CZuToolTipCtrl() override;

    /// Readies the control for tools of @p owner and its children. False when @p owner is null
    /// or the control already exists.
    bool Create(QWidget* owner);
    /// Hides the tip and forgets every tool; Create may be called again afterwards.
    void DestroyWindow();
    bool IsWindow() const { return m_owner != nullptr; }
    QWidget* Owner() const { return m_owner; }

    /// Adds a tool, or replaces the tool with the same widget and id. An empty @p rect means the
    /// whole widget; a rectangle is in the widget's coordinates. False before Create or without
    /// widget.
    bool AddTool(QWidget* widget, const QString& text, const QRect& rect = QRect(),
                 unsigned id = 0);
    void DelTool(QWidget* widget, unsigned id = 0);
    /// Replaces a tool's text; a showing tip of that tool shows the new text at once.
    void UpdateTipText(const QString& text, QWidget* widget, unsigned id = 0);
    void SetToolRect(QWidget* widget, unsigned id, const QRect& rect);
    bool HasTool(QWidget* widget, unsigned id = 0) const;
    /// A tool's text; empty when there is no such tool.
    QString GetText(QWidget* widget, unsigned id = 0) const;
    int GetToolCount() const { return int(m_tools.size()); }

    /// Sets one delay in milliseconds; a negative time restores that delay's default (taken from
    /// the double-click time, the way desktop tool tips do).
    void SetDelayTime(unsigned type, int milliseconds);
    int GetDelayTime(unsigned type) const;

    /// An inactive control shows nothing and hides its tip.
    void Activate(bool active);
    bool IsActive() const { return m_active; }

    /// Hides the tip now. The same tool shows again only after the pointer has left it.
    void Pop();
    /// Whether a tip of this control is on the screen.
    bool IsTipShowing() const;
    /// The text of the tip on the screen; empty when none is.
    QString ShownText() const;

    /// Lets the control see one event of @p widget (moves, enter and leave, presses).
    void RelayEvent(QWidget* widget, QEvent* event);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    struct Tool
    {
        QPointer<QWidget> widget;
        unsigned id = 0;
        QRect rect;
        QString text;
    };
    struct Hot
    {
        QWidget* widget = nullptr;
        unsigned id = 0;
        bool valid = false;
        bool operator==(const Hot& other) const
        {
            return valid == other.valid && (!valid || (widget == other.widget && id == other.id));
        }
    };

    Tool* find(const QWidget* widget, unsigned id);
    const Tool* find(const QWidget* widget, unsigned id) const;
    Hot hitTest(const QWidget* widget, QPoint pos) const;
    void watch(QWidget* widget);
    void unwatchIfUnused(QWidget* widget);
    void track(QWidget* widget, QPoint pos, QPoint globalPos);
    void leave();
    void suppress();
    void showTip();
    void hideTip();
    void forgetWidget(QObject* widget);

    QPointer<QWidget> m_owner;
    std::vector<Tool> m_tools;
    std::vector<QPointer<QWidget>> m_watched;
    int m_initial;
    int m_autoPop;
    int m_reShow;
    bool m_active = true;

    Hot m_hot;
    QPoint m_globalPos;
    bool m_suppressed = false;
    Hot m_shown;
    QString m_shownText;
    QElapsedTimer m_sinceHidden;
    QTimer m_timer;
};
