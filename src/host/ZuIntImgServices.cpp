#include "host/ZuIntImgServices.h"

#include <QBuffer>
#include <QImageReader>

namespace {

ZuIntImgServices*& installed()
{
    static ZuIntImgServices* current = nullptr;
    return current;
}

} // namespace

ZuIntImgServices::~ZuIntImgServices() = default;

QImage ZuIntImgServices::DecodePng(const QByteArray& bytes) const
{
    QByteArray data = bytes; // shares, does not copy: QBuffer wants a non-const array
    QBuffer buffer(&data);
    if (!buffer.open(QIODevice::ReadOnly))
        return {};
    QImageReader reader(&buffer, "png");
    reader.setDecideFormatFromContent(false);
    // The header states the size; refuse absurd sizes before the decoder allocates them. Nor
    // can a picture need more rows than its compressed bytes could ever inflate to: deflate
    // expands at most about 1,032 times, and a row holds at least a filter byte and one bit a
    // pixel. That keeps a few hundred hostile bytes from reserving a large image.
    const QSize size = reader.size();
    if (!size.isValid() || size.isEmpty() || qint64(size.width()) * size.height() > kMaxPixels)
        return {};
    const qint64 smallestRaw = qint64(size.height()) * (1 + (qint64(size.width()) + 7) / 8);
    if (smallestRaw > 1100 * qint64(bytes.size()) + 4096)
        return {};
    QImage image;
    if (!reader.read(&image))
        return {};
    return image;
}

bool ZuIntImgServices::IsValid(const QImage& image) const
{
    return !image.isNull() && image.width() > 0 && image.height() > 0;
}

PackedDib ZuIntImgServices::ImageToDib(const QImage& image) const
{
    if (!IsValid(image))
        return {};
    return PackedDib::FromImage(image);
}

ZuIntImgServices* ZuIntImgServices::SetInstance(ZuIntImgServices* services)
{
    ZuIntImgServices* previous = installed();
    installed() = services;
    return previous;
}

ZuIntImgServices* getZuIntImgServices()
{
    if (ZuIntImgServices* current = installed())
        return current;
    static ZuIntImgServices defaults;
    return &defaults;
}
