#pragma once

#include "kvuiframework_export.h"

#include <QIcon>
#include <QPixmap>
#include <QSize>
#include <QVector>

class QPainter;
class QRect;

/// A list of equally sized images addressed by index, as item views draw them: a base image,
/// optionally an overlay image on top of it and a state image beside it.
///
/// Images are kept as icons so that they paint sharp at any device pixel ratio. Index rules:
/// -1 and -2 draw nothing ("no image"); overlay numbers 1 to 15 name images chosen with
/// SetOverlayImage, 0 is "no overlay"; a state index 0 is "no state image" and n is image n - 1.
class KVUIFRAMEWORK_EXPORT CZuUiImageList
{
public:
    enum Flags : unsigned { ColorDepth32 = 0x20, Mask = 0x1 };
    static constexpr int kMaxOverlay = 15;

    CZuUiImageList() = default;
    /// @p size is in device-independent pixels; @p initial and @p grow only reserve room.
    CZuUiImageList(QSize size, unsigned flags = ColorDepth32 | Mask, int initial = 0, int grow = 1);
    bool Create(QSize size, unsigned flags = ColorDepth32 | Mask, int initial = 0, int grow = 1);
    bool IsCreated() const { return m_created; }
    void Clear();

    QSize IconSize() const { return m_size; }
    unsigned Flags() const { return m_flags; }
    int GetImageCount() const { return int(m_images.size()); }

    /// Appends @p icon; returns its index, or -1 for a null icon or a list not created.
    int Add(const QIcon& icon);
    int Add(const QPixmap& pixmap) { return Add(QIcon(pixmap)); }
    /// Replaces image @p index, or appends when @p index is -1. Returns the index written, or -1.
    int ReplaceIcon(int index, const QIcon& icon);
    /// Makes image @p image the overlay number @p overlay (1 to 15).
    bool SetOverlayImage(int image, int overlay);
    /// The image index of overlay number @p overlay, or -1.
    int OverlayImage(int overlay) const;

    bool IsValidIndex(int index) const { return index >= 0 && index < int(m_images.size()); }
    QIcon Icon(int index) const;
    /// The image at @p devicePixelRatio, @p size device-independent pixels (the list's own
    /// size when invalid); null for an invalid index.
    QPixmap Pixmap(int index, qreal devicePixelRatio = 1.0, QSize size = QSize()) const;

    /// Draws image @p index into @p target, then overlay number @p overlay over it. Invalid
    /// indexes draw nothing; an overlay without an image is skipped.
    void Draw(QPainter& painter, int index, const QRect& target, int overlay = 0,
              QIcon::Mode mode = QIcon::Normal) const;
    /// Draws state image @p stateIndex (1-based; 0 draws nothing).
    void DrawState(QPainter& painter, int stateIndex, const QRect& target) const;

private:
    bool m_created = false;
    QSize m_size;
    unsigned m_flags = 0;
    int m_grow = 1;
    QVector<QIcon> m_images;
    int m_overlays[kMaxOverlay + 1] = {-1, -1, -1, -1, -1, -1, -1, -1,
                                       -1, -1, -1, -1, -1, -1, -1, -1};
};
