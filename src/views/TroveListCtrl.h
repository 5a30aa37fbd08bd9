#pragma once

#include "kvxreftroveui_export.h"

#include "framework/ZuUiImageList.h"
#include "panel/MenuItems.h"
#include "panel/XrefProperties.h"

#include <QPoint>
#include <QTreeView>

#include <boost/shared_ptr.hpp>

#include <functional>
#include <memory>
#include <string>
#include <vector>

class CTroveListCtrlItem;
class CTroveListCtrlPrivate;
class CTroveListModel;
class CXrefPanelCtrlItem;

/// The panel's flat view of the references: one row per referenced file, eight columns (see
/// Trove::ListViewColumn), sortable by any column, with multi-selection by click, Shift and
/// Ctrl click, keyboard and rubber band, per-cell tool tips, in-place renaming and a one-click
/// toggle of the reference type.
///
/// The list decides nothing about references: every gesture becomes one of its eight signals,
/// raised synchronously, which the panel connects. Points in signals are in the coordinates of
/// the list widget itself (header included), never of its viewport (design.md, decision 5).
///
/// Rows are records in CTroveListModel, and each row keeps its own selected state: Qt's
/// selection model is not used (it stays empty), and the list's own gestures replace Qt's.
/// While the repository user is logged out (TroveUI::RmxImageSettings), the host drawing's row
/// never takes part in a selection of several rows.
class KVXREFTROVEUI_EXPORT CTroveListCtrl : public QTreeView
{
    Q_OBJECT
public:
    using ItemList = std::vector<CXrefPanelCtrlItem*>;

    /// @p stateImageFlag is handed to the panel when it fills the state image list; @p sortColumn
    /// (-1: none, which becomes the reference name) and @p ascending are the persisted sort
    /// settings. The secondary sort column, which orders rows of equal type, is the reference
    /// name.
    CTroveListCtrl(bool stateImageFlag, int sortColumn, bool ascending, QWidget* parent = nullptr);
    ~CTroveListCtrl() override;

    CTroveListModel& Model() const;

    // --- Rows -----------------------------------------------------------------------------------

    /// Appends a row for @p item and returns its new link record, for the panel to hand to the
    /// item. @p hostDrawing marks the host drawing's own row (the special row).
    boost::shared_ptr<CTroveListCtrlItem> InsertItem(CXrefPanelCtrlItem& item, bool hostDrawing);
    /// Removes the row whose item data is @p record.
    bool DeleteRow(const CTroveListCtrlItem& record);
    void DeleteAllItems();
    int GetItemCount() const;
    /// The row of the host drawing's item, or -1.
    int SpecialRow() const;

    /// The item that stands for @p row (the lowest-address sharer), or null.
    CXrefPanelCtrlItem* ItemOfRow(int row) const;
    /// The item that stands for the row of @p index, or null.
    CXrefPanelCtrlItem* ItemFromIndex(const QModelIndex& index) const;
    /// The index of @p item's row in column @p column; invalid when the item has no row here.
    QModelIndex IndexFromItem(const CXrefPanelCtrlItem& item, int column = 0) const;
    /// The item of the row under @p point, in viewport coordinates, or null.
    CXrefPanelCtrlItem* ItemAt(const QPoint& point) const;

    // --- Filter ---------------------------------------------------------------------------------

    /// Whether a row's item is to be shown.
    using ItemFilter = std::function<bool(const CXrefPanelCtrlItem& item)>;
    /// Shows only the rows whose item @p shows accepts; an empty function shows every row. The
    /// other rows keep their place, their item data and their sort order but are neither drawn
    /// nor selectable; the selected ones among them leave the selection, and ItemsSelected
    /// reports that (origin true) when the list is visible. Rows inserted or changed later are
    /// tested when control returns to the event loop.
    void SetItemFilter(ItemFilter shows);
    bool IsItemFilterOn() const;
    /// Whether @p row is drawn: it exists and the filter (if any) shows it. A filter set while
    /// the list is out of sight takes effect when the list is shown.
    bool IsRowShown(int row) const;
    /// The number of rows drawn.
    int GetShownCount() const;

    // --- Selection ------------------------------------------------------------------------------

    /// The items of the selected rows, in ascending row order.
    ItemList GetSelectedItems() const;
    int GetSelectedCount() const;
    bool IsRowSelected(int row) const;
    /// Makes @p item's row the one selected row and the focused one; when the list is visible,
    /// ItemsSelected follows. Without a row here, the selection is only cleared.
    void SelectItem(const CXrefPanelCtrlItem& item);
    /// Makes the rows of @p items the selected ones and the first of them the focused row;
    /// raises nothing. Items without a row here are passed over.
    void SetSelectedItems(const ItemList& items);
    /// Selects or deselects @p row when its state differs, with @p originFlag as the selection
    /// origin in force during the change; the origin is true again afterwards. Raises nothing.
    bool SetItemSelected(int row, bool selected, bool originFlag);
    /// Selects every row, except the host drawing's while the user is logged out, and raises
    /// ItemsSelected with origin false (after Shift and Ctrl are released, when held).
    void SelectAll();
    /// Deselects every row; raises nothing.
    void ClearSelection();
    /// The origin flag ItemsSelected carries: false from a button or key press until the next
    /// key release.
    bool GetSelectionOrigin() const;
    /// While set, the list raises no ItemsSelected: the panel sets it around the selections it
    /// makes itself. The next mouse or key press in the list clears it, so that what the user
    /// does is always reported (design.md, decision 6).
    void SetIgnoreSelectionNotifications(bool ignore);
    bool GetIgnoreSelectionNotifications() const;

