#include "panel/detail/DetailsBinding.h"

#include "panel/detail/SelectionBinding.h"

bool DetailsBinding::Concerns(const CXrefPanelCtrlItem& item, Trove::XrefProperties) const
{
    return m_selection.Contains(item);
}
