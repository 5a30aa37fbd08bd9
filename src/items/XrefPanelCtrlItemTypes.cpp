#include "items/XrefPanelCtrlItemTypes.h"

#include "framework/ZuUiImageList.h"
#include "framework/ZuUiRm.h"
#include "framework/ZuUiTheme.h"
#include "items/XrefPanelCtrlItem.h"
#include "resources/TroveResources.h"

#include <QHash>

#include <memory>
#include <stdexcept>
#include <typeindex>
#include <unordered_map>

namespace {

constexpr int kNoImage = -2;
constexpr int kIconSize = 16;
constexpr int kStatusCount = 7;

struct TypeRecord
{
    int defaultImage = kNoImage;
    std::unique_ptr<QHash<QString, int>> namedIcons;
};

struct ItemTypeRegistry
{
    ItemTypeRegistry()
        : darkList(QSize(kIconSize, kIconSize), CZuUiImageList::ColorDepth32 | CZuUiImageList::Mask,
                   32, 1),
          lightList(QSize(kIconSize, kIconSize),
                    CZuUiImageList::ColorDepth32 | CZuUiImageList::Mask, 32, 1)
    {
        loadStatusImages();
    }

    // Adds the icon named by @p id to both lists: the dark variant (or the icon itself when there
    // is none) to the dark list, the icon to the light list. Without the icon itself there is no
    // image, whatever dark variant exists, so the two lists never disagree.
    int addIcon(const CZuUiRmId& id)
    {
        const QIcon icon = CZuUiRm::Icon(id);
        if (icon.isNull())
            return kNoImage;
        const QIcon dark = CZuUiRm::Icon(CZuUiRm::LegacyDarkSuffix(id));
        return addPair(dark.isNull() ? icon : dark, icon);
    }

    int addPair(const QIcon& dark, const QIcon& light)
    {
        const int index = darkList.ReplaceIcon(-1, dark);
        lightList.ReplaceIcon(-1, light);
        return index < 0 ? kNoImage : index;
    }

    void loadStatusImages()
    {
        static const char* const badges[kStatusCount] = {
            nullptr,
            "IDI_BADGE_BLANK",
            "IDI_BADGE_UNLOADED",
            "IDI_BADGE_NEEDSRELOADING",
            "IDI_BADGE_UNRESOLVED",
            "IDI_BADGE_BLANK",
            "IDI_BADGE_BLANK",
        };
        static const char* const statuses[kStatusCount] = {
            "IDI_STATUS_BLANK",          "IDI_STATUS_BLANK",      "IDI_STATUS_UNLOADED",
            "IDI_STATUS_NEEDSRELOADING", "IDI_STATUS_UNRESOLVED", "IDI_STATUS_COMPARABLE",
            "IDI_STATUS_INCOMPARE",
        };
        const Util::ResourceModule* module = TroveUI::ResourceInstance();
        for (int value = 0; value < kStatusCount; ++value) {
            // Each status gets its own overlay number, equal to its value, even where two share
            // a picture: the overlay of an item is then simply its status.
            if (badges[value]) {
                const int badge = addIcon(CZuUiRmId(module, badges[value]));
                if (badge != kNoImage) {
                    darkList.SetOverlayImage(badge, value);
                    lightList.SetOverlayImage(badge, value);
                }
            }
            statusImages[RefStatus::RefIcon(value)] = addIcon(CZuUiRmId(module, statuses[value]));
        }
    }

    std::unordered_map<QString, CXrefPanelCtrlItemTypes::Factory> factories;
    std::unordered_map<std::type_index, TypeRecord> types;
    std::unordered_map<int, int> statusImages;
    CZuUiImageList darkList;
    CZuUiImageList lightList;
};

ItemTypeRegistry& registry()
{
    static ItemTypeRegistry instance;
    return instance;
}

} // namespace

const CZuUiImageList& CXrefPanelCtrlItemTypes::ImageList(bool dark)
{
    ItemTypeRegistry& r = registry();
    return dark ? r.darkList : r.lightList;
}

const CZuUiImageList& CXrefPanelCtrlItemTypes::ActiveImageList()
{
    return ImageList(CZuUiTheme::Instance().IsDarkTheme());
}

int CXrefPanelCtrlItemTypes::StatusImage(RefStatus::RefIcon icon)
{
    const ItemTypeRegistry& r = registry();
    const auto found = r.statusImages.find(int(icon));
    return found == r.statusImages.end() ? kNoImage : found->second;
}

