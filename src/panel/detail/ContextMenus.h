#pragma once

// The texts of the panel's menu commands. Internal to the panel; not installed.

#include "panel/MenuItems.h"

#include <map>
#include <string>

/// The command texts every menu of the panel shows, loaded from the resource module once per
/// process.
class ContextMenus
{
public:
    /// Fills @p texts with the text of every command that has one; later calls do nothing.
    static void LoadTexts(std::map<Trove::MenuItems, std::wstring>& texts);
    /// The text of @p item from string @p id, replacing an earlier text.
    static void LoadText(std::map<Trove::MenuItems, std::wstring>& texts, Trove::MenuItems item,
                         unsigned id);
};
