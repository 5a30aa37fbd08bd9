#pragma once

#include "framework/PackedDib.h"

#include <QByteArray>
#include <QList>
#include <QRgb>

#include <cstdint>
#include <functional>

/// Writes packed DIBs for tests: any header values, a colour table, bit-field masks and pixels
/// laid out as the format stores them (rows padded to 32 bits, bottom-up for a positive height).
class DibBuilder
{
public:
    /// The raw value of the pixel at (x, y), y counted from the top of the picture: a colour
    /// index for 8 bits and fewer, a 16-bit word, or a 0xAARRGGBB colour for 24 and 32 bits.
    using PixelFunction = std::function<std::uint32_t(int x, int y)>;

    DibBuilder(int width, int height, int bitCount);

    DibBuilder& Compression(std::uint32_t compression);
    DibBuilder& ClrUsed(std::uint32_t count);
    DibBuilder& SizeImage(std::uint32_t bytes);
    DibBuilder& HeaderSize(std::uint32_t bytes);
    /// Colour-table entries written right after the header (after the masks, if any).
    DibBuilder& Palette(QList<QRgb> colors);
    /// Bit-field masks written at byte 40: after a 40-byte header, inside a longer one (which
    /// is then padded with zeros to its size).
    DibBuilder& Masks(std::uint32_t red, std::uint32_t green, std::uint32_t blue);
    /// A fourth mask after the three; only headers of 56 bytes and more have room for it.
    DibBuilder& AlphaMask(std::uint32_t alpha);
    DibBuilder& Pixels(PixelFunction pixel);
    /// Pixel bytes as they stand, for run-length data.
    DibBuilder& RawPixels(QByteArray bytes);
    /// Every pixel has the value @p value.
    DibBuilder& Fill(std::uint32_t value);

    const BitmapInfoHeader& Header() const { return m_header; }
    /// Header, masks, palette and pixels.
    QByteArray Bytes() const;
    PackedDib Dib() const { return PackedDib(Bytes()); }
    /// The pixels alone.
    QByteArray PixelBytes() const;
    /// Header, masks and palette without pixels.
    QByteArray HeaderBytes() const;
    /// A bitmap file of Bytes(): the 14-byte file header, with the pixels where HeaderBytes ends.
    QByteArray FileBytes() const;

private:
    BitmapInfoHeader m_header;
    QList<QRgb> m_palette;
    QList<std::uint32_t> m_masks;
    PixelFunction m_pixel;
    QByteArray m_rawPixels;
    bool m_hasRawPixels = false;
};
