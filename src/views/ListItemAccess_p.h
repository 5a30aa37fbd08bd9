#pragma once

// What the list view reads of an item beyond its public operations. Not installed.

#include <QString>

#include <memory>

class CXrefPanelCtrlItem;
class KvNameDescriptionToolTipInfo;
struct ToolTipMenuSettings;

/// The item keeps its type-icon key and its rich tool tip for its own class and for the views;
/// the item class lets this one struct in, so that the list needs no wider access.
struct ListItemAccess
{
    /// The name the item's type icon was chosen by ("pdf", or empty for the class's own icon).
    static const QString& TypeIconKey(const CXrefPanelCtrlItem& item);
    /// The item's rich tool tip for @p settings; the caller owns it.
    static std::unique_ptr<KvNameDescriptionToolTipInfo>
    CreateToolTipInfo(CXrefPanelCtrlItem& item, const ToolTipMenuSettings& settings);
};
