#pragma once

#include "kvxreftroveui_export.h"

#include "items/RefStatus.h"
#include "panel/ICXrefPanelCtrl.h"
#include "panel/ListViewColumn.h"
#include "panel/MenuItems.h"
#include "panel/ToolTipMenuSettings.h"
#include "panel/ViewTypes.h"
#include "panel/XrefProperties.h"

#include <QDomNode>
#include <QRect>
#include <QWidget>

#include <map>
#include <memory>
#include <string>
#include <vector>

class CXREFPalette;
class CXrefPanelCtrlPrivate;
class CXrefToolBar;
class CXrefMessageBox;
class CXrefPanelCtrlItem;
class CTroveListCtrl;
class CXrefTreeCtrl;
class CXrefPreview;
class CZuUiImageList;
class QMenu;

/// The External References panel. The host derives its palette's panel class from it, implements
/// the abstract host operations, constructs it with its tool bar and message strip, calls Create
/// and fills it with items (one CXrefPanelCtrlItem per reference occurrence).
///
/// Calling order: construct; Create; insert the root item, then every reference with its parent
/// before it; DeleteTreeItem for single removals, DeleteAllItems before a reload.
///
/// Items belong to the host, with one exception: the items of a subtree that the panel removes
/// (the descendants in DeleteTreeItem, everything in DeleteAllItems) are destroyed with their
/// nodes. DeleteTreeItem leaves the item it names to its caller.
class KVXREFTROVEUI_EXPORT CXrefPanelCtrl : public QWidget, public Trove::ICXrefPanelCtrl
{
    Q_OBJECT
public:
    // The vocabulary lives in leaf headers that items and views include without the panel; the
    // aliases keep the names the host spells through the panel class.
    using FileReferenceViewType = Trove::FileReferenceViewType;
    using DetailsViewType = Trove::DetailsViewType;
    using XrefProperties = Trove::XrefProperties;
    using ListViewColumn = Trove::ListViewColumn;

    /// @p toolBar may be empty; @p messageBox is required. @p troveMode is the repository-state
    /// flag of both views, @p listOption the persisted sort column of the list view (-1: none) and
    /// @p listFlag its ascending flag. The panel keeps its own copies of the shared pointers.
    CXrefPanelCtrl(CXREFPalette* palette, std::shared_ptr<CXrefToolBar> toolBar,
                   std::shared_ptr<CXrefMessageBox> messageBox, bool troveMode,
                   FileReferenceViewType referenceView, DetailsViewType detailsView, int listOption,
                   bool listFlag);
    ~CXrefPanelCtrl() override;
    CXrefPanelCtrl(const CXrefPanelCtrl&) = delete;
    CXrefPanelCtrl& operator=(const CXrefPanelCtrl&) = delete;

    /// Makes the panel a child of @p parent at @p rect with control id @p id and creates its
    /// children. Returns false when it was already created.
    bool Create(const wchar_t* windowName, const QRect& rect, QWidget* parent, int id);
    bool IsCreated() const;

    // --- Host operations, in the order the host implements them --------------------------------

    /// The description of @p item's repository state, for the tool tip of its state cell.
    virtual std::wstring GetTroveStateToolTipText(CXrefPanelCtrlItem& item) = 0;
    /// Fills a view's repository-state image list: @p view is 0 for the list view, 1 for the tree
    /// view; @p flag is the view's state-image flag.
    virtual void FillStateImageList(CZuUiImageList& list, bool flag, int view) = 0;
    /// A new item was attached to the list row of @p existing.
    virtual void OnSharedRowItemInserted(const CXrefPanelCtrlItem& existing) = 0;
    /// An item that shared a list row left the tree; @p remaining now stands for the row.
    virtual void OnSharedRowOwnerChanged(CXrefPanelCtrlItem& remaining) = 0;
    /// The last item of a list row left the tree and the row was removed.
    virtual void OnItemRemoved(CXrefPanelCtrlItem& item) = 0;
    /// The list view's stored column widths in device-independent pixels (missing or negative
    /// entries take the defaults).
    virtual std::vector<int> GetStoredColumnDipWidths() = 0;
    /// The host's own; the panel never calls it.
    virtual void HostCallback7() = 0;
    /// Restores the details list's two column widths, given in device-independent pixels.
    virtual void SetDetailColumnDipWidths(std::vector<int>& widths);
    /// Called once by the details list at creation with an empty vector.
    virtual void HostCallback9(std::vector<int>& widths) = 0;
    /// The stored splitter ratio and lower-pane flag.
    virtual void GetStoredLowerGroup(double& ratio, bool& shown) = 0;
    /// The host's own; the panel never calls it.
    virtual void HostCallback11() = 0;
    /// Reads the tool-tip choices from the host's settings node.
    virtual bool LoadTooltipSettings(QDomNode node);
    /// Writes the tool-tip choices into the host's settings node.
    virtual bool SaveTooltipSettings(QDomNode node);
    /// Rebuilds both views' repository-state image lists with @p large as their flag.
    virtual void SetIconSize(bool large);
    /// The host appends its entries to a view's context menu for @p items.
    virtual void FillContextMenu(QMenu& menu, const std::vector<CXrefPanelCtrlItem*>& items,
                                 bool flag) = 0;
    /// Every command, from the tool bar, a context menu or the tool-tip menu, arrives here.
    virtual void OnMenuSelection(Trove::MenuItems item,
                                 const std::vector<CXrefPanelCtrlItem*>& items) = 0;
    /// The status cell of @p item's list row was double-clicked.
    virtual void OnStatusColumnDoubleClicked(CXrefPanelCtrlItem* item) = 0;
    /// The tool bar's help button was pressed.
    virtual void OnDisplayHelp() = 0;
    /// A committed edit of @p property for @p items, from @p previousValue to @p newValue;
    /// answer true to accept it.
    virtual bool OnApplyPropertyEdit(const std::vector<CXrefPanelCtrlItem*>& items,
                                     XrefProperties property, const std::wstring& previousValue,
                                     const std::wstring& newValue) = 0;
    /// The host's own; the panel never calls it.
    virtual void HostCallback20() = 0;
    /// The user chose a new sort column or direction in the list view.
    virtual void OnSortCriteriaChanged(int sortColumn, bool ascending) = 0;
    /// The selection changed in either view.
    virtual void OnItemsSelected(const std::vector<CXrefPanelCtrlItem*>& items, bool flag);
    /// Does nothing here; derived classes hook in when the tool-tip style changes.
    virtual void SetToolTipStyle();

