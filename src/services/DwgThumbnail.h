#pragma once

#include "kvxreftroveui_export.h"

#include "framework/PackedDib.h"

#include <QPixmap>

#include <string>

class QIODevice;

namespace TroveUI {

/// The preview picture stored in the drawing file at @p path, as a packed DIB that belongs to
/// the caller. A null PackedDib when the file cannot be opened, is not a drawing of a known
/// version, has no preview block, or its first usable preview entry (a BMP or a PNG, in the
/// order the file lists them) cannot be read. Only the first kilobyte, the preview directory and
/// that one entry are read.
KVXREFTROVEUI_EXPORT PackedDib ExtractDwgThumbnail(const std::wstring& path);

/// The same for a drawing held by @p device, which must be open for reading and allow seeking.
KVXREFTROVEUI_EXPORT PackedDib ExtractDwgThumbnail(QIODevice& device);

/// The picture of the packed DIB @p dib; null for a null DIB or one that cannot be read. The
/// pixels are taken to start right after the header and the colour table (the header's colour
/// count, or 2 to the power of the bit count, entries of 4 bytes), also for bit-field pictures
/// with a 40-byte header, whose masks are then read as pixels: drawings and hosts hand over
/// their DIBs that way, and reading them otherwise would shift every row. Longer headers hold
/// their masks inside. The picture is opaque unless the header declares an alpha mask (a
/// bit-field picture with a header of 56 bytes or more); the fourth byte of a plain 32-bit
/// pixel is unused.
KVXREFTROVEUI_EXPORT QImage DibToImage(const PackedDib& dib);

/// A bitmap of DibToImage(@p dib), owned by the caller; null when that picture is null.
KVXREFTROVEUI_EXPORT QPixmap CopyBitmapInfo(const PackedDib& dib);

} // namespace TroveUI
