#pragma once

// The user's tool-tip choices as the panel keeps them. Internal to the panel; not installed.

#include "panel/ToolTipMenuSettings.h"

/// The tool-tip style and preview size that the items' tips follow and the tool-tip menu shows.
class ToolTipSettings
{
public:
    const ToolTipMenuSettings& Current() const { return m_current; }

private:
    ToolTipMenuSettings m_current;
};
