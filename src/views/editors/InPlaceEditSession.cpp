#include "views/editors/InPlaceEditSession_p.h"

#include "framework/ControlId.h"

#include <QKeyEvent>
#include <QWidget>

bool InPlaceEditSession::Place(QWidget* editor, const QRect& rect, QWidget* parent, int controlId,
                               const std::function<void()>& fill)
{
    if (!parent) {
        editor->deleteLater();
        return false;
    }
    editor->setParent(parent);
    ControlId::Set(editor, controlId);
    editor->setGeometry(rect);
    editor->setFont(parent->font());
    if (fill)
        fill();
    editor->show();
    editor->setFocus(Qt::OtherFocusReason);
    return true;
}

bool InPlaceEditSession::ClaimShortcut(QEvent* event) const
{
    if (event->type() != QEvent::ShortcutOverride ||
        !KeepsKey(*static_cast<QKeyEvent*>(event), m_textEditor))
        return false;
    event->accept();
    return true;
}

bool InPlaceEditSession::EndingKey(QWidget* editor, QKeyEvent* event)
{
    const bool escape = event->key() == Qt::Key_Escape;
    if (escape)
        m_cancelled = true;
    else if (!event->text().isEmpty())
        m_cancelled = false;
    if (!escape && event->key() != Qt::Key_Return && event->key() != Qt::Key_Enter)
        return false;
    event->accept();
    // Losing the focus is what ends an edit; the owner view takes it back.
    if (QWidget* owner = editor->parentWidget())
        owner->setFocus(Qt::OtherFocusReason);
    return true;
}

bool InPlaceEditSession::Begin()
{
    if (m_begun || m_ended)
        return false;
    m_begun = true;
    return true;
}

bool InPlaceEditSession::End()
{
    if (m_ended)
        return false;
    m_ended = true;
    return true;
}

bool InPlaceEditSession::KeepsKey(const QKeyEvent& event, bool textEditor)
{
    switch (event.key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
    case Qt::Key_Escape:
        return true;
    case Qt::Key_Delete:
        return textEditor;
    default:
        return textEditor && (event.modifiers() & Qt::ControlModifier) &&
               event.key() != Qt::Key_Control;
    }
}
