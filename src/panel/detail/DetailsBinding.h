#pragma once

// Keeps the details pane in step with the selected items. Internal to the panel; not installed.

#include "panel/XrefProperties.h"

class CXrefPanelCtrlItem;
class SelectionBinding;

/// Decides which property changes reach the details pane: only those of a selected item, since
/// the pane shows nothing else.
class DetailsBinding
{
public:
    explicit DetailsBinding(const SelectionBinding& selection) : m_selection(selection) {}

    /// Whether a change of @p property of @p item concerns the pane.
    bool Concerns(const CXrefPanelCtrlItem& item, Trove::XrefProperties property) const;

private:
    const SelectionBinding& m_selection;
};
