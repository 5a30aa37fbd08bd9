#pragma once

#include "kvuiframework_export.h"

#include "framework/ZuUiRmId.h"

#include <QCursor>
#include <QIcon>
#include <QPixmap>

class CZuUiImageList;

/// The resource manager: icons, tool bar bitmaps and cursors by resource id. Resources are SVG
/// pictures, so every size and device pixel ratio is drawn from the vector source and stays sharp.
/// Missing or unreadable resources give a null result, never an error.
class KVUIFRAMEWORK_EXPORT CZuUiRm
{
public:
    /// The icon "icons/<name>.svg" of the id's module; null when missing or not a valid picture.
    static QIcon Icon(const CZuUiRmId& id);
    /// The tool bar bitmap "bitmaps/<name>.svg"; null when missing.
    static QIcon Bitmap(const CZuUiRmId& id);
    /// The cursor "cursors/<name>.svg" at 32 x 32 device-independent pixels with @p hotSpot;
    /// @p fallback when missing.
    static QCursor Cursor(const CZuUiRmId& id, QPoint hotSpot, const QCursor& fallback);

    /// The id of the dark-theme variant of @p id: the same module, the name with "_DARK" added.
    static CZuUiRmId LegacyDarkSuffix(const CZuUiRmId& id);

    /// The icon, or its dark variant when the dark theme is active and the variant exists.
    static QIcon ThemedIcon(const CZuUiRmId& id);
    /// The same for tool bar bitmaps.
    static QIcon ThemedBitmap(const CZuUiRmId& id);

    /// Adds the themed icon of @p id to @p list; returns its index, or -1 when nothing loaded.
    static int ImageListAdd(CZuUiImageList& list, const CZuUiRmId& id);
};
