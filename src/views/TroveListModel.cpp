#include "views/TroveListModel_p.h"

#include "items/TroveListCtrlItem.h"
#include "panel/ListViewColumn.h"
#include "services/TroveUIFunctions.h"
#include "util/DateTime.h"
#include "util/FormatMsg.h"
#include "views/ChangeCoalescer_p.h"
#include "views/TroveListDateKey_p.h"

#include <algorithm>
#include <numeric>

namespace {

using Col = Trove::ListViewColumn;

// Status and type texts repeat across rows, so rows keep a small index into one table of them.
// The table is bounded; texts beyond it are kept in the row itself.
constexpr int kMaxSharedTexts = 4096;

// Index of a free text column in CTroveListRow::otherTexts, or -1.
int otherTextSlot(int column)
{
    switch (column) {
    case Col::TroveState:
        return 0;
    case Col::TypeIcon:
        return 1;
    case Col::Status:
        return 2;
    case Col::Size:
        return 3;
    case Col::Type:
        return 4;
    case Col::Date:
        return 5;
    default:
        return -1;
    }
}

void setOtherText(CTroveListRow& row, int column, const QString& text)
{
    if (text.isEmpty() && !row.otherTexts)
        return;
    if (!row.otherTexts)
        row.otherTexts = std::make_unique<std::array<QString, 6>>();
    (*row.otherTexts)[otherTextSlot(column)] = text;
}

QString otherText(const CTroveListRow& row, int column)
{
    const int slot = otherTextSlot(column);
    return row.otherTexts && slot >= 0 ? (*row.otherTexts)[slot] : QString();
}

} // namespace

CTroveListModel::CTroveListModel(QObject* parent)
    : QAbstractTableModel(parent),
      m_changes(std::make_unique<ChangeCoalescer>(
          this, [this](const void*, int first, int last) { announceChanges(first, last); }))
{}

CTroveListModel::~CTroveListModel()
{
    // Records outlive the list when items still hold them; they must not reach back into it.
    for (CTroveListRow& row : m_rows) {
        if (row.data) {
            row.data->m_row = -1;
            row.data->m_listCtrl = nullptr;
        }
    }
}

int CTroveListModel::rowCount(const QModelIndex& parent) const
{
    if (parent.isValid())
        return 0;
    return m_mapped ? int(m_shown.size()) : m_announcedRows;
}

int CTroveListModel::columnCount(const QModelIndex& parent) const
{
    return parent.isValid() ? 0 : kColumnCount;
}

QVariant CTroveListModel::data(const QModelIndex& index, int role) const
{
    if (!index.isValid())
        return {};
    // No tool tip role: a cell's tip, if any, is chosen by the list from the host's tool-tip
    // setting, never a plain copy of the cell's text.
    switch (role) {
    case Qt::DisplayRole:
    case Qt::AccessibleTextRole:
        return CellText(RowOf(index), index.column());
    default:
        return {};
    }
}

QVariant CTroveListModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || section < 0 || section >= kColumnCount)
        return {};
    if (role == Qt::DisplayRole)
        return section < m_headerTexts.size() ? m_headerTexts[section] : QString();
    if (role == Qt::TextAlignmentRole)
        return int((section <= Col::TypeIcon ? Qt::AlignHCenter : Qt::AlignLeft) |
                   Qt::AlignVCenter);
    return {};
}

Qt::ItemFlags CTroveListModel::flags(const QModelIndex& index) const
{
    if (!index.isValid())
        return Qt::NoItemFlags;
    return Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemNeverHasChildren;
}

