#pragma once

#include "items/FileDataStatus.h"
#include "items/RefStatus.h"

/// Where a reference stands after loading, as the host judges it.
enum class ReferenceState {
    /// The open drawing itself.
    Opened,
    Loaded,
    /// The user unloaded it: nothing inside it is read, found or not (described when found).
    Unloaded,
    NotFound,
    /// The file changed on disk after it was loaded.
    NeedsReloading,
    /// The drawing is already open further up the chain; following it would never end.
    Circular,
    /// The file is there but is no drawing this program can read, or is damaged.
    Damaged,
    /// The file is there but cannot be opened.
    AccessDenied,
    /// Written by a newer version of this program.
    NewerVersion,
    /// Not read: the nesting has more references than the program follows.
    NotLoaded,
};

/// The panel's status icon and status text for a state.
struct PanelStatus
{
    RefStatus::RefIcon icon;
    Trove::FileDataStatus::Value code;
};

constexpr PanelStatus ToPanelStatus(ReferenceState state)
{
    namespace FD = Trove::FileDataStatus;
    switch (state) {
    case ReferenceState::Opened:
        return {RefStatus::Blank, FD::Code0};
    case ReferenceState::Loaded:
        return {RefStatus::Blank, FD::Code1};
    case ReferenceState::Unloaded:
        return {RefStatus::Unloaded, FD::Code2};
    case ReferenceState::NotFound:
        return {RefStatus::Unresolved, FD::Code3};
    case ReferenceState::NeedsReloading:
        return {RefStatus::NeedsReloading, FD::Code6};
    // A cycle is a reference that cannot be resolved; the message says why.
    case ReferenceState::Circular:
        return {RefStatus::Unresolved, FD::Code4};
    case ReferenceState::Damaged:
        return {RefStatus::Unresolved, FD::Code17};
    case ReferenceState::AccessDenied:
        return {RefStatus::Unresolved, FD::Code18};
    case ReferenceState::NewerVersion:
        return {RefStatus::Unresolved, FD::Code10};
    case ReferenceState::NotLoaded:
        return {RefStatus::Unloaded, FD::Code7};
    }
    return {RefStatus::Blank, FD::Code1};
}
