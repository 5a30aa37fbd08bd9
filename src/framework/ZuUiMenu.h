#pragma once

#include "kvuiframework_export.h"

#include <QPoint>
#include <QString>

#include <functional>
#include <memory>

class QAction;
class QMenu;
class QWidget;

namespace Util {
class ResourceModule;
}

/// Menus with command ids, built on QMenu: each command entry is a QAction whose data is its
/// command id, a sub-menu entry is a QAction with a menu. The operations address an entry either
/// by command id (searching sub-menus too) or by position, as the flags say, and keep the classic
/// flag values so that menu states can be stored and compared as numbers.
class KVUIFRAMEWORK_EXPORT CZuUiMenu
{
public:
    enum Flag : unsigned {
        String = 0x0,
        Enabled = 0x0,
        Grayed = 0x1,
        Disabled = 0x2,
        Checked = 0x8,
        Popup = 0x10,
        ByCommand = 0x0,
        ByPosition = 0x400,
        Separator = 0x800,
    };
    /// The id GetMenuItemID reports for a sub-menu entry.
    static constexpr unsigned kPopupId = 0xFFFFFFFFu;

    /// Track flags.
    enum TrackFlag : unsigned {
        TrackLeftButton = 0x0,
        TrackRightButton = 0x2,
        TrackNoNotify = 0x80,
        TrackReturnCmd = 0x100,
    };

    /// An empty popup menu.
    static std::unique_ptr<QMenu> CreatePopupMenu();

    /// Loads menu resource "menus/<id>.json" of @p module (the current module when null): a
    /// menu bar of drop-down menus. Null when the resource is missing or malformed.
    static std::unique_ptr<QMenu> LoadMenu(const Util::ResourceModule* module, unsigned id);
    /// Builds a menu from the JSON text of a menu resource; null when malformed.
    static std::unique_ptr<QMenu> MenuFromJson(const QByteArray& json);

    static int GetMenuItemCount(const QMenu* menu);
    /// The command id at @p position; 0 for a separator, kPopupId for a sub-menu entry and for a
    /// position that does not exist.
    static unsigned GetMenuItemID(const QMenu* menu, int position);
    static QMenu* GetSubMenu(const QMenu* menu, int position);
    /// The entry named by @p item and @p flags (ByCommand searches sub-menus), or null.
    static QAction* FindItem(const QMenu* menu, unsigned item, unsigned flags);
    /// The flags of an entry (Grayed, Disabled, Checked, Popup, Separator); -1 when there is none.
    static int GetMenuState(const QMenu* menu, unsigned item, unsigned flags);
    static QString GetMenuString(const QMenu* menu, unsigned item, unsigned flags);

    /// Appends a command (@p id), a separator (Separator in @p flags) or a sub-menu (Popup in
    /// @p flags; @p subMenu becomes a child of @p menu). Returns false when nothing was added.
    static bool AppendMenu(QMenu* menu, unsigned flags, unsigned id, const QString& text,
                           QMenu* subMenu = nullptr);
    /// The same at @p position (by position) or before command @p item; -1 appends.
    static bool InsertMenu(QMenu* menu, unsigned item, unsigned flags, unsigned id,
                           const QString& text, QMenu* subMenu = nullptr);
    /// Replaces an entry's text, flags and command id (a sub-menu stays a sub-menu).
    static bool ModifyMenu(QMenu* menu, unsigned item, unsigned flags, unsigned id,
                           const QString& text);
    /// Removes an entry (a sub-menu is deleted with it).
    static bool RemoveMenu(QMenu* menu, unsigned item, unsigned flags);
    /// Sets Grayed/Disabled; returns the previous state (0 or the two low bits), -1 without entry.
    static int EnableMenuItem(QMenu* menu, unsigned item, unsigned flags);
    /// Sets or clears the check mark; returns the previous state (0 or Checked), -1 without entry.
    static int CheckMenuItem(QMenu* menu, unsigned item, unsigned flags);

    /// Shows @p menu at @p screenPoint and returns the chosen command id, or 0 when the menu was
    /// dismissed. Tests replace the way menus are shown, so no test waits in a menu loop.
    static unsigned TrackPopupMenu(QMenu* menu, unsigned flags, QPoint screenPoint, QWidget* owner);

    using TrackHandler =
        std::function<unsigned(QMenu& menu, unsigned flags, QPoint screenPoint, QWidget* owner)>;
    /// Replaces how menus are shown; an empty handler restores the default. Returns the old one.
    static TrackHandler SetTrackHandler(TrackHandler handler);
};