int CTroveListModel::AppendRow(CTroveListCtrlItem& data)
{
    const int row = int(m_rows.size());
    if (m_batchDepth > 0) {
        m_rows.emplace_back();
        m_rows.back().data = &data;
        data.m_row = row;
        return row;
    }
    if (m_mapped) {
        // A new row is shown until the filter has seen its texts.
        const int view = int(m_shown.size());
        beginInsertRows(QModelIndex(), view, view);
        m_rows.emplace_back();
        m_rows.back().data = &data;
        data.m_row = row;
        m_announcedRows = int(m_rows.size());
        m_shown.push_back(row);
        m_viewOf.push_back(view);
        endInsertRows();
        filterMayChange();
        return row;
    }
    beginInsertRows(QModelIndex(), row, row);
    m_rows.emplace_back();
    m_rows.back().data = &data;
    data.m_row = row;
    m_announcedRows = int(m_rows.size());
    endInsertRows();
    return row;
}

bool CTroveListModel::RemoveRow(int row)
{
    if (row < 0 || row >= int(m_rows.size()) || !m_rows[row].data)
        return false;
    if (m_rows[row].IsSelected()) {
        m_rows[row].flags &= ~CTroveListRow::Selected;
        --m_selectedCount;
    }
    if (m_removalDepth > 0) {
        m_rows[row].data->m_row = -1;
        m_rows[row].data = nullptr;
        ++m_removedRows;
        return true;
    }
    announceRows();
    if (m_mapped) {
        relayout([this, row] {
            m_rows[row].data->m_row = -1;
            m_rows.erase(m_rows.begin() + row);
            std::vector<int> moved(m_rows.size() + 1);
            for (int i = 0; i < int(moved.size()); ++i)
                moved[i] = i < row ? i : i == row ? -1 : i - 1;
            for (int i = row; i < int(m_rows.size()); ++i) {
                if (m_rows[i].data)
                    m_rows[i].data->m_row = i;
            }
            m_announcedRows = int(m_rows.size());
            spanWholeList();
            return moved;
        });
        return true;
    }
    beginRemoveRows(QModelIndex(), row, row);
    if (CTroveListCtrlItem* data = m_rows[row].data)
        data->m_row = -1;
    m_rows.erase(m_rows.begin() + row);
    spanWholeList();
    for (int i = row; i < int(m_rows.size()); ++i) {
        if (m_rows[i].data)
            m_rows[i].data->m_row = i;
    }
    m_announcedRows = int(m_rows.size());
    endRemoveRows();
    return true;
}

void CTroveListModel::RemoveAllRows()
{
    if (m_rows.empty())
        return;
    beginResetModel();
    for (CTroveListRow& row : m_rows) {
        if (row.data)
            row.data->m_row = -1;
    }
    m_rows.clear();
    m_announcedRows = 0;
    m_removedRows = 0;
    m_selectedCount = 0;
    m_spanLow = 0;
    m_spanHigh = -1;
    m_sharedTexts = QStringList{QString()};
    m_sharedTextIds.clear();
    rebuildShown();
    endResetModel();
}

const CTroveListRow* CTroveListModel::Row(int row) const
{
    return row >= 0 && row < int(m_rows.size()) ? &m_rows[row] : nullptr;
}

int CTroveListModel::FindRow(const CTroveListCtrlItem* data) const
{
    if (!data)
        return -1;
    const int row = data->Row();
    return row >= 0 && row < int(m_rows.size()) && m_rows[row].data == data ? row : -1;
}

QString CTroveListModel::CellText(int row, int column) const
{
    const CTroveListRow* r = Row(row);
    if (!r)
        return {};
    switch (column) {
    case Col::ReferenceName:
        return r->name;
    case Col::Status:
        return r->statusText ? m_sharedTexts[r->statusText] : otherText(*r, column);
    case Col::Size:
        if (r->sizeKind == CTroveListRow::CellKind::Value)
            return Util::ToQString(TroveUI::FormatByteSize(r->bytes));
        return otherText(*r, column);
    case Col::Type:
        return r->typeText ? m_sharedTexts[r->typeText] : otherText(*r, column);
    case Col::Date:
        if (r->dateKind == CTroveListRow::CellKind::Value)
            return TroveListDateKey::FromMsecs(r->dateMsecs).ToString(QStringLiteral("G"));
        return otherText(*r, column);
    case Col::SavedPath:
        return r->savedPath;
    default:
        return otherText(*r, column);
    }
}

