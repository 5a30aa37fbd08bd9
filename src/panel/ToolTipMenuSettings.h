#pragma once

/// The user's tool-tip choices, made in the panel's tool-tip menu and kept in the host's profile.
/// Values outside the ranges are kept as they are; readers treat them as stated below.
struct ToolTipMenuSettings
{
    /// 0 classic, 1 preview, 2 details, 3 preview and details.
    int style = 3;
    /// Preview size: 0 small, 1 medium, 2 large; anything else reads as medium.
    int previewSize = 1;
};
