#pragma once

// The panel's children and which of them are in front. Internal to the panel; not installed.

#include "panel/ViewTypes.h"

class CTroveListCtrl;
class CXrefPreview;
class CXrefTreeCtrl;
class QWidget;

/// Makes the panel's views and panes and keeps which page of each group is in front and whether
/// the lower pane shows. The children belong to the panel widget, as Qt children.
class PanelLayout
{
public:
    PanelLayout(Trove::FileReferenceViewType referenceView, Trove::DetailsViewType detailsView,
                int listOption, bool listFlag)
        : m_referenceView(referenceView), m_detailsView(detailsView), m_listOption(listOption),
          m_listFlag(listFlag)
    {}

    /// Makes the list, the tree and the preview as hidden children of @p panel: they show when
    /// a group brings their page to the front. @p troveMode is both views' state-image flag.
    void CreateChildren(QWidget& panel, bool troveMode);

    Trove::FileReferenceViewType ReferenceView() const { return m_referenceView; }
    Trove::DetailsViewType DetailsView() const { return m_detailsView; }
    bool ShowsLowerPane() const { return m_showLowerPane; }

    CTroveListCtrl* List() const { return m_list; }
    CXrefTreeCtrl* Tree() const { return m_tree; }
    CXrefPreview* Preview() const { return m_preview; }

private:
    Trove::FileReferenceViewType m_referenceView;
    Trove::DetailsViewType m_detailsView;
    int m_listOption;
    bool m_listFlag;
    bool m_showLowerPane = true;
    CTroveListCtrl* m_list = nullptr;
    CXrefTreeCtrl* m_tree = nullptr;
    CXrefPreview* m_preview = nullptr;
};