int CXrefPanelCtrlItemTypes::TypeImage(const std::type_info& type, const QString& iconName)
{
    const ItemTypeRegistry& r = registry();
    const auto found = r.types.find(std::type_index(type));
    if (found == r.types.end())
        return kNoImage;
    const TypeRecord& record = found->second;
    if (iconName.isEmpty() || !record.namedIcons)
        return record.defaultImage;
    const auto named = record.namedIcons->constFind(iconName);
    return named == record.namedIcons->constEnd() ? record.defaultImage : named.value();
}

QString CXrefPanelCtrlItemTypes::TypeName(const CXrefPanelCtrlItem& item)
{
    return TypeName(typeid(item));
}

QString CXrefPanelCtrlItemTypes::TypeName(const std::type_info& type)
{
    return QString::fromLatin1(type.name());
}

bool CXrefPanelCtrlItemTypes::RegisterType(const std::type_info& type, Factory factory,
                                           const CZuUiRmId& iconId)
{
    ItemTypeRegistry& r = registry();
    if (!r.factories.emplace(TypeName(type), std::move(factory)).second)
        return false;
    TypeRecord record;
    record.defaultImage = r.addIcon(iconId);
    r.types[std::type_index(type)] = std::move(record);
    return true;
}

namespace {

// The common steps of both RegisterIcon forms; @p produce makes the image (-2 for none).
template <typename Produce>
bool registerNamedIcon(const std::type_info& type, const QString& iconName, Produce produce)
{
    if (iconName.isEmpty())
        return false;
    ItemTypeRegistry& r = registry();
    if (r.factories.find(QString::fromLatin1(type.name())) == r.factories.end())
        return false;
    const auto found = r.types.find(std::type_index(type));
    if (found == r.types.end())
        throw std::out_of_range("invalid unordered_map<K, T> key");
    TypeRecord& record = found->second;
    if (record.namedIcons && record.namedIcons->contains(iconName))
        return false;
    const int image = produce(r);
    if (image == kNoImage)
        return false;
    if (!record.namedIcons)
        record.namedIcons = std::make_unique<QHash<QString, int>>();
    record.namedIcons->insert(iconName, image);
    return true;
}

} // namespace

bool CXrefPanelCtrlItemTypes::RegisterIcon(const std::type_info& type, const QString& iconName,
                                           const CZuUiRmId& iconId)
{
    if (iconId.IsNull())
        return false;
    return registerNamedIcon(type, iconName,
                             [&](ItemTypeRegistry& r) { return r.addIcon(iconId); });
}

bool CXrefPanelCtrlItemTypes::RegisterIcon(const std::type_info& type, const QString& iconName,
                                           const IconSource& source, bool /*destroyIcon*/)
{
    if (!source)
        return false;
    return registerNamedIcon(type, iconName, [&](ItemTypeRegistry& r) {
        const QIcon icon = source();
        return icon.isNull() ? kNoImage : r.addPair(icon, icon);
    });
}

bool CXrefPanelCtrlItemTypes::RegisterClass(const std::type_info& type, Factory factory,
                                            const CZuUiRmId& typeIcon,
                                            const std::vector<NamedIcon>& icons)
{
    if (!RegisterType(type, std::move(factory), typeIcon))
        return false;
    for (const NamedIcon& icon : icons)
        RegisterIcon(type, icon.name, icon.id);
    return true;
}

std::vector<CXrefPanelCtrlItemTypes::NamedIcon> CXrefPanelCtrlItemTypes::StandardTypeIcons()
{
    const Util::ResourceModule* module = TroveUI::ResourceInstance();
    std::vector<NamedIcon> icons;
    for (const char* name :
         {"HOSTDWG", "IMAGE", "PDF", "DWF", "DGN", "POINTCLOUD", "MODEL", "DATALINK"})
        icons.push_back(
            {QString::fromLatin1(name),
             CZuUiRmId(module, QStringLiteral("IDI_TYPE_%1").arg(QLatin1String(name)))});
    return icons;
}

CXrefPanelCtrlItem* CXrefPanelCtrlItemTypes::Create(const QString& typeName, const std::any& args)
{
    const ItemTypeRegistry& r = registry();
    const auto found = r.factories.find(typeName);
    if (found == r.factories.end() || !found->second)
        return nullptr;
    return found->second(args);
}
