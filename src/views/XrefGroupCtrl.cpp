#include "views/XrefGroupCtrl.h"

#include "framework/ZuUiRm.h"
#include "resources/TroveResources.h"

CXrefGroupCtrl::CXrefGroupCtrl(QWidget* parent) : CZuUiGroupCtrl(parent) {}

QIcon CXrefGroupCtrl::PageIcon(const QString& key) const
{
    if (key.isEmpty())
        return {};
    return CZuUiRm::ThemedIcon(CZuUiRmId(TroveUI::ResourceInstance(), key));
}
