#pragma once

// What an item needs of the panel it belongs to. The panel sits above the items and includes
// them, so the items reach it through these few calls instead of its header; they are defined
// with the panel. Not installed.

#include "panel/ToolTipMenuSettings.h"
#include "panel/XrefProperties.h"

class CTroveListCtrl;
class CXrefPanelCtrl;
class CXrefPanelCtrlItem;
class CXrefPreview;
class CXrefTreeCtrl;

namespace ItemPanel {

/// The panel's views and preview pane; null before the panel is created.
CTroveListCtrl* ListCtrl(const CXrefPanelCtrl& panel);
CXrefTreeCtrl* TreeCtrl(const CXrefPanelCtrl& panel);
CXrefPreview* PreviewCtrl(const CXrefPanelCtrl& panel);
/// The tool-tip style and preview size the user chose in the panel.
ToolTipMenuSettings ToolTipSettings(const CXrefPanelCtrl& panel);
/// Whether the host drawing's name carries the unsaved-changes marker now.
bool ShowsModifiedMarker(const CXrefPanelCtrl& panel);
/// @p item's @p property changed: the panel refreshes what shows it.
void PropertyChanged(CXrefPanelCtrl& panel, const CXrefPanelCtrlItem& item,
                     Trove::XrefProperties property);

} // namespace ItemPanel
