#pragma once

#include "kvxreftroveui_export.h"

#include "framework/ZuUiThemedDropDownBitmapButton.h"

#include <QMenu>
#include <QPointer>

/// A split button of the reference tool bar. Its arrow part drops down one sub-menu of the tool
/// bar's menu; a command chosen there becomes the button's current command and the button then
/// reports itself clicked, after the menu has closed, so that its owner runs that command. A
/// menu-only button drops the menu down wherever it is pressed, and on Space and Enter too.
class KVXREFTROVEUI_EXPORT XrefMenuBmpButton : public CZuUiThemedDropDownBitmapButton
{
    Q_OBJECT
public:
    explicit XrefMenuBmpButton(QWidget* parent = nullptr);
    ~XrefMenuBmpButton() override;

    void SetMenuOnly(bool menuOnly) { m_menuOnly = menuOnly; }
    bool IsMenuOnly() const { return m_menuOnly; }

    /// The command last chosen from the menu; -1 until one is.
    int SplitButtonCommand() const { return m_SplitButtonCommand; }
    void SetSplitButtonCommand(int command) { m_SplitButtonCommand = command; }
    /// The current command before the last choice; -1 at first.
    int PreviousCommand() const { return m_previousCommand; }
    void SetPreviousCommand(int command) { m_previousCommand = command; }

    /// Drop-down @p index of @p menu is what this button opens. The menu stays the caller's.
    void SetDropDownMenu(QMenu* menu, int index);
    QMenu* DropDownMenu() const { return m_menu; }
    int DropDownIndex() const { return m_menuIndex; }

signals:
    /// The drop-down is about to open: the owner brings the menu's entries up to date.
    void dropDownAboutToShow();

protected:
    void mousePressEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void ShowDropDown() override;

private:
    bool m_menuOnly = false;
    int m_SplitButtonCommand = -1;
    int m_previousCommand = -1;
    QPointer<QMenu> m_menu;
    int m_menuIndex = 0;
};