bool CTroveListModel::SetCellText(int row, int column, const QString& text)
{
    if (row < 0 || row >= int(m_rows.size()) || column < 0 || column >= kColumnCount)
        return false;
    CTroveListRow& r = m_rows[row];
    switch (column) {
    case Col::ReferenceName:
        r.name = text;
        r.flags |= CTroveListRow::NameRankStale;
        break;
    case Col::Status:
    case Col::Type: {
        const int id = sharedTextId(text);
        (column == Col::Status ? r.statusText : r.typeText) = std::uint16_t(std::max(id, 0));
        setOtherText(r, column, id < 0 ? text : QString());
        break;
    }
    case Col::SavedPath:
        r.savedPath = text;
        r.flags |= CTroveListRow::PathRankStale;
        break;
    default: {
        if (column == Col::Size)
            r.sizeKind =
                text.isEmpty() ? CTroveListRow::CellKind::Empty : CTroveListRow::CellKind::Text;
        else if (column == Col::Date) {
            r.dateKind =
                text.isEmpty() ? CTroveListRow::CellKind::Empty : CTroveListRow::CellKind::Text;
            // The text is read as a date once, here; sorting uses what it gave.
            r.dateMsecs = TroveListDateKey::FromText(text);
        }
        setOtherText(r, column, text);
        break;
    }
    }
    rowChanged(row, column, column);
    return true;
}

bool CTroveListModel::SetCellBytes(int row, std::int64_t bytes)
{
    if (row < 0 || row >= int(m_rows.size()))
        return false;
    CTroveListRow& r = m_rows[row];
    r.bytes = bytes;
    r.sizeKind = CTroveListRow::CellKind::Value;
    if (r.otherTexts)
        (*r.otherTexts)[otherTextSlot(Col::Size)].clear();
    rowChanged(row, Col::Size, Col::Size);
    return true;
}

bool CTroveListModel::SetCellDate(int row, const Util::DateTime& date)
{
    if (row < 0 || row >= int(m_rows.size()))
        return false;
    if (!date.IsValid())
        return SetCellText(row, Col::Date, QString());
    CTroveListRow& r = m_rows[row];
    r.dateMsecs = TroveListDateKey::ToMsecs(date);
    r.dateKind = CTroveListRow::CellKind::Value;
    if (r.otherTexts)
        (*r.otherTexts)[otherTextSlot(Col::Date)].clear();
    rowChanged(row, Col::Date, Col::Date);
    return true;
}

int CTroveListModel::SubItemImage(int row, int column) const
{
    const CTroveListRow* r = Row(row);
    if (!r)
        return -2;
    if (column == kTypeIconColumn)
        return r->typeImage;
    if (column == kStatusColumn)
        return r->statusImage;
    return -2;
}

bool CTroveListModel::SetSubItemImage(int row, int column, int image)
{
    if (row < 0 || row >= int(m_rows.size()))
        return false;
    if (column == kTypeIconColumn)
        m_rows[row].typeImage = image;
    else if (column == kStatusColumn)
        m_rows[row].statusImage = image;
    else
        return false;
    rowChanged(row, column, column);
    return true;
}

unsigned CTroveListModel::ItemState(int row, unsigned mask) const
{
    const CTroveListRow* r = Row(row);
    return r ? r->state.Masked(mask) : 0u;
}

bool CTroveListModel::SetItemState(int row, unsigned state, unsigned mask)
{
    const auto apply = [&](CTroveListRow& r) { r.state.Write(state, mask); };
    if (row == -1) {
        if (m_rows.empty())
            return true;
        for (CTroveListRow& r : m_rows)
            apply(r);
        if (rowCount() > 0)
            emit dataChanged(index(0, 0), index(rowCount() - 1, kColumnCount - 1));
        filterMayChange();
        return true;
    }
    if (row < 0 || row >= int(m_rows.size()))
        return false;
    apply(m_rows[row]);
    rowChanged(row, 0, kColumnCount - 1);
    return true;
}

