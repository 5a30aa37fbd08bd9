#pragma once

#include "kvxreftroveui_export.h"

namespace Trove {

/// The one command vocabulary of the panel: tool bar, context menus, the tool-tip menu and the
/// host all speak it. A value is also the command id of its menu entry. The HostCommandN and
/// HostSubMenuN values are the host's own commands; the panel only carries them.
enum MenuItems : int {
    Separator = 0,
    HostSubMenu1 = 1,
    HostCommand2 = 2,
    HostCommand3 = 3,
    Attach = 4,
    AttachImage = 5,
    HostCommand6 = 6,
    HostCommand7 = 7,
    ReloadAllXRefs = 8,
    HostCommand9 = 9,
    HostCommand10 = 10,
    RemovePath = 11,
    MakePathRelative = 12,
    MakePathAbsolute = 13,
    SelectNewPath = 14,
    FindAndReplace = 15,
    HostCommand16 = 16,
    Refresh = 17,
    HostCommand18 = 18,
    TooltipClose = 19,
    AttachDWG = 20,
    AttachDWF = 21,
    AttachDGN = 22,
    AttachPDF = 23,
    HostCommand24 = 24,
    HostCommand25 = 25,
    AttachPointCloud = 26,
    AttachOrbiskModel = 27,
    Tooltips = 28,
    TooltipClassic = 29,
    TooltipPreview = 30,
    PreviewSmall = 31,
    PreviewMedium = 32,
    PreviewLarge = 33,
    TooltipDetails = 34,
    TooltipPreviewDetails = 35,
    PreviewDetailsSmall = 36,
    PreviewDetailsMedium = 37,
    PreviewDetailsLarge = 38,
    PreviewDetailsPane = 39,
    HostCommand40 = 40,
    AttachFromTrove = 41,
    HostSubMenu42 = 42,
    HostCommand43 = 43,
    HostCommand44 = 44,
    HostSubMenu45 = 45,
    HostCommand46 = 46,
    HostCommand47 = 47,
};

/// Number of MenuItems values (0 to 47).
inline constexpr int kMenuItemCount = 48;

/// The enumerator's name ("AttachDWG"), or null for a value outside 0 to 47.
KVXREFTROVEUI_EXPORT const char* MenuItemName(MenuItems item);

} // namespace Trove
