#include "views/ListItemAccess_p.h"

#include "host/KvNameDescriptionToolTipInfo.h"
#include "items/XrefPanelCtrlItem.h"

const QString& ListItemAccess::TypeIconKey(const CXrefPanelCtrlItem& item)
{
    return item.GetTypeIcon();
}

std::unique_ptr<KvNameDescriptionToolTipInfo>
ListItemAccess::CreateToolTipInfo(CXrefPanelCtrlItem& item, const ToolTipMenuSettings& settings)
{
    return item.CreateToolTipInfo(settings);
}
