// The item's tool tip and its part in the preview pane.

#include "items/XrefPanelCtrlItem.h"

#include "host/KvNameDescriptionToolTipInfo.h"
#include "items/ItemPanel_p.h"
#include "items/ItemToolTip_p.h"
#include "panel/ToolTipMenuSettings.h"
#include "resources/TroveResources.h"
#include "services/ToolTipPreviewAssist.h"
#include "views/XrefPreview.h"

namespace {

// Labels of the description rows, in the order they are shown.
constexpr unsigned kNameLabel = 1044;
constexpr unsigned kStatusLabel = 1045;
constexpr unsigned kSizeLabel = 1046;
constexpr unsigned kTypeLabel = 1047;
constexpr unsigned kDateLabel = 1048;
constexpr unsigned kSavedPathLabel = 1049;
constexpr unsigned kFoundAtLabel = 1050;
constexpr unsigned kPendingRelativePathNote = 32791;

int previewEdge(int previewSize)
{
    switch (previewSize) {
    case 0:
        return 64;
    case 2:
        return 256;
    default:
        return 128;
    }
}

} // namespace

std::unique_ptr<KvNameDescriptionToolTipInfo>
CXrefPanelCtrlItem::CreateToolTipInfo(const ToolTipMenuSettings& settings)
{
    const std::wstring name = GetText();
    const auto row = [](unsigned label, const std::wstring& value) {
        return TroveUI::ResStringW(label) + L": " + value;
    };
    // Every row is there even when its value is empty: the rows line up from one tip to the
    // next, whatever the reference.
    std::wstring description = row(kNameLabel, name);
    description += L'\n' + row(kStatusLabel, GetListViewSubItemText(ListViewColumn::Status));
    description += L'\n' + row(kSizeLabel, GetProperty(XrefProperties::Size).value_or(L""));
    description += L'\n' + row(kTypeLabel, GetProperty(XrefProperties::Type).value_or(L""));
    description += L'\n' + row(kDateLabel, GetProperty(XrefProperties::Date).value_or(L""));
    description += L'\n' + row(kFoundAtLabel, m_foundAt);
    if (isPendingRelativePath()) {
        // The star marks the path as the one the drawing will get; the note says why.
        description += L'\n' + row(kSavedPathLabel, L"*" + GetSavedPath()) + L'\n' +
                       TroveUI::ResStringW(kPendingRelativePathNote);
    } else {
        description += L'\n' + row(kSavedPathLabel, GetSavedPath());
    }

    const bool showPreview = settings.style == 1 || settings.style == 3;
    const bool showDetails = settings.style == 2 || settings.style == 3;
    const int edge = previewEdge(settings.previewSize);
    auto info = std::make_unique<KvNameDescriptionToolTipInfo>(
        QString::fromStdWString(name), QString::fromStdWString(description), GetPreview(),
        showPreview, showDetails);
    info->SetPreviewWidth(edge);
    info->SetPreviewHeight(edge);
    return info;
}

std::unique_ptr<KvNameDescriptionToolTipInfo> ItemToolTip::Create(CXrefPanelCtrlItem& item)
{
    return item.CreateToolTipInfo(ItemPanel::ToolTipSettings(item.livePanel()));
}

QPixmap CXrefPanelCtrlItem::GetPreview()
{
    // The file where the reference was found is the one that is shown, not the saved path.
    if (m_foundAt.empty())
        return {};
    return CToolTipPreviewAssist::GetCache()->GetPreview(m_foundAt);
}

void CXrefPanelCtrlItem::SetPreviewBitmap(const PackedDib* info, const char* bits, qint64 bitsSize)
{
    if (CXrefPreview* preview = ItemPanel::PreviewCtrl(livePanel()))
        preview->SetPreviewBitmap(info, bits, bitsSize);
}

void CXrefPanelCtrlItem::GetPreviewBox(QRect& rect) const
{
    if (const CXrefPreview* preview = ItemPanel::PreviewCtrl(livePanel()))
        rect = preview->rect();
}