    // --- Sorting --------------------------------------------------------------------------------

    /// Sorts the rows by the sort column and direction now. Sorting by the type icon or the
    /// type orders rows of equal type by name in the same direction; rows whose item is not a
    /// sort item stay first.
    void SortItems();
    /// Shows the sort arrow of the current direction on @p column and takes it off the others.
    void SetSortArrow(int column);
    int GetSortColumn() const;
    int GetSecondarySortColumn() const;
    bool IsSortAscending() const;

    // --- Columns --------------------------------------------------------------------------------

    /// The eight column widths in device-independent pixels. While the repository-state column
    /// is hidden, its saved width is reported.
    std::vector<int> GetColumnDipWidths() const;
    /// Applies column widths given in device-independent pixels; missing or negative entries take
    /// the defaults. The last column is never set: it always fills the rest of the width, but is
    /// never narrower than its header text.
    void SetColumnDipWidths(const std::vector<int>& widths);
    /// The default width of each column, in device-independent pixels.
    static int DefaultColumnDipWidth(int column);
    /// The repository-state column shows while the list is empty or its first row has a state
    /// image; otherwise it is 0 pixels wide and cannot be dragged open.
    bool IsTroveStateColumnInUse() const;

    // --- Editing --------------------------------------------------------------------------------

    /// Starts an in-place edit of @p column in @p row: the name (an editor over the cell) or the
    /// type (toggled at once between its two texts). False when the column cannot be edited or
    /// the item does not allow it.
    bool EditSubItem(int row, int column);
    /// True from the start of an in-place edit until the editor reports its end.
    bool IsEditing() const;

    // --- Commands and tips ----------------------------------------------------------------------

    /// A command chosen in the list's context menu. The list's own commands are raised as
    /// ContextMenuSelection with the selected items; command 18 selects all here. Returns false
    /// for a command the list does not take.
    bool OnContextMenuCommand(int command);
    /// The answer to an info-tip query for a cell: the repository-state description for column 0
    /// while that column is in use, cut to @p capacity - 1 characters; otherwise empty.
    QString GetInfoTip(int row, int column, int capacity) const;

    // --- Image lists ----------------------------------------------------------------------------

    /// The image lists the type and status icons are drawn from, for the light and the dark
    /// theme; the view does not own them. Without them the icon cells stay empty.
    void SetItemImageLists(const CZuUiImageList* light, const CZuUiImageList* dark);
    /// The item image list for the theme in use, or null.
    const CZuUiImageList* ItemImageList() const;
    CZuUiImageList& StateImageList();
    const CZuUiImageList& StateImageList() const;
    bool GetStateImageFlag() const;
    void SetStateImageFlag(bool flag);

signals:
    /// A context menu is wanted at @p point (list coordinates) for @p items; @p flag is always
    /// true from the list.
    void ContextMenu(QWidget* list, const QPoint& point, const ItemList& items, bool flag);
    /// The user chose @p item in the list's context menu for @p items.
    void ContextMenuSelection(Trove::MenuItems item, const ItemList& items);
    /// The selection is now @p items (ascending rows); @p flag is the selection origin.
    void ItemsSelected(const ItemList& items, bool flag);
    /// The status cell of @p item's row was double-clicked.
    void StatusColumnDoubleClicked(CXrefPanelCtrlItem* item);
    /// The user clicked a column header: the new sort column and direction, before the sort.
    void SortCriteriaChanged(int column, bool ascending);
    /// An in-place edit of @p property begins; @p before is the cell's text.
    void PropertyEditStarting(Trove::XrefProperties property, const std::wstring& before);
    /// An in-place edit ended with the non-empty text @p after.
    void PropertyEdited(Trove::XrefProperties property, const std::wstring& before,
                        const std::wstring& after);
    /// An in-place edit ended with no text.
    void PropertyEditAborted(Trove::XrefProperties property);

protected:
    void showEvent(QShowEvent* event) override;
    bool event(QEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;
    bool viewportEvent(QEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void keyReleaseEvent(QKeyEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void rowsInserted(const QModelIndex& parent, int start, int end) override;
    /// Typing does not search: a found row would change the selection behind the panel's back.
    void keyboardSearch(const QString& search) override;

private:
    friend class CTroveListCtrlPrivate;
    friend class CTroveListDelegate;

    const std::unique_ptr<CTroveListCtrlPrivate> d;
};
