#pragma once

#include "kvuiframework_export.h"

#include <QByteArray>
#include <QImage>

#include <cstdint>
#include <optional>

/// The 40-byte bitmap information header of the Windows bitmap format, as stored (little-endian).
struct KVUIFRAMEWORK_EXPORT BitmapInfoHeader
{
    static constexpr int kSize = 40;
    /// End of the red, green and blue masks of a bit-field picture: they start at byte 40, right
    /// after a 40-byte header or as the first fields past it in a longer one.
    static constexpr int kMasksEnd = 52;
    /// End of the alpha mask, which only headers of at least this size carry.
    static constexpr int kAlphaMaskEnd = 56;
    /// The size of the header FromImage writes for pictures with transparency.
    static constexpr int kV4Size = 108;
    enum Compression : std::uint32_t { Rgb = 0, Rle8 = 1, Rle4 = 2, BitFields = 3 };

    std::uint32_t biSize = kSize;
    std::int32_t biWidth = 0;
    std::int32_t biHeight = 0; // negative: rows stored top-down
    std::uint16_t biPlanes = 1;
    std::uint16_t biBitCount = 0;
    std::uint32_t biCompression = Rgb;
    std::uint32_t biSizeImage = 0;
    std::int32_t biXPelsPerMeter = 0;
    std::int32_t biYPelsPerMeter = 0;
    std::uint32_t biClrUsed = 0;
    std::uint32_t biClrImportant = 0;

    /// Reads a header from the first 40 bytes of @p data; nullopt when fewer are given.
    static std::optional<BitmapInfoHeader> Read(const char* data, qsizetype size);
    /// Writes the 40 bytes.
    QByteArray Bytes() const;

    /// Colour-table entries that follow the header: biClrUsed, or 2^bit count when that is 0, for
    /// bit counts of 8 and below; 0 above 8. Never more than 256.
    int ColorCount() const;
    /// Bytes per stored row: padded to 32 bits. -1 when the width or bit count makes no sense.
    qint64 StrideBytes() const;
    /// Whether the header is long enough to hold an alpha mask. Only then, and only for
    /// bit-field pictures, can pixels carry transparency: the fourth byte of a plain 32-bit
    /// pixel is unused.
    bool DeclaresAlphaMask() const { return biSize >= std::uint32_t(kAlphaMaskEnd); }
};

/// A packed device-independent bitmap: header, colour table and pixels in one block, as drawing
/// files and the clipboard carry them. The bytes come from outside, so every reading is checked
/// against the buffer's size and against a sane picture size; a picture that cannot be read is a
/// null image, never a read past the end.
class KVUIFRAMEWORK_EXPORT PackedDib
{
public:
    /// Pictures larger than this many pixels are refused rather than allocated.
    static constexpr qint64 kMaxPixels = 64LL * 1024 * 1024;
    /// Run-length pictures may have at most this many pixels per byte of encoded data.
    static constexpr qint64 kMaxRlePixelsPerByte = 4096;

    PackedDib() = default;
    explicit PackedDib(QByteArray bytes) : m_bytes(std::move(bytes)) {}

    /// A bottom-up packed DIB of @p image: 24 bits with a 40-byte header for opaque images;
    /// for images with an alpha channel 32-bit bit fields with a 108-byte header that declares
    /// the alpha mask, the one layout in which the format carries transparency.
    static PackedDib FromImage(const QImage& image);

    bool IsNull() const { return m_bytes.isEmpty(); }
    const QByteArray& Bytes() const { return m_bytes; }
    std::optional<BitmapInfoHeader> Header() const;

    /// Where the pixels start when they follow the header: header size, colour table and, for
    /// bit-field pictures whose header ends before them, the masks.
    qint64 StandardBitsOffset() const;

    /// The picture with its pixels where StandardBitsOffset says.
    QImage ToImage() const;
    /// The picture with its pixels starting @p bitsOffset bytes into the block.
    QImage ToImage(qint64 bitsOffset) const;
    /// The picture with this header and colour table and separately held pixels.
    QImage ToImage(const char* bits, qint64 bitsSize) const;

private:
    QByteArray m_bytes;
};
