#pragma once

#include "framework/ZuUiMenu.h"
#include "framework/ZuUiMessageBox.h"

#include <QPoint>
#include <QString>
#include <QStringList>

#include <functional>
#include <vector>

class QMenu;
class QWidget;

/// Stands in for popup menus while it lives: records every menu shown and answers with a chosen
/// command (0: the menu is dismissed). The menu's entries can be inspected in the chooser.
class MenuTracker
{
public:
    struct Shown
    {
        QStringList entries; ///< texts of the top-level entries, "-" for separators
        QList<unsigned> ids; ///< command ids of the top-level entries (0 separator, ~0u sub-menu)
        unsigned flags = 0;
        QPoint point;
        QWidget* owner = nullptr;
    };

    MenuTracker();
    ~MenuTracker();
    MenuTracker(const MenuTracker&) = delete;
    MenuTracker& operator=(const MenuTracker&) = delete;

    /// Every following menu answers @p command.
    void ChooseCommand(unsigned command)
    {
        m_chooser = [command](QMenu&) { return command; };
    }
    /// Every following menu is dismissed.
    void Dismiss()
    {
        m_chooser = [](QMenu&) { return 0u; };
    }
    /// Decides per menu.
    void Choose(std::function<unsigned(QMenu&)> chooser) { m_chooser = std::move(chooser); }

    const std::vector<Shown>& ShownMenus() const { return m_shown; }
    int Count() const { return int(m_shown.size()); }

private:
    CZuUiMenu::TrackHandler m_previous;
    std::function<unsigned(QMenu&)> m_chooser;
    std::vector<Shown> m_shown;
};

/// Stands in for message boxes while it lives: records text and caption, answers @p answer.
class MessageBoxRecorder
{
public:
    struct Shown
    {
        QString text;
        QString caption;
        unsigned type = 0;
        unsigned helpId = 0;
    };

    explicit MessageBoxRecorder(int answer = CZuUiMessageBox::IdOk);
    ~MessageBoxRecorder();
    MessageBoxRecorder(const MessageBoxRecorder&) = delete;
    MessageBoxRecorder& operator=(const MessageBoxRecorder&) = delete;

    const std::vector<Shown>& Boxes() const { return m_boxes; }

private:
    CZuUiMessageBox::Handler m_previous;
    int m_answer;
    std::vector<Shown> m_boxes;
};
