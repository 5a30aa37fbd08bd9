#pragma once

#include "kvxreftroveui_export.h"

#include "panel/ICXrefPanelCtrlItem.h"

namespace Trove {

/// The part of the panel that items see.
class KVXREFTROVEUI_EXPORT ICXrefPanelCtrl
{
public:
    /// The tree parent of @p item. An item without a parent (the root, or an item in no tree) is
    /// answered with itself, so that a walk up the tree ends where the answer stops changing.
    virtual ICXrefPanelCtrlItem& GetParentItem(const ICXrefPanelCtrlItem& item) const = 0;

protected:
    ~ICXrefPanelCtrl() = default;
};

} // namespace Trove
