#pragma once

// The panel's children, where they go and which of them are in front. Internal to the panel;
// not installed.

#include "panel/ViewTypes.h"

#include <QRect>

#include <functional>
#include <vector>

class CTroveListCtrl;
class CXrefCoupledGroupCtrl;
class CXrefGroupCtrl;
class CXrefPreview;
class CXrefPropListCtrl;
class CXrefToolBar;
class CXrefTreeCtrl;
class QWidget;

/// Where the panel puts its tool bar, its two groups (as the splitter that holds them) and its
/// message strip, in the panel's client coordinates.
struct PanelGeometry
{
    /// Null when there is no tool bar window.
    QRect toolBar;
    QRect strip;
    QRect groups;
};

/// Makes the panel's views and panes, lays them out and keeps which page of each group is in
/// front and whether the lower pane shows. The children belong to the panel widget, as Qt
/// children: upper group (list and tree pages) and lower group (details and preview pages) in
/// the splitter that couples them.
class PanelLayout
{
public:
    static constexpr int kUpperGroupId = 30100;
    static constexpr int kTreeViewId = 30101;
    static constexpr int kListViewId = 30102;
    static constexpr int kLowerGroupId = 30200;
    static constexpr int kDetailsId = 30201;
    static constexpr int kPreviewId = 30202;
    /// The splitter ratio a host that stores none gets.
    static constexpr double kDefaultRatio = 0.6;

    /// Points in the creation where the panel connects a new child or asks the host; each runs
    /// once, in the order listed.
    struct Hooks
    {
        std::function<void(CTroveListCtrl&)> listCreated;
        std::function<void(CXrefTreeCtrl&)> treeCreated;
        std::function<void(CXrefPropListCtrl&)> detailsCreated;
        /// After the details page: the list's and the tree's property-edit events.
        std::function<void()> viewsCreated;
        /// The host's stored splitter ratio and lower-pane flag; they arrive holding the default
        /// ratio and the flag as it stands.
        std::function<void(double& ratio, bool& shown)> storedLowerGroup;
    };

    PanelLayout(Trove::FileReferenceViewType referenceView, Trove::DetailsViewType detailsView,
                int listOption, bool listFlag)
        : m_referenceView(referenceView), m_detailsView(detailsView), m_listOption(listOption),
          m_listFlag(listFlag)
    {}

    /// The least height of the tool bar band at horizontal scale @p xs.
    static int MinimumToolBarHeight(double xs);
    /// The layout of a @p cx x @p cy client area at scales @p xs, @p ys; @p toolBarButtonHeight
    /// is negative when there is no tool bar window.
    ///
    /// The strip's right margin is scaled vertically and the gap above it horizontally, and the
    /// minimum band height adds two horizontal terms. Hosts line their palettes up with these
    /// exact pixels, so the margins stay as they are even where they look uneven.
    static PanelGeometry Arrange(int cx, int cy, int toolBarButtonHeight, double xs, double ys);

    /// Makes every child of @p panel in its fixed order, calling @p hooks on the way, then gives
    /// the splitter both groups and the host's stored ratio and lower-pane flag. @p troveMode is
    /// both views' state-image flag and picks the list page's title.
    void CreateChildren(QWidget& panel, bool troveMode, const Hooks& hooks);
    bool IsCreated() const { return m_splitter != nullptr; }

    /// Places @p toolBar (when it has a window), @p strip and the groups for a @p cx x @p cy
    /// panel, then applies the lower-pane flag.
    void Resize(int cx, int cy, CXrefToolBar* toolBar, QWidget* strip);
    /// Lays out both groups in the splitter's area with the lower-pane flag.
    void SetPreDetailsRect();

    /// A group reports that @p pane comes to front or into view (or goes): the stored view type
    /// follows the page in front. True when that page is the preview, which must be filled then.
    bool PaneVisibilityChanging(const QWidget* pane, unsigned flags);
    /// Bring a page to front; the stored types follow through PaneVisibilityChanging. False when
    /// there is no such page (or no group yet).
    bool ShowReferencePage(Trove::FileReferenceViewType type);
    bool ShowDetailsPage(Trove::DetailsViewType type);
    /// Takes the page actually in front as the stored type: for a type that named no page.
    void SettleViewTypes();

    /// The group that holds @p widget (or none) is drawn active, the other one inactive.
    void ActivateGroupOf(const QWidget* widget);
    /// Enables or disables the splitter, the groups, the views, @p toolBar and the lower panes,
    /// in that order.
    void EnableChildren(bool enable, QWidget* toolBar);

    /// The details list's two column widths in device-independent pixels; empty before
    /// creation.
    std::vector<int> ColumnDipWidths() const;
    /// Sets the columns from device-independent widths; negative entries and entries past the
    /// second are skipped.
    void SetColumnDipWidths(const std::vector<int>& widths);

    Trove::FileReferenceViewType ReferenceView() const { return m_referenceView; }
    Trove::DetailsViewType DetailsView() const { return m_detailsView; }
    bool ShowsLowerPane() const { return m_showLowerPane; }
    void SetShowLowerPane(bool shown) { m_showLowerPane = shown; }
    /// The filter bar, placed above the groups while it is not hidden (null: none).
    void SetFilterBar(QWidget* bar) { m_filterBar = bar; }
    /// The splitter's upper-to-whole ratio; the default before creation.
    double TopToWholeRatio() const;

    CXrefCoupledGroupCtrl* Splitter() const { return m_splitter; }
    CXrefGroupCtrl* UpperGroup() const { return m_upper; }
    CXrefGroupCtrl* LowerGroup() const { return m_lower; }
    CTroveListCtrl* List() const { return m_list; }
    CXrefTreeCtrl* Tree() const { return m_tree; }
    CXrefPropListCtrl* Details() const { return m_details; }
    CXrefPreview* Preview() const { return m_preview; }

private:
    Trove::FileReferenceViewType m_referenceView;
    Trove::DetailsViewType m_detailsView;
    int m_listOption;
    bool m_listFlag;
    bool m_showLowerPane = true;
    CXrefCoupledGroupCtrl* m_splitter = nullptr;
    QWidget* m_filterBar = nullptr;
    CXrefGroupCtrl* m_upper = nullptr;
    CXrefGroupCtrl* m_lower = nullptr;
    CTroveListCtrl* m_list = nullptr;
    CXrefTreeCtrl* m_tree = nullptr;
    CXrefPropListCtrl* m_details = nullptr;
    CXrefPreview* m_preview = nullptr;
};
