#pragma once

#include "kvxreftroveui_export.h"

#include "panel/ListViewColumn.h"
#include "views/TroveListRow_p.h"

#include <QAbstractTableModel>
#include <QHash>
#include <QStringList>

#include <algorithm>
#include <deque>
#include <functional>
#include <memory>
#include <vector>

class ChangeCoalescer;
class CTroveListCtrlItem;
class CTroveListSorter;

namespace Util {
class DateTime;
}

/// The list view's rows. Each row's item data is a CTroveListCtrlItem record, and the model keeps
/// every record's row index current, so rows are found from items in constant time.
///
/// Row and column arguments out of range are ignored (reads give empty texts, -2 images, 0
/// state), like writes to a missing list row.
class KVXREFTROVEUI_TEST_EXPORT CTroveListModel : public QAbstractTableModel
{
    Q_OBJECT
public:
    static constexpr int kColumnCount = Trove::ListViewColumn::Count;
    static constexpr int kTypeIconColumn = Trove::ListViewColumn::TypeIcon;
    static constexpr int kStatusColumn = Trove::ListViewColumn::Status;

    explicit CTroveListModel(QObject* parent = nullptr);
    ~CTroveListModel() override;

    int rowCount(const QModelIndex& parent = QModelIndex()) const override;
    int columnCount(const QModelIndex& parent = QModelIndex()) const override;
    QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
    QVariant headerData(int section, Qt::Orientation orientation,
                        int role = Qt::DisplayRole) const override;
    Qt::ItemFlags flags(const QModelIndex& index) const override;

    /// The number of rows, not counting those removed in an open removal batch.
    int RowCount() const { return int(m_rows.size()) - m_removedRows; }
    /// Appends a row whose item data is @p data; returns its index.
    int AppendRow(CTroveListCtrlItem& data);
    /// Removes @p row. Inside a removal batch the row only loses its item data and the other
    /// rows keep their indexes until the batch ends.
    bool RemoveRow(int row);
    void RemoveAllRows();
    const CTroveListRow* Row(int row) const;
    /// The row whose item data is @p data, or -1.
    int FindRow(const CTroveListCtrlItem* data) const;

    QString CellText(int row, int column) const;
    bool SetCellText(int row, int column, const QString& text);
    /// Column 4 as a byte count, shown as a size text.
    bool SetCellBytes(int row, std::int64_t bytes);
    /// Column 6 as a date, shown in the general date-and-time form.
    bool SetCellDate(int row, const Util::DateTime& date);

    /// The image of sub-item @p column (only columns 1 and 3 carry one).
    int SubItemImage(int row, int column) const;
    bool SetSubItemImage(int row, int column, int image);

    /// The state word of @p row under @p mask.
    unsigned ItemState(int row, unsigned mask) const;
    /// Writes the @p mask bits of @p state; row -1 writes every row.
    bool SetItemState(int row, unsigned state, unsigned mask);

    /// Puts the rows in the order @p lessThan gives (stable), renumbering every record.
    void SortRows(const std::function<bool(const CTroveListRow&, const CTroveListRow&)>& lessThan);
    /// Moves the rows into @p order, where order[i] is the row that goes to place i: one pass
    /// over the rows, whatever decided the order. Selection, records and the views' current and
    /// persistent indexes follow their rows. An order that is not a permutation of every row is
    /// refused (false).
    bool ApplyOrder(const std::vector<int>& order);

    // --- Selection ------------------------------------------------------------------------------
    //
    // Each row keeps its selected state itself; the views draw it and the list walks it. A
    // selection of 50,000 scattered rows then costs a bit per row, where a range-based selection
    // model would make every repaint and every read walk 50,000 ranges. Every change emits
    // rowSelectionChanged once.

    bool IsSelected(int row) const;
    /// Changes one row; false when it already was in that state or there is no such row.
    bool SetSelected(int row, bool selected);
    /// Changes the rows @p first to @p last (clamped) in one pass.
    void SetRangeSelected(int first, int last, bool selected);
    /// Every row becomes selected exactly when @p selected(row) says so, in one pass.
    template <typename Predicate> void AssignSelection(Predicate selected)
    {
        int count = 0;
        bool changed = false;
        int low = int(m_rows.size());
        int high = -1;
        for (int row = 0; row < int(m_rows.size()); ++row) {
            CTroveListRow& r = m_rows[row];
            const bool want = r.IsSelectable() && selected(row);
            if (want != r.IsSelected()) {
                r.flags ^= CTroveListRow::Selected;
                changed = true;
            }
            if (want) {
                low = std::min(low, row);
                high = row;
            }
            count += want;
        }
        m_selectedCount = count;
        m_spanLow = low;
        m_spanHigh = high;
        if (changed)
            emit rowSelectionChanged();
    }
    /// Makes @p row the one selected row (none for an invalid row). Costs the span of the
    /// selection it replaces, not the whole list: a click among many rows stays cheap.
    void SelectOnly(int row);
    int SelectedCount() const { return m_selectedCount; }
    /// Calls @p visit(row, record) for each selected row, in ascending order.
    template <typename Visit> void ForEachSelected(Visit visit) const
    {
        int left = m_selectedCount;
        const int end = std::min(m_spanHigh + 1, int(m_rows.size()));
        for (int row = std::max(0, m_spanLow); left > 0 && row < end; ++row) {
            const CTroveListRow& r = m_rows[std::size_t(row)];
            if (r.IsSelected()) {
                visit(row, r.data);
                --left;
            }
        }
    }
    /// The selected rows in ascending order.
    std::vector<int> SelectedRows() const;
    /// The first and the last selected row, or -1.
    int FirstSelectedRow() const;
    int LastSelectedRow() const;

