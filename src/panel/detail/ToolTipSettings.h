#pragma once

// The user's tool-tip choices as the panel keeps them and the host's profile stores them.
// Internal to the panel; not installed.

#include "panel/ToolTipMenuSettings.h"

class QDomNode;

/// The tool-tip style and preview size that the items' tips follow and the tool-tip menu shows,
/// and their round trip through the host's XML profile.
///
/// Loading reads the "TooltipSettings" child of the node it is given, while saving writes onto
/// the node itself: a host that keeps the values in one place hands the parent to Load and the
/// "TooltipSettings" element to Save. Profiles written that way exist, so both halves stay.
class ToolTipSettings
{
public:
    const ToolTipMenuSettings& Current() const { return m_current; }

    /// Sets the style and keeps the preview size.
    void SetStyle(int style) { m_current.style = style; }
    void SetStyleAndSize(int style, int size)
    {
        m_current.style = style;
        m_current.previewSize = size;
    }

    /// Reads "TooltipStyle", "TooltipSize" and "ShowDetail" from the "TooltipSettings" child of
    /// @p parent. A missing attribute reads as 0, and values are taken as they are, without a
    /// range check: a profile may come from a later version with more styles. False, with nothing
    /// changed, when there is no such child; otherwise @p showDetail is set too.
    bool Load(const QDomNode& parent, bool& showDetail);
    /// Writes the three values as decimal attributes of @p node itself, "ShowDetail" as 0 or 1.
    /// False when @p node is not an element; an attribute written before the failure stays.
    bool Save(const QDomNode& node, bool showDetail) const;

private:
    ToolTipMenuSettings m_current;
};
