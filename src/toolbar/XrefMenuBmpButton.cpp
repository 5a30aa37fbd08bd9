#include "toolbar/XrefMenuBmpButton.h"

#include "framework/ZuUiMenu.h"
#include "resources/TemporaryResourceOverride.h"

#include <QKeyEvent>
#include <QMenu>
#include <QMouseEvent>

XrefMenuBmpButton::XrefMenuBmpButton(QWidget* parent) : CZuUiThemedDropDownBitmapButton(parent) {}

XrefMenuBmpButton::~XrefMenuBmpButton() = default;

void XrefMenuBmpButton::SetDropDownMenu(QMenu* menu, int index)
{
    m_menu = menu;
    m_menuIndex = index;
}

void XrefMenuBmpButton::mousePressEvent(QMouseEvent* event)
{
    QPointer<XrefMenuBmpButton> alive(this);
    // A press on the arrow part has dropped the menu down in here already.
    CZuUiThemedDropDownBitmapButton::mousePressEvent(event);
    if (!alive || event->button() != Qt::LeftButton || !isEnabled())
        return;
    // On the main part of a split button the press goes on to become a click.
    if (GetMenuButtonSelected() || !m_menuOnly)
        return;
    DropDownNow();
}

void XrefMenuBmpButton::keyPressEvent(QKeyEvent* event)
{
    const bool plain = !(event->modifiers() & ~Qt::KeypadModifier);
    const int key = event->key();
    const bool press = key == Qt::Key_Space || key == Qt::Key_Return || key == Qt::Key_Enter;
    // Pressing a menu-only button from the keyboard does what a click on it does.
    if (m_menuOnly && plain && press && !event->isAutoRepeat()) {
        event->accept();
        if (isEnabled())
            DropDownNow();
        return;
    }
    CZuUiThemedDropDownBitmapButton::keyPressEvent(event);
}

void XrefMenuBmpButton::ShowDropDown()
{
    QPointer<XrefMenuBmpButton> alive(this);
    emit dropDownAboutToShow();
    if (!alive)
        return;
    QMenu* dropDown = CZuUiMenu::GetSubMenu(m_menu, m_menuIndex);
    if (!dropDown)
        return;
    if (!hasFocus())
        setFocus(Qt::MouseFocusReason);
    const QPoint below = mapToGlobal(QPoint(0, height()));
    unsigned chosen = 0;
    {
        CTemporaryResourceOverride resources;
        chosen = CZuUiMenu::TrackPopupMenu(
            dropDown, CZuUiMenu::TrackReturnCmd | CZuUiMenu::TrackNoNotify, below, this);
    }
    if (!alive || chosen == 0)
        return;
    m_previousCommand = m_SplitButtonCommand;
    m_SplitButtonCommand = int(chosen);
    // Reported once the menu loop is over, so the owner never runs a command inside it.
    QMetaObject::invokeMethod(
        this, [this] { emit clicked(false); }, Qt::QueuedConnection);
}
