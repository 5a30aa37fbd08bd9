#pragma once

// The list view's column sort. Not installed.

#include "kvxreftroveui_export.h"

#include <QString>

#include <cstdint>
#include <vector>

class CTroveListModel;
class CXrefPanelCtrlItem;
struct CTroveListRow;

/// Finds the order of the list's rows for one column. Each row's key is taken once (from what
/// the row keeps: its rank among the name or saved-path texts, its date key, its state image;
/// or from its item: the byte size, the class and type icon), the (key, row) pairs are sorted
/// as one contiguous array, and the model then moves the rows once. Nothing compares rows
/// through the model or the items.
///
/// The order follows the list's rules: rows whose item is not a sort item come first in either
/// direction, in the order they were in; the other rows follow by the column, reversed when
/// descending; equal rows keep their order. Sorting by the type icon or the type orders rows
/// of equal type by their name, in the same direction.
///
/// The ranks of the name and saved-path texts are kept in the rows between sorts and brought
/// up to date for the rows whose text changed since, so that sorting again costs no collation.
class KVXREFTROVEUI_TEST_EXPORT CTroveListSorter
{
public:
    explicit CTroveListSorter(CTroveListModel& model) : m_model(model) {}

    /// order[i] is the row that goes to place i. A column outside the list leaves the rows as
    /// they are. @p secondaryColumn is the column that orders rows of equal type.
    std::vector<int> Order(int column, bool ascending, int secondaryColumn);

    /// One row's keys, as the sort moves them.
    struct Entry
    {
        std::int64_t key;
        std::uint32_t second;
        std::int32_t row;
    };

private:
    /// Brings the ranks of one text column up to date.
    void refreshRanks(QString CTroveListRow::*text, std::uint32_t CTroveListRow::*rank,
                      std::uint8_t staleFlag);
    void rebuildRanks(QString CTroveListRow::*text, std::uint32_t CTroveListRow::*rank,
                      std::uint8_t staleFlag);
    void mergeRanks(QString CTroveListRow::*text, std::uint32_t CTroveListRow::*rank,
                    std::uint8_t staleFlag, std::vector<int> stale);
    /// Keys of the status or type column: ranks of the texts the rows show.
    void keysFromTexts(int column, std::vector<Entry>& entries) const;
    void keysFromTypes(std::vector<Entry>& entries) const;
    void keysFromDates(std::vector<Entry>& entries) const;

    CTroveListModel& m_model;
    std::vector<const CXrefPanelCtrlItem*> m_items; ///< by row, for the current sort
};
