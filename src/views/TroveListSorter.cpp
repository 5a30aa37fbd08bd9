#include "views/TroveListSorter_p.h"

#include "items/TroveListCtrlItem.h"
#include "items/XrefPanelCtrlItem.h"
#include "panel/ListViewColumn.h"
#include "util/Order.h"
#include "views/ListItemAccess_p.h"
#include "views/TroveListDateKey_p.h"
#include "views/TroveListModel_p.h"

#include <QCollator>
#include <QHash>

#include <algorithm>
#include <cstring>
#include <numeric>
#include <typeinfo>
#include <unordered_map>

namespace {

using Col = Trove::ListViewColumn;

// Texts order the way Util::Order(a, b, 1, 1) orders them: natural order, case ignored.
const QCollator& collator()
{
    return Util::NaturalCollator(1);
}

// How many rows ahead a pass asks for the memory it will need.
constexpr std::size_t kAhead = 16;

void prefetch(const void* address)
{
    if (address)
        __builtin_prefetch(address);
}

int sign(std::int64_t value)
{
    return (value > 0) - (value < 0);
}

// Sorts the entries by @p compare (negative, zero, positive), reversed when descending; equal
// entries keep their order. The entries are in row order to begin with, so the row breaks ties
// and a plain sort gives the stable result without a merge buffer.
template <typename Compare>
void sortEntries(std::vector<CTroveListSorter::Entry>& entries, bool ascending, Compare compare)
{
    const int direction = ascending ? 1 : -1;
    std::sort(entries.begin(), entries.end(), [&](const auto& a, const auto& b) {
        const int order = compare(a, b) * direction;
        return order != 0 ? order < 0 : a.row < b.row;
    });
}

// The date rule is not a strict order (a chain of differences under half a second can span
// more), so its sort must not rely on one: a merge sort stays within bounds whatever it is told.
template <typename Compare>
void stableSortEntries(std::vector<CTroveListSorter::Entry>& entries, bool ascending,
                       Compare compare)
{
    const int direction = ascending ? 1 : -1;
    std::stable_sort(entries.begin(), entries.end(),
                     [&](const auto& a, const auto& b) { return compare(a, b) * direction < 0; });
}

// Whether the date rule comes down to comparing the keys: whole seconds apart, and never so far
// apart that the rule's 32-bit wrap of the seconds could make two dates equal. Then the dates
// sort like any other keys; otherwise by the rule itself.
bool wholeSecondsWithinRange(const std::vector<CTroveListSorter::Entry>& entries)
{
    if (entries.empty())
        return true;
    std::int64_t low = entries.front().key;
    std::int64_t high = low;
    for (const auto& e : entries) {
        if (e.key % 1000 != 0)
            return false;
        low = std::min(low, e.key);
        high = std::max(high, e.key);
    }
    return (high - low) / 1000 < (std::int64_t(1) << 32);
}

// Ranks for a set of distinct texts, equal texts sharing one.
std::vector<std::uint32_t> rankTexts(const std::vector<QString>& texts)
{
    std::vector<QCollatorSortKey> keys;
    keys.reserve(texts.size());
    for (const QString& text : texts)
        keys.push_back(collator().sortKey(text));
    std::vector<int> byKey(texts.size());
    std::iota(byKey.begin(), byKey.end(), 0);
    std::sort(byKey.begin(), byKey.end(),
              [&](int a, int b) { return keys[a].compare(keys[b]) < 0; });
    std::vector<std::uint32_t> ranks(texts.size());
    std::uint32_t rank = 0;
    for (std::size_t i = 0; i < byKey.size(); ++i) {
        if (i > 0 && keys[byKey[i - 1]].compare(keys[byKey[i]]) != 0)
            ++rank;
        ranks[byKey[i]] = rank;
    }
    return ranks;
}

} // namespace

using Entry = CTroveListSorter::Entry;

