#pragma once

#include "kvhostservices_export.h"

#include "framework/PackedDib.h"

#include <QImage>
#include <QString>

#include <functional>
#include <memory>

/// The drawing database's raster image definition: it renders a picture of a file that is not a
/// drawing (any image format the image readers know, and the first page of a PDF underlay) for
/// thumbnails. Use: set the source file, load at a working size, ask for thumbnails, close.
/// A host with its own renderer installs a factory that makes its derived definitions.
class KVHOSTSERVICES_EXPORT KvDbRasterImageDef
{
public:
    using Factory = std::function<std::unique_ptr<KvDbRasterImageDef>()>;

    /// A new definition from the installed factory (the default one when none is installed).
    static std::unique_ptr<KvDbRasterImageDef> Create();
    /// Installs @p factory (empty: the default); returns the previous one.
    static Factory SetFactory(Factory factory);

    KvDbRasterImageDef();
    virtual ~KvDbRasterImageDef();
    KvDbRasterImageDef(const KvDbRasterImageDef&) = delete;
    KvDbRasterImageDef& operator=(const KvDbRasterImageDef&) = delete;

    /// Names the file to render and forgets what was loaded before.
    virtual void setSourceFileName(const QString& path);
    const QString& sourceFileName() const { return m_path; }

    /// Renders the source file to fit within @p width x @p height, keeping its proportions; an
    /// image is never enlarged, a PDF page is drawn at the resolution that fits the box. False when
    /// the file cannot be read or rendered (then nothing is loaded).
    virtual bool load(int width, int height);
    bool isLoaded() const { return !m_image.isNull(); }
    /// The loaded picture (null when nothing is loaded).
    const QImage& loadedImage() const { return m_image; }

    /// A thumbnail of the loaded picture that fits within @p width x @p height (proportions kept,
    /// never enlarged), as a packed DIB: the 40-byte header followed by the pixels. The
    /// definition owns it; it stays valid until the next call, load or close. Null when nothing
    /// is loaded or the size is not positive.
    virtual const PackedDib* getThumbnailDib(int width, int height);

    /// Releases the picture and the thumbnail.
    virtual void close();

private:
    QString m_path;
    QImage m_image;
    PackedDib m_thumbnail;
};
