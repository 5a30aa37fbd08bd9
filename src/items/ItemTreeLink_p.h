#pragma once

// The tree's side of an item's link to its node. Not installed.

#include "views/TreeItemHandle.h"

class CXrefPanelCtrlItem;

/// When the tree drops nodes whose items outlive them, or destroys the items of a subtree it
/// removes, the items must forget their node; only the tree does this, through here.
struct ItemTreeLink
{
    /// @p item forgets @p node if that is its node.
    static void Detach(CXrefPanelCtrlItem& item, HTREEITEM node);
    /// Detaches @p item from @p node and destroys it.
    static void Destroy(CXrefPanelCtrlItem* item, HTREEITEM node);
};
