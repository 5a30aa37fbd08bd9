#include "DemoItems.h"

#include "XrefDocument.h"

#include "items/XrefPanelCtrlItemTypes.h"
#include "resources/TroveResources.h"
#include "util/DateTime.h"

#include <QDir>

namespace {

std::wstring wide(const QString& text)
{
    return text.toStdWString();
}

class DemoItemTypes : public CXrefPanelCtrlItemTypes
{
public:
    template <class Item> static void Register(const char* icon)
    {
        RegisterClass(
            typeid(Item),
            [](const std::any& args) -> CXrefPanelCtrlItem* {
                auto* const* panel = std::any_cast<CXrefPanelCtrl*>(&args);
                return panel && *panel ? new Item(**panel) : nullptr;
            },
            CZuUiRmId(TroveUI::ResourceInstance(), QString::fromLatin1(icon)));
    }
};

} // namespace

void DemoItem::Describe(const Occurrence& occurrence, int index, bool ownsRow)
{
    m_occurrence = index;
    m_record = occurrence.record;
    m_kind = occurrence.reference.kind;
    m_own = occurrence.parent == 0;
    m_savedPath = occurrence.reference.savedPath;
    m_foundAt = occurrence.resolution.foundAt;

    SetText(wide(occurrence.reference.name));
    // Each class is registered with its own type icon: the empty name picks it.
    SetTypeIcon(QString());
    const PanelStatus status = ToPanelStatus(occurrence.state);
    SetReferenceStatus(status.icon, status.code);
    if (occurrence.parent < 0)
        SetType(L"Current");
    else
        SetType(wide(occurrence.reference.overlay ? OverlayTypeText() : AttachTypeText()));
    // A shared row shows the values of the item that stands for it; the others only add their
    // tree nodes.
    if (ownsRow)
        SetSavedPath(wide(QDir::toNativeSeparators(occurrence.reference.savedPath)));
    if (occurrence.resolution.foundAt.isEmpty())
        return;
    SetFoundAt(wide(QDir::toNativeSeparators(occurrence.resolution.foundAt)));
    SetFileVersion(occurrence.facts.fileVersion);
    if (ownsRow) {
        SetSize(occurrence.facts.size);
        SetDate(Util::DateTime(occurrence.facts.modified));
    }
}

bool DemoItem::IsPropertyEditable(XrefProperties property, int) const
{
    if (!m_own)
        return false;
    switch (property) {
    case XrefProperties::Name:
    case XrefProperties::SavedPath:
        return true;
    case XrefProperties::Type:
        return CanToggleType();
    default:
        return false;
    }
}

void DemoItem::getPathTypeEnabledStatus(bool& removePath, bool& makeRelative,
                                        bool& makeAbsolute) const
{
    const QString saved = FileLocator::Normalised(m_savedPath);
    const bool absolute = FileLocator::IsAbsolute(saved);
    removePath = m_own && saved.contains(QLatin1Char('/'));
    // A relative path needs a file to be relative to.
    makeRelative = m_own && absolute && !m_foundAt.isEmpty();
    makeAbsolute = m_own && !absolute && !m_foundAt.isEmpty();
}

void RegisterDemoItemTypes()
{
    static const bool registered = [] {
        DemoItemTypes::Register<HostDrawingItem>("IDI_TYPE_HOSTDWG");
        DemoItemTypes::Register<DrawingItem>("IDI_TYPE_DWG");
        DemoItemTypes::Register<RasterImageItem>("IDI_TYPE_IMAGE");
        DemoItemTypes::Register<PdfUnderlayItem>("IDI_TYPE_PDF");
        DemoItemTypes::Register<DwfUnderlayItem>("IDI_TYPE_DWF");
        DemoItemTypes::Register<DgnUnderlayItem>("IDI_TYPE_DGN");
        DemoItemTypes::Register<PointCloudItem>("IDI_TYPE_POINTCLOUD");
        DemoItemTypes::Register<CoordinationModelItem>("IDI_TYPE_MODEL");
        DemoItemTypes::Register<DataLinkItem>("IDI_TYPE_DATALINK");
        return true;
    }();
    (void)registered;
}

std::unique_ptr<DemoItem> MakeDemoItem(CXrefPanelCtrl& panel, ReferenceKind kind, bool host)
{
    if (host)
        return std::make_unique<HostDrawingItem>(panel);
    switch (kind) {
    case ReferenceKind::Drawing:
        return std::make_unique<DrawingItem>(panel);
    case ReferenceKind::RasterImage:
        return std::make_unique<RasterImageItem>(panel);
    case ReferenceKind::PdfUnderlay:
        return std::make_unique<PdfUnderlayItem>(panel);
    case ReferenceKind::DwfUnderlay:
        return std::make_unique<DwfUnderlayItem>(panel);
    case ReferenceKind::DgnUnderlay:
        return std::make_unique<DgnUnderlayItem>(panel);
    case ReferenceKind::PointCloud:
        return std::make_unique<PointCloudItem>(panel);
    case ReferenceKind::CoordinationModel:
        return std::make_unique<CoordinationModelItem>(panel);
    case ReferenceKind::DataLink:
        return std::make_unique<DataLinkItem>(panel);
    }
    return std::make_unique<DrawingItem>(panel);
}

QString AttachTypeText()
{
    return TroveUI::ResString(1072);
}

QString OverlayTypeText()
{
    return TroveUI::ResString(1074);
}
