#pragma once

namespace Trove {

/// The list view's columns; the values are the column indexes.
struct ListViewColumn
{
    enum Enum : int {
        TroveState = 0,
        TypeIcon = 1,
        ReferenceName = 2,
        Status = 3,
        Size = 4,
        Type = 5,
        Date = 6,
        SavedPath = 7,
    };
    static constexpr int Count = 8;
};

} // namespace Trove
