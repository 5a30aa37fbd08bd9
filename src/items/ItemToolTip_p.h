#pragma once

// The views' way to an item's rich tool tip. Not installed.

#include <memory>

class CXrefPanelCtrlItem;
class KvNameDescriptionToolTipInfo;

/// Making an item's tip is the item's own business (its class may add to it); the views that
/// show tips for their nodes and rows ask through here, with the tool-tip choices of the panel
/// the item belongs to.
struct ItemToolTip
{
    /// @p item's tip as its panel's tool-tip style and preview size want it; the caller owns it.
    static std::unique_ptr<KvNameDescriptionToolTipInfo> Create(CXrefPanelCtrlItem& item);
};