void CTroveListModel::SortRows(
    const std::function<bool(const CTroveListRow&, const CTroveListRow&)>& lessThan)
{
    dropRemovedRows();
    std::vector<int> order(m_rows.size());
    std::iota(order.begin(), order.end(), 0);
    std::stable_sort(order.begin(), order.end(),
                     [&](int a, int b) { return lessThan(m_rows[a], m_rows[b]); });
    ApplyOrder(order);
}

bool CTroveListModel::ApplyOrder(const std::vector<int>& order)
{
    dropRemovedRows();
    announceRows();
    const int count = int(m_rows.size());
    if (int(order.size()) != count)
        return false;
    std::vector<int> newRowOf(count, -1);
    bool identity = true;
    for (int i = 0; i < count; ++i) {
        const int from = order[i];
        if (from < 0 || from >= count || newRowOf[from] >= 0)
            return false;
        newRowOf[from] = i;
        identity = identity && from == i;
    }
    if (identity)
        return true;

    if (m_mapped) {
        relayout([&] {
            moveRows(order);
            return newRowOf;
        });
        return true;
    }
    // Pending cell announcements name rows by their old places.
    FlushChanges();
    emit layoutAboutToBeChanged({}, QAbstractItemModel::VerticalSortHint);
    moveRows(order);
    const QModelIndexList before = persistentIndexList();
    QModelIndexList after;
    after.reserve(before.size());
    for (const QModelIndex& index : before)
        after.push_back(this->index(newRowOf[index.row()], index.column()));
    changePersistentIndexList(before, after);
    emit layoutChanged({}, QAbstractItemModel::VerticalSortHint);
    return true;
}

void CTroveListModel::moveRows(const std::vector<int>& order)
{
    const int count = int(order.size());
    // The rows are read in their new order and written one after the other. The rows and their
    // records lie all over the heap: asking for them a few rows ahead keeps the pass from
    // waiting on each one in turn.
    constexpr int kAhead = 16;
    std::deque<CTroveListRow> sorted;
    for (int i = 0; i < count; ++i) {
        if (i + kAhead < count)
            __builtin_prefetch(&m_rows[order[std::size_t(i + kAhead)]]);
        if (i + kAhead / 2 < count) {
            if (const CTroveListCtrlItem* ahead = m_rows[order[std::size_t(i + kAhead / 2)]].data)
                __builtin_prefetch(ahead);
        }
        sorted.push_back(std::move(m_rows[order[std::size_t(i)]]));
        if (sorted.back().data)
            sorted.back().data->m_row = i;
    }
    m_rows.swap(sorted);
    spanWholeList();
}

bool CTroveListModel::IsSelected(int row) const
{
    const CTroveListRow* r = Row(row);
    return r && r->IsSelected();
}

bool CTroveListModel::SetSelected(int row, bool selected)
{
    if (row < 0 || row >= int(m_rows.size()) || !m_rows[row].data)
        return false;
    if (selected && m_rows[row].IsHidden())
        return false;
    CTroveListRow& r = m_rows[row];
    if (r.IsSelected() == selected)
        return false;
    r.flags ^= CTroveListRow::Selected;
    m_selectedCount += selected ? 1 : -1;
    if (selected)
        widenSpan(row, row);
    emit rowSelectionChanged();
    return true;
}

void CTroveListModel::widenSpan(int low, int high)
{
    // Called after the count took the new rows in: with nothing selected before, the span
    // starts afresh.
    if (m_spanHigh < m_spanLow) {
        m_spanLow = low;
        m_spanHigh = high;
        return;
    }
    m_spanLow = std::min(m_spanLow, low);
    m_spanHigh = std::max(m_spanHigh, high);
}

