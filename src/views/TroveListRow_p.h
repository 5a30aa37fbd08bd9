#pragma once

#include "views/ItemStateWord_p.h"

#include <QString>

#include <array>
#include <cstdint>
#include <memory>

class CTroveListCtrlItem;

/// One row of the list view. Kept compact because a panel may hold 100,000 of them: the texts
/// that repeat across rows (status, type) share their storage, the name shares the tree node's
/// text, and size and date are kept as values and turned into text only when read or drawn.
///
/// Besides what it shows, a row keeps what sorting and selecting need, so that neither ever has
/// to ask a model or an item per comparison: whether it is selected, and its place in the last
/// ordering of the name and saved-path texts (a rank; rows with equal texts share one).
struct CTroveListRow
{
    /// What the size and date cells hold.
    enum class CellKind : std::uint8_t { Empty, Text, Value };

    /// Bits of flags.
    enum Flag : std::uint8_t {
        Selected = 0x01,
        NameRankStale = 0x02, ///< the name changed since nameRank was given
        PathRankStale = 0x04, ///< likewise for the saved path
        Hidden = 0x08,        ///< left out by the list's filter: not shown, never selected
    };

    CTroveListCtrlItem* data = nullptr; ///< the row's item data
    QString name;                       ///< column 2
    QString savedPath;                  ///< column 7
    std::int64_t bytes = 0;             ///< column 4 when sizeKind is Value
    /// Column 6 when dateKind is Value: msecs since 1 Jan 4713 BC. When dateKind is Text, what
    /// reading that text as a date gives, in the same unit (unreadable text: the zero date), so
    /// that sorting never reads a text.
    std::int64_t dateMsecs = 0;
    /// Texts of the other columns that are neither shared nor typed; rarely used, so allocated
    /// on demand. Slots: columns 0, 1, 3, 4, 5, 6.
    std::unique_ptr<std::array<QString, 6>> otherTexts;
    std::int32_t typeImage = -2;   ///< column 1; -2 is no image
    std::int32_t statusImage = -2; ///< column 3
    std::uint16_t statusText = 0;  ///< column 3, an index into the model's shared texts
    std::uint16_t typeText = 0;    ///< column 5, likewise
    std::uint32_t nameRank = 0;
    std::uint32_t pathRank = 0;
    ItemStateWord state; ///< overlay and state image
    CellKind sizeKind = CellKind::Empty;
    CellKind dateKind = CellKind::Empty;
    std::uint8_t flags = NameRankStale | PathRankStale;

    int Overlay() const { return state.Overlay(); }
    int StateImage() const { return state.StateImage(); }
    bool IsSelected() const { return flags & Selected; }
    bool IsHidden() const { return flags & Hidden; }
    /// Whether the row may be selected: it has item data and the filter shows it.
    bool IsSelectable() const { return data && !(flags & Hidden); }
};
