#include "panel/detail/ContextMenus.h"

#include "resources/TemporaryResourceOverride.h"
#include "util/ResourceModule.h"

#include <iterator>
#include <utility>

namespace {

// Text ids of the menu values; 0, 2, 40 and 41 have none.
constexpr std::pair<Trove::MenuItems, unsigned> kMenuTextIds[] = {
    {Trove::HostSubMenu1, 1166},
    {Trove::HostCommand3, 1011},
    {Trove::Attach, 1012},
    {Trove::AttachImage, 1028},
    {Trove::HostCommand6, 1013},
    {Trove::HostCommand7, 1014},
    {Trove::ReloadAllXRefs, 1022},
    {Trove::HostCommand9, 1015},
    {Trove::HostCommand10, 1016},
    {Trove::RemovePath, 1167},
    {Trove::MakePathRelative, 1168},
    {Trove::MakePathAbsolute, 1174},
    {Trove::SelectNewPath, 32786},
    {Trove::FindAndReplace, 32787},
    {Trove::HostCommand16, 1020},
    {Trove::Refresh, 1021},
    {Trove::HostCommand18, 1023},
    {Trove::TooltipClose, 1027},
    {Trove::AttachDWG, 1121},
    {Trove::AttachDWF, 1122},
    {Trove::AttachDGN, 1123},
    {Trove::AttachPDF, 1164},
    {Trove::HostCommand24, 1068},
    {Trove::HostCommand25, 1071},
    {Trove::AttachPointCloud, 1169},
    {Trove::AttachOrbiskModel, 1024},
    {Trove::Tooltips, 1160},
    {Trove::TooltipClassic, 1152},
    {Trove::TooltipPreview, 1153},
    {Trove::PreviewSmall, 1156},
    {Trove::PreviewMedium, 1157},
    {Trove::PreviewLarge, 1158},
    {Trove::TooltipDetails, 1154},
    {Trove::TooltipPreviewDetails, 1155},
    {Trove::PreviewDetailsSmall, 1159},
    {Trove::PreviewDetailsMedium, 1162},
    {Trove::PreviewDetailsLarge, 1163},
    {Trove::PreviewDetailsPane, 1161},
    {Trove::HostSubMenu42, 1171},
    {Trove::HostCommand43, 1172},
    {Trove::HostCommand44, 1173},
    {Trove::HostSubMenu45, 1182},
    {Trove::HostCommand46, 1183},
    {Trove::HostCommand47, 1184},
};
static_assert(std::size(kMenuTextIds) == 44);

} // namespace

void ContextMenus::LoadTexts(std::map<Trove::MenuItems, std::wstring>& texts)
{
    // One fill per process, safe even if two threads get here first at once.
    static const bool loaded = [&texts] {
        for (const auto& [item, id] : kMenuTextIds)
            LoadText(texts, item, id);
        return true;
    }();
    (void)loaded;
}

void ContextMenus::LoadText(std::map<Trove::MenuItems, std::wstring>& texts, Trove::MenuItems item,
                            unsigned id)
{
    CTemporaryResourceOverride resources;
    texts[item] = Util::LoadStrW(Util::CurrentResourceModule(), id);
}