std::vector<int> CTroveListSorter::Order(int column, bool ascending, int secondaryColumn)
{
    m_model.dropRemovedRows();
    auto& rows = m_model.m_rows;
    const int count = int(rows.size());
    std::vector<int> order;
    order.reserve(std::size_t(count));
    if (column < 0 || column >= Col::Count) {
        order.resize(std::size_t(count));
        std::iota(order.begin(), order.end(), 0);
        return order;
    }

    // Which rows take part, from their items. Records and items lie anywhere in the heap;
    // fetching them a few rows ahead keeps the passes from waiting on each one in turn.
    std::vector<const CTroveListCtrlItem*> records(static_cast<std::size_t>(count));
    for (int row = 0; row < count; ++row)
        records[std::size_t(row)] = rows[row].data;
    m_items.assign(std::size_t(count), nullptr);
    for (std::size_t row = 0; row < records.size(); ++row) {
        if (row + kAhead < records.size())
            prefetch(records[row + kAhead]);
        const CTroveListCtrlItem* record = records[row];
        m_items[row] = record && !record->Items().empty() ? *record->Items().begin() : nullptr;
    }
    std::vector<Entry> entries;
    entries.reserve(std::size_t(count));
    for (int row = 0; row < count; ++row) {
        if (std::size_t(row) + kAhead < m_items.size())
            prefetch(m_items[std::size_t(row) + kAhead]);
        const CXrefPanelCtrlItem* item = m_items[std::size_t(row)];
        if (!item || !item->IsSortItem()) {
            order.push_back(row);
            continue;
        }
        entries.push_back({0, 0, row});
    }

    const bool thenBySecondary = column == Col::TypeIcon || column == Col::Type;
    if (column == Col::ReferenceName || (thenBySecondary && secondaryColumn == Col::ReferenceName))
        refreshRanks(&CTroveListRow::name, &CTroveListRow::nameRank, CTroveListRow::NameRankStale);
    if (thenBySecondary && secondaryColumn == Col::SavedPath)
        refreshRanks(&CTroveListRow::savedPath, &CTroveListRow::pathRank,
                     CTroveListRow::PathRankStale);

    switch (column) {
    case Col::TroveState:
        for (Entry& e : entries)
            e.key = rows[e.row].StateImage();
        break;
    case Col::TypeIcon:
        keysFromTypes(entries);
        break;
    case Col::ReferenceName:
        for (Entry& e : entries)
            e.key = rows[e.row].nameRank;
        break;
    case Col::Status:
    case Col::Type:
        keysFromTexts(column, entries);
        break;
    case Col::Size:
        for (Entry& e : entries)
            e.key = m_items[std::size_t(e.row)]->GetSize();
        break;
    case Col::Date:
        keysFromDates(entries);
        break;
    case Col::SavedPath:
        refreshRanks(&CTroveListRow::savedPath, &CTroveListRow::pathRank,
                     CTroveListRow::PathRankStale);
        for (Entry& e : entries)
            e.key = rows[e.row].pathRank;
        break;
    }

    if (column == Col::Date && !wholeSecondsWithinRange(entries)) {
        stableSortEntries(entries, ascending, [](const Entry& a, const Entry& b) {
            return TroveListDateKey::Compare(a.key, b.key);
        });
    } else if (thenBySecondary) {
        // The secondary column orders rows of equal type in the same direction.
        for (Entry& e : entries)
            e.second = secondaryColumn == Col::ReferenceName ? rows[e.row].nameRank
                       : secondaryColumn == Col::SavedPath   ? rows[e.row].pathRank
                                                             : 0;
        sortEntries(entries, ascending, [](const Entry& a, const Entry& b) {
            const int primary = sign(a.key - b.key);
            return primary ? primary : sign(std::int64_t(a.second) - std::int64_t(b.second));
        });
    } else {
        sortEntries(entries, ascending,
                    [](const Entry& a, const Entry& b) { return sign(a.key - b.key); });
    }
    for (const Entry& e : entries)
        order.push_back(e.row);
    m_items.clear();
    return order;
}

