#include "ModalStandIns.h"

#include <QAction>
#include <QMenu>

MenuTracker::MenuTracker() : m_chooser([](QMenu&) { return 0u; })
{
    m_previous = CZuUiMenu::SetTrackHandler(
        [this](QMenu& menu, unsigned flags, QPoint point, QWidget* owner) {
            Shown shown;
            shown.flags = flags;
            shown.point = point;
            shown.owner = owner;
            for (int i = 0; i < CZuUiMenu::GetMenuItemCount(&menu); ++i) {
                const QAction* action = menu.actions().at(i);
                shown.entries << (action->isSeparator() ? QStringLiteral("-") : action->text());
                shown.ids << CZuUiMenu::GetMenuItemID(&menu, i);
            }
            m_shown.push_back(shown);
            return m_chooser(menu);
        });
}

MenuTracker::~MenuTracker()
{
    CZuUiMenu::SetTrackHandler(std::move(m_previous));
}

MessageBoxRecorder::MessageBoxRecorder(int answer) : m_answer(answer)
{
    m_previous = CZuUiMessageBox::SetHandler(
        [this](const QString& text, const QString& caption, unsigned type, unsigned helpId) {
            m_boxes.push_back({text, caption, type, helpId});
            return m_answer;
        });
}

MessageBoxRecorder::~MessageBoxRecorder()
{
    CZuUiMessageBox::SetHandler(std::move(m_previous));
}
