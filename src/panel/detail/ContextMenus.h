#pragma once

// The panel's menus: the command texts, the menu-building helpers and the tool-tip menu.
// Internal to the panel; not installed.

#include "panel/MenuItems.h"

#include <map>
#include <memory>
#include <string>

struct ToolTipMenuSettings;
class QMenu;

/// The command texts every menu of the panel shows (loaded from the resource module once per
/// process), appending and relabelling entries by command, and the panel's own tool-tip menu:
/// a root with the style sub-menu, the lower-pane entry and the close entry; the style sub-menu
/// holds the two sub-menus of preview sizes.
class ContextMenus
{
public:
    using Texts = std::map<Trove::MenuItems, std::wstring>;

    ContextMenus();
    ~ContextMenus();
    ContextMenus(const ContextMenus&) = delete;
    ContextMenus& operator=(const ContextMenus&) = delete;

    /// Fills @p texts with the text of every command that has one; later calls do nothing.
    static void LoadTexts(Texts& texts);
    /// The text of @p item from string @p id, replacing an earlier text.
    static void LoadText(Texts& texts, Trove::MenuItems item, unsigned id);

    /// Appends @p item to @p menu with its text from @p texts: a separator for
    /// Trove::Separator whatever @p flags say; a sub-menu entry for the host's sub-menu titles
    /// (1, 42, 45) with @p subMenu, which @p menu then owns, or nothing without one; otherwise a
    /// command with @p item as its id. False when nothing was appended.
    static bool Insert(QMenu& menu, Trove::MenuItems item, unsigned flags, QMenu* subMenu,
                       const Texts& texts);
    /// Relabels the entry at @p position (by command or by position, as @p flags say) with the
    /// text of @p item and command id 0.
    static bool ModifyString(QMenu& menu, unsigned position, unsigned flags, Trove::MenuItems item,
                             const Texts& texts);

    /// Whether the host has tool tips switched on: "TOOLTIPS" reads as the integer 1.
    static bool ToolTipsOn();

    /// Builds the tool-tip menu; later calls do nothing.
    void Build();
    /// The tool-tip menu's root; null until Build.
    QMenu* Root() const { return m_root.get(); }
    /// Sets the menu's check marks: the lower-pane entry from @p paneShown, the styles and sizes
    /// from @p settings. A style outside 0 to 3 changes only the lower-pane mark, and a size
    /// outside 0 to 2 leaves that style's size marks as they are.
    void Update(const ToolTipMenuSettings& settings, bool paneShown);
    /// Greys the style entry unless tool tips are on, before the menu is shown.
    void EnableStyleEntry(bool enable);

    /// Appends a style sub-menu (greyed unless tool tips are on) and the lower-pane entry to a
    /// host's @p menu, marked as the tool-tip menu is. The sub-menu is a copy that @p menu owns.
    static void AppendToolTipEntries(QMenu& menu, const ToolTipMenuSettings& settings,
                                     bool paneShown);

private:
    std::unique_ptr<QMenu> m_root;
    QMenu* m_style = nullptr;
};