void CTroveListModel::spanWholeList()
{
    m_spanLow = 0;
    m_spanHigh = int(m_rows.size()) - 1;
}

void CTroveListModel::SelectOnly(int row)
{
    bool changed = false;
    const bool keeps =
        row >= 0 && row < int(m_rows.size()) && m_rows[std::size_t(row)].IsSelected();
    int others = m_selectedCount - (keeps ? 1 : 0);
    const int end = std::min(m_spanHigh + 1, int(m_rows.size()));
    for (int r = std::max(0, m_spanLow); others > 0 && r < end; ++r) {
        if (r != row && m_rows[std::size_t(r)].IsSelected()) {
            m_rows[std::size_t(r)].flags &= ~CTroveListRow::Selected;
            --m_selectedCount;
            --others;
            changed = true;
        }
    }
    m_spanLow = 0;
    m_spanHigh = -1;
    const bool valid =
        row >= 0 && row < int(m_rows.size()) && m_rows[std::size_t(row)].IsSelectable();
    if (valid) {
        CTroveListRow& r = m_rows[std::size_t(row)];
        if (!r.IsSelected()) {
            r.flags |= CTroveListRow::Selected;
            changed = true;
        }
        m_selectedCount = 1;
        m_spanLow = m_spanHigh = row;
    }
    if (changed)
        emit rowSelectionChanged();
}

void CTroveListModel::SetRangeSelected(int first, int last, bool selected)
{
    first = std::max(first, 0);
    last = std::min(last, int(m_rows.size()) - 1);
    bool changed = false;
    for (int row = first; row <= last; ++row) {
        CTroveListRow& r = m_rows[row];
        if (!r.data || r.IsSelected() == selected || (selected && r.IsHidden()))
            continue;
        r.flags ^= CTroveListRow::Selected;
        m_selectedCount += selected ? 1 : -1;
        changed = true;
    }
    if (selected && first <= last)
        widenSpan(first, last);
    if (changed)
        emit rowSelectionChanged();
}

std::vector<int> CTroveListModel::SelectedRows() const
{
    std::vector<int> rows;
    rows.reserve(std::size_t(m_selectedCount));
    ForEachSelected([&rows](int row, const CTroveListCtrlItem*) { rows.push_back(row); });
    return rows;
}

int CTroveListModel::FirstSelectedRow() const
{
    if (m_selectedCount == 0)
        return -1;
    const int end = std::min(m_spanHigh + 1, int(m_rows.size()));
    for (int row = std::max(0, m_spanLow); row < end; ++row) {
        if (m_rows[row].IsSelected())
            return row;
    }
    return -1;
}

int CTroveListModel::LastSelectedRow() const
{
    if (m_selectedCount == 0)
        return -1;
    for (int row = std::min(m_spanHigh, int(m_rows.size()) - 1); row >= std::max(0, m_spanLow);
         --row) {
        if (m_rows[row].IsSelected())
            return row;
    }
    return -1;
}

void CTroveListModel::SetHeaderTexts(const QStringList& texts)
{
    m_headerTexts = texts;
    emit headerDataChanged(Qt::Horizontal, 0, kColumnCount - 1);
}

void CTroveListModel::BeginBatch()
{
    ++m_batchDepth;
}

void CTroveListModel::EndBatch()
{
    if (m_batchDepth > 0 && --m_batchDepth == 0)
        announceRows();
}

void CTroveListModel::BeginRemovals()
{
    ++m_removalDepth;
}

void CTroveListModel::EndRemovals()
{
    if (m_removalDepth > 0 && --m_removalDepth == 0)
        dropRemovedRows();
}