void CTroveListSorter::refreshRanks(QString CTroveListRow::*text,
                                    std::uint32_t CTroveListRow::*rank, std::uint8_t staleFlag)
{
    auto& rows = m_model.m_rows;
    std::vector<int> stale;
    for (int row = 0; row < int(rows.size()); ++row) {
        if (rows[row].flags & staleFlag)
            stale.push_back(row);
    }
    if (stale.empty())
        return;
    // Placing a changed text among the ranked ones costs a handful of collations; past a few
    // percent of the rows, collating every text once is cheaper.
    const std::size_t ranked = rows.size() - stale.size();
    if (ranked == 0 || stale.size() * 32 > rows.size())
        rebuildRanks(text, rank, staleFlag);
    else
        mergeRanks(text, rank, staleFlag, std::move(stale));
}

void CTroveListSorter::rebuildRanks(QString CTroveListRow::*text,
                                    std::uint32_t CTroveListRow::*rank, std::uint8_t staleFlag)
{
    auto& rows = m_model.m_rows;
    const QCollator& texts = collator();
    std::vector<QCollatorSortKey> keys;
    keys.reserve(rows.size());
    for (const CTroveListRow& row : rows)
        keys.push_back(texts.sortKey(row.*text));
    std::vector<int> byKey(rows.size());
    std::iota(byKey.begin(), byKey.end(), 0);
    std::sort(byKey.begin(), byKey.end(),
              [&](int a, int b) { return keys[a].compare(keys[b]) < 0; });
    std::uint32_t next = 0;
    for (std::size_t i = 0; i < byKey.size(); ++i) {
        if (i > 0 && keys[byKey[i - 1]].compare(keys[byKey[i]]) != 0)
            ++next;
        CTroveListRow& row = rows[byKey[i]];
        row.*rank = next;
        row.flags &= ~staleFlag;
    }
}

void CTroveListSorter::mergeRanks(QString CTroveListRow::*text, std::uint32_t CTroveListRow::*rank,
                                  std::uint8_t staleFlag, std::vector<int> stale)
{
    auto& rows = m_model.m_rows;
    const QCollator& texts = collator();
    std::vector<int> ranked;
    ranked.reserve(rows.size() - stale.size());
    for (int row = 0; row < int(rows.size()); ++row) {
        if (!(rows[row].flags & staleFlag))
            ranked.push_back(row);
    }
    std::stable_sort(ranked.begin(), ranked.end(),
                     [&](int a, int b) { return rows[a].*rank < rows[b].*rank; });
    std::stable_sort(stale.begin(), stale.end(),
                     [&](int a, int b) { return texts.compare(rows[a].*text, rows[b].*text) < 0; });

    // Each changed text goes before the first ranked text that is not less than it; the
    // changed texts are in order, so each search starts where the last one ended.
    std::vector<int> merged;
    merged.reserve(rows.size());
    auto from = ranked.begin();
    for (int row : stale) {
        const auto at = std::lower_bound(from, ranked.end(), row, [&](int r, int s) {
            return texts.compare(rows[r].*text, rows[s].*text) < 0;
        });
        merged.insert(merged.end(), from, at);
        merged.push_back(row);
        from = at;
    }
    merged.insert(merged.end(), from, ranked.end());

    // Dense ranks again; two ranked neighbours are equal when their old ranks were.
    std::uint32_t next = 0;
    bool previousStale = false;
    std::uint32_t previousRank = 0;
    for (std::size_t i = 0; i < merged.size(); ++i) {
        CTroveListRow& row = rows[merged[i]];
        const bool isStale = row.flags & staleFlag;
        if (i > 0) {
            const CTroveListRow& previous = rows[merged[i - 1]];
            const bool equal = (!isStale && !previousStale)
                                   ? row.*rank == previousRank
                                   : texts.compare(previous.*text, row.*text) == 0;
            if (!equal)
                ++next;
        }
        previousStale = isStale;
        previousRank = row.*rank;
        row.*rank = next;
        row.flags &= ~staleFlag;
    }
}