    /// The header texts of the eight columns.
    void SetHeaderTexts(const QStringList& texts);

    /// While a batch is open, appended rows are kept but not yet announced to the views: a fill
    /// of 100,000 rows is then one insertion for them. Removing or sorting rows ends the batch's
    /// quiet part first. Calls nest.
    void BeginBatch();
    void EndBatch();
    bool InBatch() const { return m_batchDepth > 0; }

    /// While a removal batch is open, removed rows stay in place without item data; the batch's
    /// end takes them all out in one pass. Removing a subtree of thousands of references is then
    /// linear instead of shifting every later row once per reference. Calls nest.
    void BeginRemovals();
    void EndRemovals();

    /// Cell writes are announced (dataChanged) in one batch when control returns to the event
    /// loop; this announces them now.
    void FlushChanges();

    // --- Filter ---------------------------------------------------------------------------------
    //
    // A filter leaves rows out of what the views see without taking them out of the list: their
    // records, row indexes, texts and sort places stay, so the list's own API and the items keep
    // working on every row. The views see only the shown rows, in the same order; a model index
    // names a shown row (use RowOf and IndexOfRow to cross over). A hidden row is never selected.

    /// Whether @p shows lets a row be shown.
    using RowFilter = std::function<bool(const CTroveListRow&)>;
    /// Shows the rows @p shows accepts and hides the others, dropping their selection; an empty
    /// filter shows every row. Rows appended or written while a filter is on are tested again
    /// when control returns to the event loop. Returns whether the selection changed.
    bool SetRowFilter(RowFilter shows);
    bool IsFiltered() const { return bool(m_filter); }
    /// Tests every row again against the filter; returns whether the selection changed.
    bool Refilter();
    /// The number of rows the views see.
    int ShownCount() const { return rowCount(); }
    bool IsShown(int row) const { return ViewRow(row) >= 0; }
    /// Where the views see @p row, or -1 when it is hidden or not yet announced.
    int ViewRow(int row) const;
    /// The row the views see at @p viewRow, or -1.
    int StorageRow(int viewRow) const;
    /// The row @p index names, or -1.
    int RowOf(const QModelIndex& index) const
    {
        return index.isValid() && index.model() == this ? StorageRow(index.row()) : -1;
    }
    /// The index of @p row's cell @p column, invalid when the row is hidden.
    QModelIndex IndexOfRow(int row, int column) const;

signals:
    /// Some row's selected state changed.
    void rowSelectionChanged();
    /// The filter was applied again after rows changed; @p selectionChanged says whether it
    /// took selected rows out of the selection.
    void rowsRefiltered(bool selectionChanged);

private:
    friend class CTroveListSorter;

    void rowChanged(int row, int firstColumn, int lastColumn);
    void announceChanges(int first, int last);
    /// The shared-text index of @p text (0 for the empty text), or -1 when the table is full.
    int sharedTextId(const QString& text);

    std::deque<CTroveListRow> m_rows;
    QStringList m_headerTexts;
    QStringList m_sharedTexts{QString()};
    QHash<QString, int> m_sharedTextIds;
    void announceRows();
    /// Takes out the rows removed during a removal batch.
    void dropRemovedRows();

    int m_batchDepth = 0;
    int m_removalDepth = 0;
    int m_removedRows = 0;
    int m_announcedRows = 0;
    int m_selectedCount = 0;
    // Every selected row lies in [m_spanLow, m_spanHigh]; the span may be wider than the
    // selection. Row moves and removals widen it to the whole list.
    int m_spanLow = 0;
    int m_spanHigh = -1;
    void widenSpan(int low, int high);

    RowFilter m_filter;
    bool m_mapped = false; ///< the views see the rows through m_shown and m_viewOf
    // While mapped: the shown rows in order (view row -> row) and each row's view row (-1 for
    // hidden). Both cover the announced rows only.
    std::vector<int> m_shown;
    std::vector<int> m_viewOf;
    bool m_refilterPosted = false;
    /// Marks the filter as out of date after a row was appended or written.
    void filterMayChange();
    /// Recomputes m_shown and m_viewOf from the rows' Hidden flags.
    void rebuildShown();
    /// Runs @p change while the views are told that the layout changes: @p change returns
    /// where each row before it went (-1: removed; empty: nowhere moved).
    void relayout(const std::function<std::vector<int>()>& change);
    void spanWholeList();
    /// Puts the rows in @p order (a checked permutation) and renumbers their records.
    void moveRows(const std::vector<int>& order);
    std::unique_ptr<ChangeCoalescer> m_changes;
};