void CTroveListModel::dropRemovedRows()
{
    if (m_removedRows == 0)
        return;
    announceRows();
    FlushChanges();
    // The removed rows as runs of neighbours, last run first so that each removal leaves the
    // rows of the runs still to come where they are.
    std::vector<std::pair<int, int>> runs;
    for (int row = int(m_rows.size()) - 1; row >= 0; --row) {
        if (m_rows[row].data)
            continue;
        if (!runs.empty() && runs.back().first == row + 1)
            runs.back().first = row;
        else
            runs.emplace_back(row, row);
    }
    m_removedRows = 0;
    if (m_mapped) {
        relayout([this] {
            std::vector<int> moved(m_rows.size(), -1);
            int next = 0;
            for (int row = 0; row < int(m_rows.size()); ++row) {
                if (m_rows[row].data)
                    moved[row] = next++;
            }
            m_rows.erase(std::remove_if(m_rows.begin(), m_rows.end(),
                                        [](const CTroveListRow& row) { return !row.data; }),
                         m_rows.end());
            m_announcedRows = int(m_rows.size());
            for (int i = 0; i < int(m_rows.size()); ++i)
                m_rows[i].data->m_row = i;
            spanWholeList();
            return moved;
        });
        return;
    }
    // A few runs (one subtree's rows, inserted together) are announced as they are; many
    // scattered runs would cost the views a pass each, so they get one reset instead. The
    // selection is empty by then: the panel clears it before removing.
    constexpr std::size_t kMaxRuns = 8;
    if (runs.size() <= kMaxRuns) {
        for (const auto& [first, last] : runs) {
            beginRemoveRows(QModelIndex(), first, last);
            m_rows.erase(m_rows.begin() + first, m_rows.begin() + last + 1);
            m_announcedRows = int(m_rows.size());
            endRemoveRows();
        }
    } else {
        beginResetModel();
        m_rows.erase(std::remove_if(m_rows.begin(), m_rows.end(),
                                    [](const CTroveListRow& row) { return !row.data; }),
                     m_rows.end());
        m_announcedRows = int(m_rows.size());
        endResetModel();
    }
    spanWholeList();
    for (int i = runs.back().first; i < int(m_rows.size()); ++i)
        m_rows[i].data->m_row = i;
}

void CTroveListModel::announceRows()
{
    const int count = int(m_rows.size());
    if (m_announcedRows >= count)
        return;
    if (m_mapped) {
        // New rows are shown until the filter has seen their texts.
        const int view = int(m_shown.size());
        beginInsertRows(QModelIndex(), view, view + count - m_announcedRows - 1);
        for (int row = m_announcedRows; row < count; ++row) {
            m_viewOf.push_back(int(m_shown.size()));
            m_shown.push_back(row);
        }
        m_announcedRows = count;
        endInsertRows();
        filterMayChange();
        return;
    }
    beginInsertRows(QModelIndex(), m_announcedRows, count - 1);
    m_announcedRows = count;
    endInsertRows();
}

void CTroveListModel::rowChanged(int row, int, int)
{
    m_changes->Note(nullptr, row);
    filterMayChange();
}

void CTroveListModel::FlushChanges()
{
    m_changes->Flush();
}

void CTroveListModel::announceChanges(int first, int last)
{
    last = std::min(last, m_announcedRows - 1);
    if (first < 0 || first > last)
        return;
    if (m_mapped) {
        // The shown rows keep their order, so the changed ones lie between two searches.
        first = int(std::lower_bound(m_shown.begin(), m_shown.end(), first) - m_shown.begin());
        last = int(std::upper_bound(m_shown.begin(), m_shown.end(), last) - m_shown.begin()) - 1;
        if (first > last)
            return;
    }
    emit dataChanged(index(first, 0), index(last, kColumnCount - 1));
}

int CTroveListModel::sharedTextId(const QString& text)
{
    if (text.isEmpty())
        return 0;
    const auto found = m_sharedTextIds.constFind(text);
    if (found != m_sharedTextIds.constEnd())
        return found.value();
    if (m_sharedTexts.size() >= kMaxSharedTexts)
        return -1;
    m_sharedTexts.push_back(text);
    const int id = int(m_sharedTexts.size()) - 1;
    m_sharedTextIds.insert(text, id);
    return id;
}
