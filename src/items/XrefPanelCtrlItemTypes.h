#pragma once

#include "kvxreftroveui_export.h"

#include "framework/ZuUiRmId.h"
#include "items/RefStatus.h"

#include <QIcon>
#include <QString>

#include <any>
#include <functional>
#include <typeinfo>
#include <vector>

class CXrefPanelCtrlItem;
class CZuUiImageList;

/// The process-wide registry of item classes: creates items of a registered class by type name,
/// keeps each class's type icon and named alternative icons, and owns the two image lists (dark
/// and light theme) that the views draw item icons from, status icons and overlay badges
/// included. Every image sits at the same index in both lists. Registrations are never removed.
///
/// The host registers its classes from a class derived from this one. A class's type name is
/// the compiler's raw type name (std::type_info::name), which is what Create expects.
class KVXREFTROVEUI_EXPORT CXrefPanelCtrlItemTypes
{
public:
    using Factory = std::function<CXrefPanelCtrlItem*(const std::any&)>;
    /// Produces an icon for RegisterIcon; a null icon means none.
    using IconSource = std::function<QIcon()>;
    /// One named alternative icon of a class, for RegisterClass.
    struct NamedIcon
    {
        QString name;
        CZuUiRmId id;
    };

    CXrefPanelCtrlItemTypes() = default;
    CXrefPanelCtrlItemTypes(const CXrefPanelCtrlItemTypes&) = default;
    /// The registry has no state of its own: assignments change nothing.
    CXrefPanelCtrlItemTypes& operator=(const CXrefPanelCtrlItemTypes&) = default;
    CXrefPanelCtrlItemTypes& operator=(CXrefPanelCtrlItemTypes&&) = default;

    /// The image list of the dark theme (@p dark) or of the light one.
    static const CZuUiImageList& ImageList(bool dark);
    /// The image list that matches the active theme.
    static const CZuUiImageList& ActiveImageList();
    /// The status column image of @p icon, or -2 when it has none.
    static int StatusImage(RefStatus::RefIcon icon);
    /// The image of class @p type under @p iconName: the named icon when registered, otherwise the
    /// class's type icon; -2 for a class never registered.
    static int TypeImage(const std::type_info& type, const QString& iconName);

protected:
    /// The library's own icon for each kind of reference, under the names items pass to
    /// SetTypeIcon: HOSTDWG, IMAGE, PDF, DWF, DGN, POINTCLOUD, MODEL and DATALINK.
    static std::vector<NamedIcon> StandardTypeIcons();

    /// The type name of @p item's dynamic class.
    static QString TypeName(const CXrefPanelCtrlItem& item);
    static QString TypeName(const std::type_info& type);

    /// Registers @p type with its factory and type icon. False, and nothing changes, when the
    /// class is already registered. An icon that does not load leaves the class without image.
    static bool RegisterType(const std::type_info& type, Factory factory, const CZuUiRmId& iconId);
    /// Adds the alternative icon @p iconName of a registered class, loaded from @p iconId. False
    /// for a null id, an empty name, an unregistered class, a name the class already has, or an
    /// icon that does not load. The first registration of a name wins.
    static bool RegisterIcon(const std::type_info& type, const QString& iconName,
                             const CZuUiRmId& iconId);
    /// Registers @p type with its factory and type icon, then each of @p icons as RegisterIcon
    /// does: what a host does once per item class. False, and nothing changes, when the class is
    /// already registered; a named icon that cannot be registered is left out.
    static bool RegisterClass(const std::type_info& type, Factory factory,
                              const CZuUiRmId& typeIcon, const std::vector<NamedIcon>& icons = {});
    /// The same with the icon produced by @p source. @p destroyIcon is kept for hosts that hand
    /// out icons they own; an icon value needs no destroying, so the flag has no effect here.
    static bool RegisterIcon(const std::type_info& type, const QString& iconName,
                             const IconSource& source, bool destroyIcon);

    /// A new item of the class registered as @p typeName, built from @p args, or null when no
    /// such class is registered. The caller owns the item; a factory's exception passes on.
    static CXrefPanelCtrlItem* Create(const QString& typeName, const std::any& args);
};
