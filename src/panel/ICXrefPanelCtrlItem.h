#pragma once

#include "kvxreftroveui_export.h"

namespace Trove {

/// What the views need from an item beyond its texts: the repository state icon of its tree node
/// and of its list row (the 4-bit state image index, 0 for none).
class KVXREFTROVEUI_EXPORT ICXrefPanelCtrlItem
{
public:
    virtual unsigned GetTroveStateIconIndexTreeView() const = 0;
    virtual unsigned GetTroveStateIconIndexListView() const = 0;

protected:
    ~ICXrefPanelCtrlItem() = default;
};

} // namespace Trove
