#include "panel/MenuItems.h"

namespace Trove {

const char* MenuItemName(MenuItems item)
{
    static const char* const names[kMenuItemCount] = {
        "Separator",
        "HostSubMenu1",
        "HostCommand2",
        "HostCommand3",
        "Attach",
        "AttachImage",
        "HostCommand6",
        "HostCommand7",
        "ReloadAllXRefs",
        "HostCommand9",
        "HostCommand10",
        "RemovePath",
        "MakePathRelative",
        "MakePathAbsolute",
        "SelectNewPath",
        "FindAndReplace",
        "HostCommand16",
        "Refresh",
        "HostCommand18",
        "TooltipClose",
        "AttachDWG",
        "AttachDWF",
        "AttachDGN",
        "AttachPDF",
        "HostCommand24",
        "HostCommand25",
        "AttachPointCloud",
        "AttachOrbiskModel",
        "Tooltips",
        "TooltipClassic",
        "TooltipPreview",
        "PreviewSmall",
        "PreviewMedium",
        "PreviewLarge",
        "TooltipDetails",
        "TooltipPreviewDetails",
        "PreviewDetailsSmall",
        "PreviewDetailsMedium",
        "PreviewDetailsLarge",
        "PreviewDetailsPane",
        "HostCommand40",
        "AttachFromTrove",
        "HostSubMenu42",
        "HostCommand43",
        "HostCommand44",
        "HostSubMenu45",
        "HostCommand46",
        "HostCommand47",
    };
    const int value = int(item);
    return value >= 0 && value < kMenuItemCount ? names[value] : nullptr;
}

} // namespace Trove
