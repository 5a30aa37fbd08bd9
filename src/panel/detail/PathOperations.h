#pragma once

// Which path operations the tool bar offers for the selection. Internal to the panel; not
// installed.

#include <vector>

class CXrefPanelCtrlItem;
class CXrefToolBar;

namespace PathOperations {

/// Whether drawings are being compared now (the host's "DWGCOMPAREMODE" reads 3): path
/// operations and reloading all are off then.
bool CompareModeOn();

/// What one selected item allows (its getPathTypeEnabledStatus): make absolute, make relative,
/// remove path.
struct ItemPathTypes
{
    bool first = false;
    bool second = false;
    bool third = false;
};

/// Enables the tool bar's path button for @p items and sets the states of its path-menu
/// commands; @p single is what the item allows when there is one. Nothing without a tool bar.
void Update(CXrefToolBar* toolBar, const std::vector<CXrefPanelCtrlItem*>& items,
            const ItemPathTypes& single);

} // namespace PathOperations