    // --- State ----------------------------------------------------------------------------------

    FileReferenceViewType GetReferenceViewType() const;
    DetailsViewType GetDetailsViewType() const;
    DetailsViewType GetActiveDetailViewType() const;
    /// True except while a property edit runs.
    bool GetEnableSelect() const;
    /// Whether the host drawing's name shows the unsaved-changes marker: both flags together.
    void EnableHostModStatus(bool enabled, bool modified);
    bool IsHostModStatusEnabled() const;
    bool IsHostModified() const;
    /// The selected items, in the order the view reported them. Not owned.
    const std::vector<CXrefPanelCtrlItem*>& GetSelectedItems() const;
    bool IsTroveMode() const;
    /// The tool-tip style and preview size the items' tool tips follow.
    ToolTipMenuSettings GetToolTipMenuSettings() const;

    /// True for the status icons 1 to 6.
    static bool IsValidRefStatusIcon(RefStatus::RefIcon icon);

    /// Refreshes @p property's row of the details pane when @p item is selected.
    void SetDetailsProperty(const CXrefPanelCtrlItem& item, XrefProperties property);

    // --- Items ----------------------------------------------------------------------------------

    /// Starts a fill: neither view redraws or relays out until EndUpdate.
    void BeginUpdate();
    /// Ends a fill: both views take the new rows and nodes in one step and repaint, and the
    /// current selection is applied again.
    void EndUpdate();
    /// Hands a copy of the current selection to OnItemsSelected.
    void UpdateCurrentSelection();

    /// Inserts the host drawing's item at the tree's root and gives it a list row.
    void InsertRootItem(CXrefPanelCtrlItem& item);
    /// Inserts @p item under @p parent. With @p sharedWith (an item that has a list row) the new
    /// item joins that row; otherwise it gets a row of its own.
    void InsertItem(CXrefPanelCtrlItem& item, const CXrefPanelCtrlItem& parent,
                    const CXrefPanelCtrlItem* sharedWith);
    /// Removes @p item with its subtree from both views. The descendants are destroyed; @p item
    /// itself stays the caller's.
    void DeleteTreeItem(CXrefPanelCtrlItem& item);
    /// Empties both views and destroys every item that was in the tree.
    void DeleteAllItems();
    CXrefPanelCtrlItem* GetRootItem() const;
    /// The item of @p item's parent node; null for the root or an item in no tree.
    CXrefPanelCtrlItem* GetParentItem(const CXrefPanelCtrlItem& item) const;
    Trove::ICXrefPanelCtrlItem&
    GetParentItem(const Trove::ICXrefPanelCtrlItem& item) const override;
    /// The items of @p item's direct children, in tree order.
    std::vector<CXrefPanelCtrlItem*> GetChildren(const CXrefPanelCtrlItem& item) const;
    /// The number of referenced files: list rows less the host drawing's own row.
    int GetUniqueXrefCount() const;

    /// Rebuilds both views' repository-state image lists with their current flags.
    void UpdateStateImageList();

    /// The list view; null until Create.
    CTroveListCtrl* GetListCtrl() const;
    /// The tree view; null until Create.
    CXrefTreeCtrl* GetTreeCtrl() const;
    /// The preview pane; null until Create.
    CXrefPreview* GetPreviewCtrl() const;
    const std::shared_ptr<CXrefToolBar>& GetToolBar() const;
    const std::shared_ptr<CXrefMessageBox>& GetMessageBox() const;
    CXREFPalette* GetPalette() const;

    // --- Menu texts -----------------------------------------------------------------------------

    /// The text of every menu value that has one, loaded once per process.
    static std::map<Trove::MenuItems, std::wstring> m_MenuItemstrings;
    /// Fills m_MenuItemstrings once; later calls do nothing.
    static void LoadMenuItemStrings();
    /// Loads string @p id as the text of @p item, replacing an earlier text.
    static void LoadMenuItemString(Trove::MenuItems item, unsigned id);

protected:
    /// The item removal step shared by both deletions: releases @p item's list row share and
    /// tells the host what became of the row.
    void OnTreeItemToBeDeleted(CXrefPanelCtrlItem& item);

private:
    void onTreeItemToBeDeleted(CXrefPanelCtrlItem* item);
    void buildStateImageLists(bool listFlag, bool treeFlag);

    std::unique_ptr<CXrefPanelCtrlPrivate> const d;
};
