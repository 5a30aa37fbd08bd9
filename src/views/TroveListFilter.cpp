#include "views/TroveListModel_p.h"

#include <QMetaObject>

// The list's filter: which rows the views see. The rows themselves never move or leave for it,
// so everything that names rows (the list's API, the records, sorting) is untouched; only the
// view side of the model maps its row numbers through m_shown.

int CTroveListModel::ViewRow(int row) const
{
    if (!m_mapped)
        return row >= 0 && row < m_announcedRows ? row : -1;
    return row >= 0 && row < int(m_viewOf.size()) ? m_viewOf[std::size_t(row)] : -1;
}

int CTroveListModel::StorageRow(int viewRow) const
{
    if (!m_mapped)
        return viewRow >= 0 && viewRow < m_announcedRows ? viewRow : -1;
    return viewRow >= 0 && viewRow < int(m_shown.size()) ? m_shown[std::size_t(viewRow)] : -1;
}

QModelIndex CTroveListModel::IndexOfRow(int row, int column) const
{
    const int view = ViewRow(row);
    return view >= 0 ? index(view, column) : QModelIndex();
}

bool CTroveListModel::SetRowFilter(RowFilter shows)
{
    if (!shows && !m_filter)
        return false;
    m_filter = std::move(shows);
    return Refilter();
}

bool CTroveListModel::Refilter()
{
    m_refilterPosted = false;
    // Flags first: the views need the layout change only when a row really appears or goes.
    bool selectionChanged = false;
    bool hiddenChanged = false;
    for (int row = 0; row < m_announcedRows; ++row) {
        CTroveListRow& r = m_rows[std::size_t(row)];
        const bool hide = m_filter && r.data && !m_filter(r);
        if (hide == r.IsHidden())
            continue;
        hiddenChanged = true;
        r.flags ^= CTroveListRow::Hidden;
        if (hide && r.IsSelected()) {
            r.flags &= ~CTroveListRow::Selected;
            --m_selectedCount;
            selectionChanged = true;
        }
    }
    if (hiddenChanged || m_mapped != bool(m_filter))
        relayout([] { return std::vector<int>(); });
    if (selectionChanged)
        emit rowSelectionChanged();
    return selectionChanged;
}

void CTroveListModel::filterMayChange()
{
    if (!m_filter || m_refilterPosted)
        return;
    m_refilterPosted = true;
    QMetaObject::invokeMethod(
        this,
        [this] {
            // Refilter may have run in the meantime.
            if (!m_refilterPosted)
                return;
            const bool selectionChanged = Refilter();
            emit rowsRefiltered(selectionChanged);
        },
        Qt::QueuedConnection);
}

void CTroveListModel::rebuildShown()
{
    m_mapped = bool(m_filter);
    m_shown.clear();
    m_viewOf.clear();
    if (!m_mapped)
        return;
    m_viewOf.assign(std::size_t(m_announcedRows), -1);
    for (int row = 0; row < m_announcedRows; ++row) {
        if (!m_rows[std::size_t(row)].IsHidden()) {
            m_viewOf[std::size_t(row)] = int(m_shown.size());
            m_shown.push_back(row);
        }
    }
}

void CTroveListModel::relayout(const std::function<std::vector<int>()>& change)
{
    // Pending cell announcements name rows by their old places.
    FlushChanges();
    emit layoutAboutToBeChanged();
    const QModelIndexList before = persistentIndexList();
    std::vector<int> rowsBefore;
    rowsBefore.reserve(std::size_t(before.size()));
    for (const QModelIndex& index : before)
        rowsBefore.push_back(RowOf(index));
    const std::vector<int> moved = change();
    rebuildShown();
    QModelIndexList after;
    after.reserve(before.size());
    for (int i = 0; i < int(before.size()); ++i) {
        int row = rowsBefore[std::size_t(i)];
        if (row >= 0 && !moved.empty())
            row = row < int(moved.size()) ? moved[std::size_t(row)] : -1;
        after.push_back(row >= 0 ? IndexOfRow(row, before[i].column()) : QModelIndex());
    }
    changePersistentIndexList(before, after);
    emit layoutChanged();
}