void CTroveListSorter::keysFromTexts(int column, std::vector<Entry>& entries) const
{
    const auto& rows = m_model.m_rows;
    const QStringList& shared = m_model.m_sharedTexts;
    // The shared texts, then the few texts that did not fit in the shared table.
    std::vector<QString> distinct(shared.begin(), shared.end());
    QHash<QString, int> ownIds;
    std::vector<int> idOf(rows.size(), 0);
    for (const Entry& e : entries) {
        const CTroveListRow& row = rows[e.row];
        const int sharedId = column == Col::Status ? row.statusText : row.typeText;
        if (sharedId != 0) {
            idOf[std::size_t(e.row)] = sharedId;
            continue;
        }
        const QString own = m_model.CellText(e.row, column);
        if (own.isEmpty())
            continue;
        auto found = ownIds.constFind(own);
        if (found == ownIds.constEnd()) {
            found = ownIds.insert(own, int(distinct.size()));
            distinct.push_back(own);
        }
        idOf[std::size_t(e.row)] = found.value();
    }
    const std::vector<std::uint32_t> ranks = rankTexts(distinct);
    for (Entry& e : entries)
        e.key = ranks[std::size_t(idOf[std::size_t(e.row)])];
}

void CTroveListSorter::keysFromTypes(std::vector<Entry>& entries) const
{
    // Few distinct (class, icon, badge) triples stand for many rows: rank the triples, then
    // give each row its triple's rank.
    struct Triple
    {
        const char* className;
        QString icon;
        int overlay;
        bool operator==(const Triple& other) const
        {
            return className == other.className && overlay == other.overlay && icon == other.icon;
        }
    };
    struct TripleHash
    {
        std::size_t operator()(const Triple& t) const
        {
            return std::hash<const void*>()(t.className) ^ qHash(t.icon) ^
                   std::size_t(t.overlay) * 31;
        }
    };
    const auto& rows = m_model.m_rows;
    std::unordered_map<Triple, int, TripleHash> ids;
    std::vector<Triple> triples;
    std::vector<int> idOf(rows.size(), 0);
    for (const Entry& e : entries) {
        const CXrefPanelCtrlItem& item = *m_items[std::size_t(e.row)];
        Triple triple{typeid(item).name(), ListItemAccess::TypeIconKey(item),
                      rows[e.row].Overlay()};
        const auto [at, added] = ids.try_emplace(triple, int(triples.size()));
        if (added)
            triples.push_back(std::move(triple));
        idOf[std::size_t(e.row)] = at->second;
    }
    // Class names compare byte by byte, then icon names, then the badges.
    const auto compare = [](const Triple& a, const Triple& b) {
        if (const int byClass = std::strcmp(a.className, b.className))
            return byClass;
        if (const int byIcon = QString::compare(a.icon, b.icon, Qt::CaseSensitive))
            return byIcon;
        return a.overlay - b.overlay;
    };
    std::vector<int> byTriple(triples.size());
    std::iota(byTriple.begin(), byTriple.end(), 0);
    std::sort(byTriple.begin(), byTriple.end(),
              [&](int a, int b) { return compare(triples[a], triples[b]) < 0; });
    std::vector<std::uint32_t> ranks(triples.size());
    std::uint32_t next = 0;
    for (std::size_t i = 0; i < byTriple.size(); ++i) {
        if (i > 0 && compare(triples[byTriple[i - 1]], triples[byTriple[i]]) != 0)
            ++next;
        ranks[byTriple[i]] = next;
    }
    for (Entry& e : entries)
        e.key = ranks[std::size_t(idOf[std::size_t(e.row)])];
}

void CTroveListSorter::keysFromDates(std::vector<Entry>& entries) const
{
    const auto& rows = m_model.m_rows;
    const TroveListDateKey::ValueKeys fromValue;
    const std::int64_t zero = TroveListDateKey::ZeroKey();
    for (Entry& e : entries) {
        const CTroveListRow& row = rows[e.row];
        switch (row.dateKind) {
        case CTroveListRow::CellKind::Value:
            e.key = fromValue(row.dateMsecs);
            break;
        case CTroveListRow::CellKind::Text:
            e.key = row.dateMsecs;
            break;
        case CTroveListRow::CellKind::Empty:
            e.key = zero;
            break;
        }
    }
}
