#pragma once

// What the list view needs of the panel it sits in. The panel sits above the views and includes
// them, so the list reaches it through these few calls instead of its header; they are defined
// with the panel. Not installed.

#include "panel/ToolTipMenuSettings.h"

#include <string>

class CXrefPanelCtrl;
class CXrefPanelCtrlItem;
class QWidget;

namespace ListPanel {

/// The panel that @p view belongs to: the nearest ancestor that is one; null when there is none.
CXrefPanelCtrl* Find(const QWidget* view);
/// The host's description of @p item's repository state.
std::wstring TroveStateToolTipText(CXrefPanelCtrl& panel, CXrefPanelCtrlItem& item);
/// The tool-tip style and preview size the items' rich tips follow.
ToolTipMenuSettings ToolTipSettings(const CXrefPanelCtrl& panel);

} // namespace ListPanel
