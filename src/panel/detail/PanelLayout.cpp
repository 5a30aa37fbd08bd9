#include "panel/detail/PanelLayout.h"

#include "framework/ControlId.h"
#include "items/XrefPanelCtrlItemTypes.h"
#include "views/TroveListCtrl.h"
#include "views/XrefPreview.h"
#include "views/XrefTreeCtrl.h"

namespace {

constexpr int kListViewId = 30102;
constexpr int kTreeViewId = 30101;
constexpr int kPreviewId = 30202;

} // namespace

void PanelLayout::CreateChildren(QWidget& panel, bool troveMode)
{
    m_list = new CTroveListCtrl(troveMode, m_listOption, m_listFlag, &panel);
    ControlId::Set(m_list, kListViewId);
    m_list->hide();
    m_tree = new CXrefTreeCtrl(troveMode, &panel);
    ControlId::Set(m_tree, kTreeViewId);
    m_tree->hide();
    m_preview = new CXrefPreview(&panel);
    ControlId::Set(m_preview, kPreviewId);
    m_preview->hide();

    // The views draw item icons from the type registry's lists, one per theme.
    m_list->SetItemImageLists(&CXrefPanelCtrlItemTypes::ImageList(false),
                              &CXrefPanelCtrlItemTypes::ImageList(true));
    m_tree->SetItemImageLists(&CXrefPanelCtrlItemTypes::ImageList(false),
                              &CXrefPanelCtrlItemTypes::ImageList(true));
}
