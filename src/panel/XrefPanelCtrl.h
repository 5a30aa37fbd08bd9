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
class CXrefPropListCtrl;
class CXrefCoupledGroupCtrl;
class CXrefGroupCtrl;
class CZuUiImageList;
class CZuUiTheme;
class QMenu;
class QMouseEvent;
class CXrefPanelCtrl;

namespace ItemPanel {
void ItemGoing(CXrefPanelCtrl* panel, CXrefPanelCtrlItem& item);
}

/// The External References panel. The host derives its palette's panel class from it, implements
/// the abstract host operations, constructs it with its tool bar and message strip, calls Create
/// and fills it with items (one CXrefPanelCtrlItem per reference occurrence).
///
/// Calling order: construct; Create; optionally LoadTooltipSettings and SetDetailColumnDipWidths;
/// insert the root item, then every reference with its parent before it; DeleteTreeItem for
/// single removals, DeleteAllItems before a reload; SaveTooltipSettings and the layout getters
/// (GetColumnDipWidths, GetLowerGroup) before the panel goes.
///
/// The panel lays out its children itself on every resize: the tool bar band at the top, below
/// it the splitter with the file-references group (list and tree pages) over the lower group
/// (details and preview pages), and the message strip at the bottom. A host must not put a
/// layout on the panel.
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
    /// @p referenceView and @p detailsView are the pages Create brings to front; a value that
    /// names no page leaves the first page in front and stored.
    CXrefPanelCtrl(CXREFPalette* palette, std::shared_ptr<CXrefToolBar> toolBar,
                   std::shared_ptr<CXrefMessageBox> messageBox, bool troveMode,
                   FileReferenceViewType referenceView, DetailsViewType detailsView, int listOption,
                   bool listFlag);
    ~CXrefPanelCtrl() override;
    CXrefPanelCtrl(const CXrefPanelCtrl&) = delete;
    CXrefPanelCtrl& operator=(const CXrefPanelCtrl&) = delete;

    /// Makes the panel a child of @p parent at @p rect with control id @p id and creates its
    /// children: the tool bar's window when the host has not made it yet, the two groups with
    /// their pages, the splitter (with the ratio and lower-pane flag GetStoredLowerGroup gives)
    /// and the tool-tip menu. The message strip becomes the panel's child. Returns false when it
    /// was already created.
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
    /// The stored splitter ratio and lower-pane flag, asked once by Create. They arrive holding
    /// the default ratio (0.6) and the flag as it stands (shown unless a profile loaded before
    /// said otherwise); leave them to keep those.
    virtual void GetStoredLowerGroup(double& ratio, bool& shown) = 0;
    /// The host's own; the panel never calls it.
    virtual void HostCallback11() = 0;
    /// Reads the tool-tip style, preview size and lower-pane flag from the attributes
    /// "TooltipStyle", "TooltipSize" and "ShowDetail" of the "TooltipSettings" child element of
    /// @p node, then updates the tool-tip menu and the layout. A missing attribute reads as 0;
    /// values are not range-checked. False, with nothing changed, for a null node or one without
    /// that child.
    virtual bool LoadTooltipSettings(QDomNode node);
    /// Writes the same three attributes onto @p node itself (so a host that loads from a parent
    /// saves into its "TooltipSettings" element). False when @p node is null or not an element;
    /// attributes written before the failure stay.
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
    /// A committed edit of @p property for @p items: the new text @p value, then the text
    /// @p previousValue it replaces (new before old, as OnPropertyEdited takes them). Answer true
    /// to accept it; false makes the panel put the previous value back. Not asked when the
    /// previous value is empty.
    virtual bool OnApplyPropertyEdit(const std::vector<CXrefPanelCtrlItem*>& items,
                                     XrefProperties property, const std::wstring& value,
                                     const std::wstring& previousValue) = 0;
    /// The host's own; the panel never calls it.
    virtual void HostCallback20() = 0;
    /// The user chose a new sort column or direction in the list view.
    virtual void OnSortCriteriaChanged(int sortColumn, bool ascending) = 0;
    /// The selection changed in either view.
    virtual void OnItemsSelected(const std::vector<CXrefPanelCtrlItem*>& items, bool flag);
    /// Does nothing here, and the panel never calls it: a derived class may, to bring its own
    /// tool tips in line with GetToolTipMenuSettings.
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
    /// Whether the lower pane (details or preview) shows.
    bool IsLowerPaneShown() const;

    /// True for the status icons 1 to 6.
    static bool IsValidRefStatusIcon(RefStatus::RefIcon icon);

    /// Refreshes @p property's row of the details pane when @p item is selected, with the
    /// item's value (empty when it has none).
    void SetDetailsProperty(const CXrefPanelCtrlItem& item, XrefProperties property);
    /// Refreshes the details rows of @p item when it is selected: name, status, size (only when
    /// the item has one), type, date (likewise), found-at, saved path and file version.
    void SetDetailsProperties(const CXrefPanelCtrlItem& item);
    /// Whether @p item is selected, so that its changed values show in the details pane.
    bool NeedToSetDetailFor(const CXrefPanelCtrlItem& item) const;

    // --- Edits ----------------------------------------------------------------------------------
    // The list, the tree and the details pane all report their edits here, so at most one edit
    // runs at a time.

    /// An edit of @p property begins with the text @p value: selection changes only record the
    /// selection until the edit ends; a rename shows its hint in the message strip.
    void OnPropertyEditStarting(XrefProperties property, const std::wstring& value);
    /// An edit ended with the new text @p value over @p previousValue. The host accepts or
    /// refuses it in OnApplyPropertyEdit (not asked when @p previousValue is empty); a refused
    /// edit puts the previous value back in the details pane. The selection then applies to
    /// every pane again.
    void OnPropertyEdited(XrefProperties property, const std::wstring& value,
                          const std::wstring& previousValue);
    /// An edit was cancelled: selecting works again and the message strip empties.
    void OnPropertyEditAborted(XrefProperties property);

    // --- Panes that follow the selection --------------------------------------------------------

    /// Sets the message strip's note for @p items; an empty selection leaves it as it is.
    void UpdateXrefMessageBox(const std::vector<CXrefPanelCtrlItem*>& items);
    /// Sets the tool bar's path button and the states of its path-menu commands for the
    /// selection; all off while drawings are compared.
    void UpdatePathOperations();

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
    /// Makes @p item the one selected item (null: clears the selection); the views and panes
    /// follow.
    void SelectItem(CXrefPanelCtrlItem* item);
    /// Selects the first list row whose reference is unresolved and brings its saved path into
    /// view in the details pane. Nothing when there is none.
    void SelectMissingXref();
    /// Sorts the list again by its current column and direction when the list is in front.
    /// Always true.
    bool SortDisplayItems() const;
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

    // --- Layout and view modes ------------------------------------------------------------------

    /// Brings the list (ListView) or the tree (TreeView) page to front; GetReferenceViewType
    /// follows once the page is in front. Nothing before Create.
    void SetReferenceViewType(FileReferenceViewType type);
    /// The same for the details and preview pages of the lower group.
    void SetDetailsViewType(DetailsViewType type);
    /// Lays out both groups again with the lower-pane flag: shown, the splitter divides its area
    /// by its ratio; hidden, the file references take the whole area.
    void SetPreDetailsRect();
    /// Enables or disables the panel, then the splitter, the groups, the tree, the list, the tool
    /// bar, the details list and the preview. True when the panel was disabled before.
    bool EnableWindow(bool enable);
    /// The details list's two column widths in device-independent pixels, for the host to keep.
    std::vector<int> GetColumnDipWidths() const;
    /// The share of the splitter's height that the file references take (0 to 1).
    double GetTopToWholeRatio() const;
    /// The splitter ratio and the lower-pane flag, for the host to keep.
    void GetLowerGroup(double& ratio, bool& shown) const;
    /// Takes @p font for the panel's children and the background and text colours of @p theme.
    void InitPaletteTheme(CZuUiTheme& theme, const QFont& font);

    // --- Tool-tip menu commands -----------------------------------------------------------------

    void OnClassic();
    void OnPreviewSmall();
    void OnPreviewMedium();
    void OnPreviewLarge();
    void OnDetails();
    void OnPreviewDetailsSmall();
    void OnPreviewDetailsMedium();
    void OnPreviewDetailsLarge();
    /// Shows or hides the lower pane.
    void OnPreviewDetailsPane();
    /// Passes Trove::TooltipClose with the selection to OnMenuSelection.
    void OnTooltipClose();

    // --- Menus ----------------------------------------------------------------------------------

    /// Appends @p item to @p menu with its text: a separator for Trove::Separator whatever
    /// @p flags say; for the sub-menu titles (HostSubMenu1, 42, 45) an entry that opens
    /// @p subMenu, which @p menu then owns, and nothing when @p subMenu is null; otherwise a
    /// command whose id is @p item. The menu texts are loaded first if they are not yet. False
    /// when nothing was appended.
    static bool InsertMenuW(QMenu& menu, Trove::MenuItems item, unsigned flags, QMenu* subMenu);
    /// Gives the entry at @p position (by command or by position, as @p flags say) the text of
    /// @p item and command id 0.
    static bool ModifyMenuString(QMenu& menu, unsigned position, unsigned flags,
                                 Trove::MenuItems item);
    /// Sets the state of a tool bar menu command (CZuUiMenu::Grayed or Enabled); nothing
    /// without a tool bar.
    void EnableMenuItem(Trove::MenuItems item, unsigned flags);
    /// Builds the tool-tip menu and marks it; Create does this.
    void InitContextMenu();
    /// Marks the tool-tip menu's style, size and lower-pane entries from the panel's state.
    void UpdateContextMenu();
    /// Shows the tool-tip menu at @p screenPoint, its style entry greyed unless the host has
    /// tool tips on, and runs the command chosen.
    void ShowContextMenu(QPoint screenPoint);
    /// Appends the tool-tip style sub-menu and the lower-pane entry to a host's @p menu.
    void AppendToolTipContextMenu(QMenu& menu);
    /// The tool-tip menu; null before Create.
    QMenu* GetToolTipMenu() const;
    /// A view asks for its context menu for @p items at @p point (in @p source's coordinates):
    /// the host fills a new menu through FillContextMenu, and unless it stays empty the menu is
    /// shown. The command chosen goes back to @p source as a CZuUiCommandEvent once the menu has
    /// closed.
    void OnContextMenu_(QWidget& source, QPoint point,
                        const std::vector<CXrefPanelCtrlItem*>& items, bool flag);
    /// Sees every right-button release inside the panel, at the widget that took the press, and
    /// opens the tool-tip menu for one outside the list and the tree (those open their own
    /// menus). Returns false: the event goes on to its widget either way.
    virtual bool PreTranslateMessage(QObject* receiver, QEvent* event);

    // --- Filter ---------------------------------------------------------------------------------
    //
    // A host may let the user narrow the views down: a filter field above them, or its own
    // command calling SetFilter. Both views then show only the references that pass, the tree
    // keeping the nodes that lead to them; references that leave the views leave the selection,
    // and everything else (events, commands, the details pane) works on what is shown as before.

    /// Shows or hides the filter field above the views (hidden until asked for). Hiding it does
    /// not clear the filter. Does nothing before Create.
    void ShowFilterBar(bool show);
    bool IsFilterBarShown() const;
    /// Shows only the references whose name, saved path, found-at path or status text contains
    /// @p text (ignoring case; surrounding spaces do not count) and, with @p problemsOnly, whose
    /// file is not found, unresolved or needs reloading. An empty text without problemsOnly
    /// shows everything.
    void SetFilter(const QString& text, bool problemsOnly);
    QString GetFilterText() const;
    bool IsProblemsOnlyFilter() const;
    /// Whether @p item passes the filter in force. A host may widen or narrow the test in a
    /// derived class; SetFilter then applies it.
    virtual bool FilterAccepts(const CXrefPanelCtrlItem& item) const;
    /// The filter field (its line edit and switch); null before Create.
    QWidget* GetFilterBar() const;

    /// The list view; null until Create.
    CTroveListCtrl* GetListCtrl() const;
    /// The tree view; null until Create.
    CXrefTreeCtrl* GetTreeCtrl() const;
    /// The preview pane; null until Create.
    CXrefPreview* GetPreviewCtrl() const;
    /// The details list (control id 30201); null until Create.
    CXrefPropListCtrl* GetDetailsCtrl() const;
    /// The upper group (list and tree pages), the lower group (details and preview pages) and
    /// the splitter that holds them; null until Create.
    CXrefGroupCtrl* GetUpperGroupCtrl() const;
    CXrefGroupCtrl* GetLowerGroupCtrl() const;
    CXrefCoupledGroupCtrl* GetCoupledGroupCtrl() const;
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

    /// Places the tool bar, the message strip and the groups for a @p cx x @p cy panel.
    void OnSize(unsigned type, int cx, int cy);
    /// A group brings @p pane to front or into view (@p flags has CZuUiGroupCtrl::PaneShown or
    /// PaneRevealed) or sends it away: the stored view type follows the page in front, and the
    /// preview coming to front is filled from the selection. Returns 0.
    int OnPaneVisibilityChanging(QWidget* pane, unsigned flags);
    /// A mouse press in the client area (@p hitTest 1, or 221 and above for the framework's own
    /// areas) draws the group under the pointer active and the other inactive; a press outside
    /// both groups draws neither active. Returns 1, the usual activation.
    int OnMouseActivate(QWidget* top, unsigned hitTest, unsigned message);

    void resizeEvent(QResizeEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    friend void ItemPanel::ItemGoing(CXrefPanelCtrl* panel, CXrefPanelCtrlItem& item);

    /// @p item is being destroyed by its owner: nothing of the panel may keep pointing at it.
    void forgetItem(CXrefPanelCtrlItem& item);
    void onTreeItemToBeDeleted(CXrefPanelCtrlItem* item);
    void onContextMenu(QWidget* source, const QPoint& point,
                       const std::vector<CXrefPanelCtrlItem*>& items, bool flag);
    /// Hooks the three edit events of @p source (list, tree or details list).
    template <class Source> void hookEdits(Source* source);
    void buildStateImageLists(bool listFlag, bool treeFlag);
    void unhookChildren();
    void applyViewTypes();
    void setToolTipChoice(int style, int size);
    void runToolTipCommand(unsigned command);

    std::unique_ptr<CXrefPanelCtrlPrivate> const d;
};
