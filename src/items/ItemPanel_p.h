#pragma once

// What an item needs of the panel it belongs to. The panel sits above the items and includes
// them, so the items reach it through these few calls instead of its header; they are defined
// with the panel. Not installed.

#include "panel/ToolTipMenuSettings.h"
#include "panel/XrefProperties.h"

class QObject;

class CTroveListCtrl;
class CXrefPanelCtrl;
class CXrefPanelCtrlItem;
class CXrefPreview;
class CXrefTreeCtrl;

namespace ItemPanel {

// Each call takes the panel as the item last saw it: null once the panel is gone, and then it
// does nothing and answers with a neutral value.

/// The panel as a QObject, for the item to notice when it goes.
QObject* Object(CXrefPanelCtrl& panel);
/// The panel's views and preview pane; null before the panel is created.
CTroveListCtrl* ListCtrl(const CXrefPanelCtrl* panel);
CXrefTreeCtrl* TreeCtrl(const CXrefPanelCtrl* panel);
CXrefPreview* PreviewCtrl(const CXrefPanelCtrl* panel);
/// The tool-tip style and preview size the user chose in the panel.
ToolTipMenuSettings ToolTipSettings(const CXrefPanelCtrl* panel);
/// Whether the host drawing's name carries the unsaved-changes marker now.
bool ShowsModifiedMarker(const CXrefPanelCtrl* panel);
/// @p item's @p property changed: the panel refreshes what shows it.
void PropertyChanged(CXrefPanelCtrl* panel, const CXrefPanelCtrlItem& item,
                     Trove::XrefProperties property);
/// @p item is being destroyed by its owner: the panel forgets it wherever it keeps it.
void ItemGoing(CXrefPanelCtrl* panel, CXrefPanelCtrlItem& item);

} // namespace ItemPanel
