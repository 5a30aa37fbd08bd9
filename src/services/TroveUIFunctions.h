#pragma once

#include "kvxreftroveui_export.h"

#include <QIcon>

#include <string>

class CZuUiImageList;

namespace Util {
class ResourceModule;
}

namespace TroveUI {

/// Size classes of a file-type icon.
enum EFileExtIconType : unsigned {
    SmallIcon = 0,      ///< 16 x 16
    SmallShellIcon = 1, ///< the shell's small icon size
    LargeIcon = 2,      ///< 32 x 32
    LargeShellIcon = 3, ///< the shell's large icon size
};

/// Shows a modal message box and returns the button pressed. A non-empty @p caption is the
/// application's title for the duration of the call; an empty one keeps the usual title.
KVXREFTROVEUI_EXPORT int MessageBoxW(const std::wstring& text, const std::wstring& caption,
                                     unsigned type, unsigned helpId);
/// The same with text and caption loaded from @p module; a caption id of 0 means no caption.
KVXREFTROVEUI_EXPORT int MessageBoxW(const Util::ResourceModule* module, unsigned textId,
                                     unsigned captionId, unsigned type, unsigned helpId);
/// Loads format string @p formatId, fills its "%1".."%9" with the variable arguments (each a
/// `const wchar_t*`) and shows it.
KVXREFTROVEUI_EXPORT int FormatMessageBox(const Util::ResourceModule* module, unsigned formatId,
                                          unsigned captionId, unsigned type, unsigned helpId, ...);
/// FormatMessageBox with the one argument @p argument.
KVXREFTROVEUI_EXPORT int FormatMessageBox1(const Util::ResourceModule* module, unsigned formatId,
                                           const std::wstring& argument, unsigned captionId,
                                           unsigned type, unsigned helpId);

/// A file size as people read it: "532 bytes", "1.30 KB", "22.9 KB", "2.28 MB". Three
/// significant digits, cut rather than rounded, with the user's decimal separator.
KVXREFTROVEUI_EXPORT std::wstring FormatByteSize(long long bytes);

/// The icon for a file of the type @p name names (only its extension counts; the file need not
/// exist), or for a folder, drawn at @p cx x @p cy (the size class's size when either is 0 or
/// below). Drawing, underlay, image, point-cloud, model and data-link files get the library's own
/// icons; other types the desktop's icon for their type, or a plain document.
KVXREFTROVEUI_EXPORT QIcon GetFileExtIcon(const std::wstring& name, int cx, int cy,
                                          EFileExtIconType type, bool isFolder);

/// Adds icon @p iconId of @p module to @p list, in the variant for the current theme; returns its
/// index, or -1 when the icon is missing. @p cx, @p cy and @p flags are accepted and ignored:
/// the list decides the size.
KVXREFTROVEUI_EXPORT int LoadIconW(CZuUiImageList& list, const Util::ResourceModule* module,
                                   unsigned iconId, int cx, int cy, unsigned flags);

} // namespace TroveUI
