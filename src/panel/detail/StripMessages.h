#pragma once

// What the message strip says about the selection. Internal to the panel; not installed.

#include <QString>

#include <optional>
#include <vector>

class CXrefPanelCtrlItem;

namespace StripMessages {

/// The strip's text for @p items; none for an empty selection, which leaves the strip as it
/// is. The empty text when no note applies.
std::optional<QString> For(const std::vector<CXrefPanelCtrlItem*>& items);

/// What the strip shows while a reference's name is being edited.
QString EditingName();

} // namespace StripMessages
