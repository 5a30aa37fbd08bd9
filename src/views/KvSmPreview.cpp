#include "views/KvSmPreview.h"

#include "services/DwgThumbnail.h"

#include <QPainter>

#include <algorithm>
#include <cstdlib>

KvSmPreview::KvSmPreview(QWidget* parent) : CZuUiThemedPreview(parent) {}

void KvSmPreview::SetDib(const PackedDib& info, const char* bits, qint64 bitsSize)
{
    m_dib = info.Bytes().left(kHeaderCopyBytes);
    // Decoded with the caller's full colour table while it is still at hand: the kept copy
    // holds only the first entry.
    m_image = info.ToImage(bits, bitsSize);
    update();
}

void KvSmPreview::SetPackedDib(const PackedDib& dib)
{
    m_dib.clear();
    m_image = QImage();
    const auto header = dib.Header();
    const qint64 length = header ? PackedDibLength(*header) : 0;
    if (length > 0) {
        m_dib = dib.Bytes().left(qsizetype(std::min<qint64>(length, dib.Bytes().size())));
        // Rows padded to 16 bits make the kept copy shorter than the pixels of most pictures
        // whose header gives no image size; the picture is decoded from the caller's whole
        // block while it is at hand, so that it shows complete.
        m_image = TroveUI::DibToImage(dib);
    }
    update();
}

void KvSmPreview::ClearDib()
{
    m_dib.clear();
    m_image = QImage();
    update();
}

QPixmap KvSmPreview::CreateBitmap() const
{
    return m_image.isNull() ? QPixmap() : QPixmap::fromImage(m_image);
}

QRect KvSmPreview::PictureRect(const QRect& client, QSize dibSize)
{
    const int width = dibSize.width();
    const int height = std::abs(dibSize.height());
    if (width <= 0 || height <= 0)
        return {};
    const QRect area = client.adjusted(kMargin, kMargin, -kMargin, -kMargin);
    // Single precision, as the pane has always measured: 186 / 300 must scale 300 to 186.
    const float scale =
        std::min(float(area.width()) / float(width), float(area.height()) / float(height));
    if (!(scale > 0.0f))
        return {};
    int drawnWidth = width;
    int drawnHeight = height;
    if (scale < 1.0f) {
        drawnWidth = int(float(width) * scale);
        drawnHeight = int(float(height) * scale);
    }
    if (drawnWidth <= 0 || drawnHeight <= 0)
        return {};
    return QRect(area.left() + (area.width() - drawnWidth) / 2,
                 area.top() + (area.height() - drawnHeight) / 2, drawnWidth, drawnHeight);
}

qint64 KvSmPreview::PackedDibLength(const BitmapInfoHeader& header)
{
    qint64 imageBytes = header.biSizeImage;
    if (imageBytes == 0) {
        // Rows rounded to 16 bits, not 32: that is how this length has always been reckoned,
        // and hosts size their buffers by it.
        imageBytes = ((qint64(header.biWidth) * header.biBitCount + 15) / 16) * header.biHeight * 2;
    }
    qint64 length = qint64(header.biSize) + imageBytes;
    if (header.biBitCount < 9)
        length += qint64(4) << header.biBitCount;
    return length;
}

void KvSmPreview::DrawPreview(QPainter& painter, const QRect& client)
{
    if (m_image.isNull())
        return;
    const QRect target = PictureRect(client, m_image.size());
    if (target.isEmpty())
        return;
    painter.setRenderHint(QPainter::SmoothPixmapTransform, target.size() != m_image.size());
    painter.drawImage(target, m_image);
}
