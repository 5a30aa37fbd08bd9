#include "views/KvSmPreview.h"

#include "services/DwgThumbnail.h"

#include <QPainter>

#include <algorithm>
#include <cstdlib>
#include <vector>

namespace {

// Shrinks a picture of few colours so that each target pixel is the bitwise AND of the source
// pixels it stands for. Such previews are line drawings, dark on light; dropping pixels (Qt's
// fast scaling) loses thin lines and averaging them (smooth scaling) washes them out, while the
// AND keeps every dark line. Qt offers no such mode, hence this loop. It visits every source
// pixel once.
QImage shrinkKeepingDarkPixels(const QImage& picture, QSize size)
{
    const QImage source = picture.convertToFormat(QImage::Format_RGB32);
    QImage target(size, QImage::Format_RGB32);
    if (source.isNull() || target.isNull())
        return {};
    const qint64 sourceWidth = source.width();
    const qint64 sourceHeight = source.height();
    std::vector<int> columnStart(std::size_t(size.width()) + 1);
    for (int x = 0; x <= size.width(); ++x)
        columnStart[std::size_t(x)] = int(x * sourceWidth / size.width());
    for (int y = 0; y < size.height(); ++y) {
        const int top = int(y * sourceHeight / size.height());
        const int bottom = std::max(top + 1, int((y + 1) * sourceHeight / size.height()));
        auto* out = reinterpret_cast<QRgb*>(target.scanLine(y));
        std::fill(out, out + size.width(), ~QRgb(0));
        for (int row = top; row < bottom; ++row) {
            const auto* in = reinterpret_cast<const QRgb*>(source.constScanLine(row));
            for (int x = 0; x < size.width(); ++x) {
                const int left = columnStart[std::size_t(x)];
                const int right = std::max(left + 1, columnStart[std::size_t(x) + 1]);
                QRgb value = out[x];
                for (int column = left; column < right; ++column)
                    value &= in[column];
                out[x] = value;
            }
        }
    }
    return target;
}

} // namespace

KvSmPreview::KvSmPreview(QWidget* parent) : CZuUiThemedPreview(parent) {}

void KvSmPreview::setPicture(QImage image)
{
    m_image = std::move(image);
    m_shrunk = QImage();
}

void KvSmPreview::SetDib(const PackedDib& info, const char* bits, qint64 bitsSize)
{
    m_dib = info.Bytes().left(kHeaderCopyBytes);
    // Decoded with the caller's full colour table while it is still at hand: the kept copy
    // holds only the first entry.
    setPicture(info.ToImage(bits, bitsSize));
    update();
}

void KvSmPreview::SetPackedDib(const PackedDib& dib)
{
    m_dib.clear();
    setPicture(QImage());
    const auto header = dib.Header();
    const qint64 length = header ? PackedDibLength(*header) : 0;
    if (length > 0) {
        m_dib = dib.Bytes().left(qsizetype(std::min<qint64>(length, dib.Bytes().size())));
        // Rows padded to 16 bits make the kept copy shorter than the pixels of most pictures
        // whose header gives no image size; the picture is decoded from the caller's whole
        // block while it is at hand, so that it shows complete.
        setPicture(TroveUI::DibToImage(dib));
    }
    update();
}

void KvSmPreview::ClearDib()
{
    m_dib.clear();
    setPicture(QImage());
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
    // Pictures of many colours shrink by dropping pixels, those of few colours by keeping the
    // dark ones; neither is ever blended. Shrinking is worked out in device pixels, so that a
    // high-density screen gets all the detail it can show.
    const qreal ratio = painter.device() ? painter.device()->devicePixelRatioF() : 1.0;
    const QSize device(qRound(target.width() * ratio), qRound(target.height() * ratio));
    painter.setRenderHint(QPainter::SmoothPixmapTransform, false);
    // The kept copy starts with the header whenever there is a picture.
    const auto header = PackedDib(m_dib).Header();
    const bool fewColours = header && header->biBitCount <= 8;
    if (fewColours && (device.width() < m_image.width() || device.height() < m_image.height()))
        painter.drawImage(target, shrunkPicture(device));
    else
        painter.drawImage(target, m_image);
}

const QImage& KvSmPreview::shrunkPicture(QSize size) const
{
    if (m_shrunk.size() != size)
        m_shrunk = shrinkKeepingDarkPixels(m_image, size);
    return m_shrunk;
}
