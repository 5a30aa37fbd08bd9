#pragma once

#include "kvhostservices_export.h"

#include "framework/PackedDib.h"

#include <QByteArray>
#include <QImage>

/// The host's image services: decoding compressed pictures that drawings carry and turning
/// pictures into packed DIBs. A host with its own codecs derives from this class and installs
/// itself with SetInstance; the default decodes with Qt's image readers.
class KVHOSTSERVICES_EXPORT ZuIntImgServices
{
public:
    /// Pictures that claim more pixels than this are refused before any pixel is allocated: a
    /// few bytes of compressed data must not make the decoder reserve gigabytes.
    static constexpr qint64 kMaxPixels = PackedDib::kMaxPixels;

    ZuIntImgServices() = default;
    virtual ~ZuIntImgServices();
    ZuIntImgServices(const ZuIntImgServices&) = delete;
    ZuIntImgServices& operator=(const ZuIntImgServices&) = delete;

    /// Decodes PNG bytes; a null image when the bytes are not a readable PNG or the picture is
    /// larger than kMaxPixels.
    virtual QImage DecodePng(const QByteArray& bytes) const;
    /// Whether a decoded picture can be used: not null and not empty.
    virtual bool IsValid(const QImage& image) const;
    /// The picture as a packed DIB (24-bit, or 32-bit when it has transparency); null for an
    /// invalid picture.
    virtual PackedDib ImageToDib(const QImage& image) const;

    /// Replaces the process-wide services; null restores the default ones. The caller keeps
    /// ownership and must keep the object alive while it is installed. Returns the previous one.
    static ZuIntImgServices* SetInstance(ZuIntImgServices* services);
};

/// The process-wide image services.
KVHOSTSERVICES_EXPORT ZuIntImgServices* getZuIntImgServices();
