#include "host/KvDbRasterImageDef.h"

#include "host/ZuIntImgServices.h"

#include <QFile>
#include <QFileInfo>
#include <QImageReader>

#include <poppler-qt6.h>

#include <cmath>

namespace {

KvDbRasterImageDef::Factory& factory()
{
    static KvDbRasterImageDef::Factory current;
    return current;
}

// The size that fits within `box` with the proportions of `size`, never larger than `size`.
QSize fitWithin(QSize size, QSize box)
{
    if (size.width() <= box.width() && size.height() <= box.height())
        return size;
    return size.scaled(box, Qt::KeepAspectRatio).expandedTo(QSize(1, 1));
}

// A PDF may carry a little junk before its "%PDF-" mark; readers look for it in the first
// kilobyte, so we do the same instead of trusting the file name.
bool looksLikePdf(const QString& path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly | QIODevice::Unbuffered))
        return false;
    return file.read(1024).contains("%PDF-");
}

void quietPoppler(const QString&, const QVariant&)
{
    // Damaged underlays are common; their parse errors are not ours to print.
}

QImage renderPdfFirstPage(const QString& path, QSize box)
{
    static const bool silenced = (Poppler::setDebugErrorFunction(quietPoppler, QVariant()), true);
    (void)silenced;
    const std::unique_ptr<Poppler::Document> document = Poppler::Document::load(path);
    if (!document || document->isLocked() || document->numPages() < 1)
        return {};
    const std::unique_ptr<Poppler::Page> page = document->page(0);
    if (!page)
        return {};
    const QSizeF points = page->pageSizeF();
    if (!(points.width() > 0) || !(points.height() > 0) || !std::isfinite(points.width()) ||
        !std::isfinite(points.height()))
        return {};
    document->setRenderHint(Poppler::Document::Antialiasing);
    document->setRenderHint(Poppler::Document::TextAntialiasing);
    // A resolution that makes the page fit the box: the rendering never exceeds the box, however
    // large the page claims to be.
    const double dpi =
        72.0 * std::min(box.width() / points.width(), box.height() / points.height());
    QImage image = page->renderToImage(dpi, dpi);
    if (image.isNull())
        return {};
    if (image.width() > box.width() || image.height() > box.height())
        image = image.scaled(box, Qt::KeepAspectRatio, Qt::SmoothTransformation);
    return image;
}

QImage readImage(const QString& path, QSize box)
{
    QImageReader reader(path);
    reader.setDecideFormatFromContent(true);
    reader.setAutoTransform(true);
    if (!reader.canRead())
        return {};
    const QSize size = reader.size();
    if (size.isValid()) {
        if (size.isEmpty() || qint64(size.width()) * size.height() > ZuIntImgServices::kMaxPixels)
            return {};
        // Readers that can decode at a smaller size (JPEG) then never hold the full picture.
        reader.setScaledSize(fitWithin(size, box));
    }
    QImage image;
    if (!reader.read(&image) || image.isNull())
        return {};
    if (image.width() > box.width() || image.height() > box.height())
        image = image.scaled(box, Qt::KeepAspectRatio, Qt::SmoothTransformation);
    return image;
}

} // namespace

std::unique_ptr<KvDbRasterImageDef> KvDbRasterImageDef::Create()
{
    if (const Factory& make = factory())
        return make();
    return std::make_unique<KvDbRasterImageDef>();
}

KvDbRasterImageDef::Factory KvDbRasterImageDef::SetFactory(Factory make)
{
    Factory previous = std::move(factory());
    factory() = std::move(make);
    return previous;
}

KvDbRasterImageDef::KvDbRasterImageDef() = default;
KvDbRasterImageDef::~KvDbRasterImageDef() = default;

void KvDbRasterImageDef::setSourceFileName(const QString& path)
{
    close();
    m_path = path;
}

bool KvDbRasterImageDef::load(int width, int height)
{
    m_image = QImage();
    m_thumbnail = PackedDib();
    if (m_path.isEmpty() || width <= 0 || height <= 0)
        return false;
    // Regular files only: a named pipe would make the readers wait for a writer, and a device
    // may never end.
    if (!QFileInfo(m_path).isFile())
        return false;
    const QSize box(width, height);
    m_image = looksLikePdf(m_path) ? renderPdfFirstPage(m_path, box) : readImage(m_path, box);
    return !m_image.isNull();
}

const PackedDib* KvDbRasterImageDef::getThumbnailDib(int width, int height)
{
    m_thumbnail = PackedDib();
    if (m_image.isNull() || width <= 0 || height <= 0)
        return nullptr;
    const QSize size = fitWithin(m_image.size(), QSize(width, height));
    const QImage thumbnail = size == m_image.size() ? m_image
                                                    : m_image.scaled(size, Qt::IgnoreAspectRatio,
                                                                     Qt::SmoothTransformation);
    m_thumbnail = getZuIntImgServices()->ImageToDib(thumbnail);
    return m_thumbnail.IsNull() ? nullptr : &m_thumbnail;
}

void KvDbRasterImageDef::close()
{
    m_image = QImage();
    m_thumbnail = PackedDib();
}
