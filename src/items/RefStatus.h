#pragma once

namespace RefStatus {

/// The reference status icon of an item: the picture in the status column and, as an overlay
/// badge, on the type icon. NoIcon is not a valid status icon; valid ones are 1 to 6.
enum RefIcon : int {
    NoIcon = 0,
    Blank = 1,
    Unloaded = 2,
    NeedsReloading = 3,
    Unresolved = 4,
    Comparable = 5,
    InCompare = 6,
};

/// True for the status icons 1 to 6.
constexpr bool IsValidIcon(RefIcon icon)
{
    return icon >= Blank && icon <= InCompare;
}

} // namespace RefStatus
