#pragma once

// Every resource the library loads by id or name. The resource tests walk these lists and the
// sources, and fail when the default module lacks one of them; add new ids here first.

namespace TroveUI {
namespace Res {

inline constexpr unsigned kStringIds[] = {
    1011, 1012, 1013, 1014, 1015, 1016, 1017, 1018, 1019, 1020,  1021,  1022,  1023,  1024,  1027,
    1028, 1031, 1032, 1033, 1034, 1035, 1036, 1037, 1038, 1039,  1040,  1041,  1042,  1043,  1044,
    1045, 1046, 1047, 1048, 1049, 1050, 1056, 1057, 1058, 1059,  1060,  1064,  1065,  1066,  1068,
    1069, 1070, 1071, 1072, 1074, 1076, 1077, 1078, 1079, 1121,  1122,  1123,  1124,  1125,  1126,
    1127, 1128, 1129, 1130, 1131, 1132, 1133, 1134, 1135, 1136,  1137,  1138,  1139,  1140,  1141,
    1142, 1143, 1144, 1145, 1152, 1153, 1154, 1155, 1156, 1157,  1158,  1159,  1160,  1161,  1162,
    1163, 1164, 1165, 1166, 1167, 1168, 1169, 1170, 1171, 1172,  1173,  1174,  1175,  1182,  1183,
    1184, 1185, 1186, 1187, 1188, 1189, 1190, 1191, 1192, 1193,  1194,  1195,  1196,  1197,  1198,
    1199, 1200, 1201, 1202, 1203, 1204, 1210, 1211, 1212, 32785, 32786, 32787, 32789, 32790, 32791,
};

/// Status icons and overlay badges, one pair per reference status.
inline constexpr const char* kStatusIconNames[] = {
    "IDI_STATUS_BLANK",      "IDI_STATUS_UNLOADED",   "IDI_STATUS_NEEDSRELOADING",
    "IDI_STATUS_UNRESOLVED", "IDI_STATUS_COMPARABLE", "IDI_STATUS_INCOMPARE",
    "IDI_BADGE_BLANK",       "IDI_BADGE_UNLOADED",    "IDI_BADGE_NEEDSRELOADING",
    "IDI_BADGE_UNRESOLVED",
};

/// File-type icons offered to hosts for their item classes and used for file-type lookups.
inline constexpr const char* kTypeIconNames[] = {
    "IDI_TYPE_DWG",      "IDI_TYPE_HOSTDWG", "IDI_TYPE_IMAGE",      "IDI_TYPE_PDF",
    "IDI_TYPE_DWF",      "IDI_TYPE_DGN",     "IDI_TYPE_POINTCLOUD", "IDI_TYPE_MODEL",
    "IDI_TYPE_DATALINK", "IDI_TYPE_FOLDER",  "IDI_TYPE_FILE",
};

/// Tool bar button pictures.
inline constexpr const char* kBitmapNames[] = {
    "REFRESH_BTN",           "RELOAD_BTN",      "ATTACH_BTN",
    "ATTACHDWG_BTN",         "ATTACHIMAGE_BTN", "ATTACHDWF_BTN",
    "ATTACHDGN_BTN",         "ATTACHPDF_BTN",   "ATTACHPOINTCLOUD_BTN",
    "ATTACHORBISKMODEL_BTN", "ATTACHTROVE_BTN", "CHANGE_PATH_BTN",
    "RMX_HELP_BTN",
};

/// Page buttons of the group headers, named by the page keys.
inline constexpr const char* kGroupPageIconNames[] = {
    "GRPCTRL_LISTVIEW",
    "GRPCTRL_TREEVIEW",
    "GRPCTRL_DETAILS",
    "GRPCTRL_THUMBBTN",
};

/// The split cursor of the details list's column divider.
inline constexpr unsigned kSplitCursorId = 30980;

inline constexpr unsigned kToolBarMenuId = 2080;
inline constexpr unsigned kTroveToolBarMenuId = 1080;

} // namespace Res
} // namespace TroveUI
