#pragma once

#include "kvxreftroveui_export.h"

#include "framework/PackedDib.h"
#include "framework/ZuUiThemedPreview.h"

#include <QByteArray>
#include <QImage>
#include <QPixmap>

/// A themed picture pane that shows one device-independent bitmap, shrunk to fit inside a
/// margin and centred, never enlarged. It keeps its own copy of the bitmap's description, so the
/// caller's buffers may go away once a Set... call returns.
class KVXREFTROVEUI_EXPORT KvSmPreview : public CZuUiThemedPreview
{
    Q_OBJECT
public:
    /// Free space kept around the picture on every side, in pixels.
    static constexpr int kMargin = 7;
    /// Bytes kept of a header whose pixels come separately: the header and one colour entry.
    static constexpr int kHeaderCopyBytes = BitmapInfoHeader::kSize + 4;

    explicit KvSmPreview(QWidget* parent = nullptr);

    /// Shows the picture described by the header (and colour table) in @p info with its
    /// @p bitsSize bytes of pixels at @p bits. The pane keeps a copy of the first
    /// kHeaderCopyBytes of @p info; the pixels are read during the call.
    void SetDib(const PackedDib& info, const char* bits, qint64 bitsSize);
    /// Shows a packed DIB (header, colour table and pixels in one block). The pane keeps a copy
    /// of PackedDibLength bytes of it (no more than it has) and decodes the picture during the
    /// call; when that length is not positive it keeps nothing and shows nothing.
    void SetPackedDib(const PackedDib& dib);
    /// Forgets the picture.
    void ClearDib();

    /// The pane's copy of the DIB (empty when it holds none).
    const QByteArray& DibCopy() const { return m_dib; }
    /// The picture as decoded from the copy; null when there is none or it cannot be read.
    const QImage& Picture() const { return m_image; }
    /// A bitmap of the held picture, owned by the caller; null when there is none.
    QPixmap CreateBitmap() const;

    /// Where a picture of @p dibSize (the absolute height counts) is drawn in @p client: inside
    /// the margin, scaled down in single precision when it does not fit, centred. Empty when it
    /// is not drawn at all.
    static QRect PictureRect(const QRect& client, QSize dibSize);
    /// The length of a packed DIB as the pane reckons it: header size, image size (when the
    /// header gives none, rows padded to 16 bits, times the height) and, for 8 bits per pixel
    /// and fewer, a full colour table of 2 to the power of the bit count entries.
    static qint64 PackedDibLength(const BitmapInfoHeader& header);

protected:
    void DrawPreview(QPainter& painter, const QRect& client) override;

private:
    /// Takes a new decoded picture and forgets the shrunk one.
    void setPicture(QImage image);
    /// The picture at @p size device pixels, made once per size.
    const QImage& shrunkPicture(QSize size) const;

    QByteArray m_dib;
    QImage m_image;
    mutable QImage m_shrunk;
};
