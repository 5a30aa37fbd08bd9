#include "framework/PackedDib.h"

#include <QtEndian>

#include <algorithm>
#include <array>
#include <climits>
#include <cstring>
#include <optional>
#include <vector>

namespace {

std::uint32_t readU32(const char* p)
{
    return qFromLittleEndian<std::uint32_t>(p);
}

std::uint16_t readU16(const char* p)
{
    return qFromLittleEndian<std::uint16_t>(p);
}

// A colour mask of a bit-field picture: where its bits are and how to widen them to 8 bits.
struct Channel
{
    std::uint32_t mask = 0;
    int shift = 0;
    int bits = 0;

    explicit Channel(std::uint32_t m = 0) : mask(m)
    {
        if (!mask)
            return;
        while (!((mask >> shift) & 1u))
            ++shift;
        while (shift + bits < 32 && ((mask >> (shift + bits)) & 1u))
            ++bits;
    }

    std::uint32_t raw(std::uint32_t pixel) const
    {
        const std::uint32_t max = bits >= 32 ? 0xFFFFFFFFu : ((1u << bits) - 1u);
        return (pixel >> shift) & max;
    }

    // Narrow channels move up into the high bits and wide ones keep their top eight, as the
    // display drivers and Qt's own reader do: 5-bit white is 248, not 255, so that pictures
    // look the same here as in every other program.
    int value(std::uint32_t pixel) const
    {
        if (!bits)
            return 0;
        const std::uint32_t v = raw(pixel);
        return int(bits >= 8 ? v >> (bits - 8) : v << (8 - bits));
    }

    // Transparency is scaled to the full range instead: the largest value of any width is
    // opaque, so a one-bit alpha of 1 must not turn into half transparency.
    int alpha(std::uint32_t pixel) const
    {
        if (!bits)
            return 255;
        const std::uint32_t max = bits >= 32 ? 0xFFFFFFFFu : ((1u << bits) - 1u);
        return int((std::uint64_t(raw(pixel)) * 255u + max / 2) / max);
    }
};

// Expands run-length encoded rows (4 or 8 bits per index) into one index byte per pixel.
// Damaged streams end the decoding early; pixels never reached stay 0.
bool decodeRle(const unsigned char* src, qint64 size, int bitCount, int width, int height,
               std::vector<unsigned char>& out)
{
    out.assign(size_t(width) * size_t(height), 0);
    int x = 0;
    int y = 0; // stored row, bottom-up
    qint64 i = 0;
    auto put = [&](int index) {
        if (x < width && y < height)
            out[size_t(y) * size_t(width) + size_t(x)] = static_cast<unsigned char>(index);
        ++x;
    };
    while (i + 1 < size && y < height) {
        const int count = src[i];
        const int value = src[i + 1];
        i += 2;
        if (count > 0) {
            for (int n = 0; n < count; ++n)
                put(bitCount == 8 ? value : (n % 2 == 0 ? value >> 4 : value & 0x0F));
            continue;
        }
        if (value == 0) { // end of line
            x = 0;
            ++y;
        } else if (value == 1) { // end of picture
            break;
        } else if (value == 2) { // delta
            if (i + 1 >= size)
                break;
            x += src[i];
            y += src[i + 1];
            i += 2;
        } else { // absolute run of `value` indexes, padded to 16 bits
            const int n = value;
            const qint64 bytes = bitCount == 8 ? n : (n + 1) / 2;
            if (i + bytes > size)
                break;
            for (int k = 0; k < n; ++k) {
                const int byte = src[i + (bitCount == 8 ? k : k / 2)];
                put(bitCount == 8 ? byte : (k % 2 == 0 ? byte >> 4 : byte & 0x0F));
            }
            i += (bytes + 1) & ~qint64(1);
        }
    }
    return true;
}

using Palette = std::array<QRgb, 256>;

// The colour masks of a 16- or 32-bit picture; all empty for the other bit counts. The alpha
// mask stays empty unless the header itself declares one.
struct Masks
{
    Channel red;
    Channel green;
    Channel blue;
    Channel alpha;

    bool hasAlpha() const { return alpha.bits != 0; }

    QRgb color(std::uint32_t pixel) const
    {
        return qRgba(red.value(pixel), green.value(pixel), blue.value(pixel), alpha.alpha(pixel));
    }
};

// How the pixels of one row are stored, after run-length data has been expanded.
enum class PixelFormat {
    Indexed1,
    Indexed4,
    Indexed8, // also expanded run-length rows: one index byte per pixel
    Masked16,
    Bgr24,
    Masked32,
    Bgrx32, // the fourth byte is unused
};

// What the header says about the pixels, once it has been checked against the buffers.
struct Layout
{
    int width = 0;
    int height = 0;
    bool bottomUp = true;
    bool rle = false;
    PixelFormat format = PixelFormat::Indexed8;
    qint64 stride = 0; // bytes from one row to the next, of the expanded rows for run lengths
};

// The row format of a bit count and compression; nullopt for the combinations not read here.
std::optional<PixelFormat> pixelFormat(int bitCount, std::uint32_t compression)
{
    using H = BitmapInfoHeader;
    const bool plain = compression == H::Rgb;
    switch (bitCount) {
    case 1:
        return plain ? std::optional(PixelFormat::Indexed1) : std::nullopt;
    case 4:
        if (compression == H::Rle4)
            return PixelFormat::Indexed8;
        return plain ? std::optional(PixelFormat::Indexed4) : std::nullopt;
    case 8:
        return plain || compression == H::Rle8 ? std::optional(PixelFormat::Indexed8)
                                               : std::nullopt;
    case 16:
        return plain || compression == H::BitFields ? std::optional(PixelFormat::Masked16)
                                                    : std::nullopt;
    case 24:
        return plain ? std::optional(PixelFormat::Bgr24) : std::nullopt;
    case 32:
        if (compression == H::BitFields)
            return PixelFormat::Masked32;
        return plain ? std::optional(PixelFormat::Bgrx32) : std::nullopt;
    default:
        return std::nullopt;
    }
}

// Checks the header against the block it came in (@p blockSize bytes) and the pixel data
// (@p bitsSize bytes) before anything is allocated for the picture.
std::optional<Layout> checkLayout(const BitmapInfoHeader& h, qint64 blockSize, qint64 bitsSize)
{
    if (h.biSize < BitmapInfoHeader::kSize || h.biSize > std::uint32_t(blockSize))
        return std::nullopt;
    if (h.biWidth <= 0 || h.biHeight == 0 || h.biHeight == INT_MIN)
        return std::nullopt;
    Layout layout;
    layout.width = h.biWidth;
    layout.height = h.biHeight > 0 ? h.biHeight : -h.biHeight;
    layout.bottomUp = h.biHeight > 0;
    const qint64 pixels = qint64(layout.width) * layout.height;
    if (pixels > PackedDib::kMaxPixels)
        return std::nullopt;

    const auto format = pixelFormat(h.biBitCount, h.biCompression);
    if (!format)
        return std::nullopt;
    layout.format = *format;
    layout.rle =
        h.biCompression == BitmapInfoHeader::Rle8 || h.biCompression == BitmapInfoHeader::Rle4;
    if (layout.rle) {
        if (!layout.bottomUp)
            return std::nullopt;
        // Run-length data may describe far more pixels than it has bytes, but not without limit:
        // a code pair draws at most 255 pixels and even skips over empty rows cost a code each.
        // A picture beyond this ratio is not a real one, and decoding it would take seconds and
        // hundreds of megabytes for a few dozen bytes of input.
        if (pixels > PackedDib::kMaxRlePixelsPerByte * bitsSize)
            return std::nullopt;
        layout.stride = layout.width;
    } else {
        layout.stride = h.StrideBytes();
        if (layout.stride <= 0 || layout.stride * layout.height > bitsSize)
            return std::nullopt;
    }
    return layout;
}

// Reads the colour table that follows the header; false when it runs past the block. Entries
// the table does not have stay 0.
bool readPalette(const BitmapInfoHeader& h, const QByteArray& block, Palette& palette)
{
    const int colors = h.ColorCount();
    if (colors == 0)
        return true;
    if (qint64(h.biSize) + qint64(colors) * 4 > block.size())
        return false;
    const auto* table = reinterpret_cast<const unsigned char*>(block.constData() + h.biSize);
    for (int i = 0; i < colors; ++i)
        palette[size_t(i)] = qRgb(table[i * 4 + 2], table[i * 4 + 1], table[i * 4]);
    return true;
}

// The colour masks: 5-5-5 for a plain 16-bit picture; for a bit-field picture the three words at
// byte 40, which follow a 40-byte header and are the first fields past it in the longer
// headers. Only those longer headers (56 bytes and up) have room for an alpha mask, at byte 52;
// a 40-byte header declares none, whatever the fourth byte of the pixels holds. Nullopt when
// the masks run past the block.
std::optional<Masks> readMasks(const BitmapInfoHeader& h, const QByteArray& block)
{
    Masks masks;
    if (h.biCompression == BitmapInfoHeader::BitFields) {
        if (BitmapInfoHeader::kMasksEnd > block.size())
            return std::nullopt;
        const char* at = block.constData() + BitmapInfoHeader::kSize;
        masks.red = Channel(readU32(at));
        masks.green = Channel(readU32(at + 4));
        masks.blue = Channel(readU32(at + 8));
        if (h.DeclaresAlphaMask() && BitmapInfoHeader::kAlphaMaskEnd <= block.size())
            masks.alpha = Channel(readU32(at + 12));
    } else if (h.biBitCount == 16) {
        masks.red = Channel(0x7C00);
        masks.green = Channel(0x03E0);
        masks.blue = Channel(0x001F);
    }
    return masks;
}

// Row decoders: each turns one stored row of @p width pixels into colours.

// Indexes of fewer than 8 bits are packed from the high bits of each byte down.
template <int Bits>
void decodeIndexedRow(const unsigned char* src, int width, const Palette& palette, QRgb* dst)
{
    constexpr int perByte = 8 / Bits;
    constexpr int mask = (1 << Bits) - 1;
    for (int x = 0; x < width; ++x) {
        const int shift = 8 - Bits * (x % perByte + 1);
        dst[x] = palette[size_t((src[x / perByte] >> shift) & mask)];
    }
}

void decodeMasked16Row(const unsigned char* src, int width, const Masks& masks, QRgb* dst)
{
    for (int x = 0; x < width; ++x)
        dst[x] = masks.color(std::uint32_t(src[x * 2]) | (std::uint32_t(src[x * 2 + 1]) << 8));
}

void decodeBgr24Row(const unsigned char* src, int width, QRgb* dst)
{
    for (int x = 0; x < width; ++x)
        dst[x] = qRgb(src[x * 3 + 2], src[x * 3 + 1], src[x * 3]);
}

void decodeMasked32Row(const unsigned char* src, int width, const Masks& masks, QRgb* dst)
{
    for (int x = 0; x < width; ++x)
        dst[x] = masks.color(readU32(reinterpret_cast<const char*>(src + x * 4)));
}

void decodeBgrx32Row(const unsigned char* src, int width, QRgb* dst)
{
    for (int x = 0; x < width; ++x)
        dst[x] = qRgb(src[x * 4 + 2], src[x * 4 + 1], src[x * 4]);
}

// Decodes every row of @p rows into @p image, turning bottom-up pictures the right way up.
void decodeRows(const Layout& layout, const unsigned char* rows, const Palette& palette,
                const Masks& masks, QImage& image)
{
    const int width = layout.width;
    const int height = layout.height;
    for (int row = 0; row < height; ++row) {
        const unsigned char* src = rows + qint64(row) * layout.stride;
        auto* dst =
            reinterpret_cast<QRgb*>(image.scanLine(layout.bottomUp ? height - 1 - row : row));
        switch (layout.format) {
        case PixelFormat::Indexed1:
            decodeIndexedRow<1>(src, width, palette, dst);
            break;
        case PixelFormat::Indexed4:
            decodeIndexedRow<4>(src, width, palette, dst);
            break;
        case PixelFormat::Indexed8:
            decodeIndexedRow<8>(src, width, palette, dst);
            break;
        case PixelFormat::Masked16:
            decodeMasked16Row(src, width, masks, dst);
            break;
        case PixelFormat::Bgr24:
            decodeBgr24Row(src, width, dst);
            break;
        case PixelFormat::Masked32:
            decodeMasked32Row(src, width, masks, dst);
            break;
        case PixelFormat::Bgrx32:
            decodeBgrx32Row(src, width, dst);
            break;
        }
    }
}

} // namespace

std::optional<BitmapInfoHeader> BitmapInfoHeader::Read(const char* data, qsizetype size)
{
    if (!data || size < kSize)
        return std::nullopt;
    BitmapInfoHeader h;
    h.biSize = readU32(data);
    h.biWidth = std::int32_t(readU32(data + 4));
    h.biHeight = std::int32_t(readU32(data + 8));
    h.biPlanes = readU16(data + 12);
    h.biBitCount = readU16(data + 14);
    h.biCompression = readU32(data + 16);
    h.biSizeImage = readU32(data + 20);
    h.biXPelsPerMeter = std::int32_t(readU32(data + 24));
    h.biYPelsPerMeter = std::int32_t(readU32(data + 28));
    h.biClrUsed = readU32(data + 32);
    h.biClrImportant = readU32(data + 36);
    return h;
}

QByteArray BitmapInfoHeader::Bytes() const
{
    QByteArray out(kSize, '\0');
    char* p = out.data();
    qToLittleEndian<std::uint32_t>(biSize, p);
    qToLittleEndian<std::int32_t>(biWidth, p + 4);
    qToLittleEndian<std::int32_t>(biHeight, p + 8);
    qToLittleEndian<std::uint16_t>(biPlanes, p + 12);
    qToLittleEndian<std::uint16_t>(biBitCount, p + 14);
    qToLittleEndian<std::uint32_t>(biCompression, p + 16);
    qToLittleEndian<std::uint32_t>(biSizeImage, p + 20);
    qToLittleEndian<std::int32_t>(biXPelsPerMeter, p + 24);
    qToLittleEndian<std::int32_t>(biYPelsPerMeter, p + 28);
    qToLittleEndian<std::uint32_t>(biClrUsed, p + 32);
    qToLittleEndian<std::uint32_t>(biClrImportant, p + 36);
    return out;
}

int BitmapInfoHeader::ColorCount() const
{
    if (biBitCount > 8)
        return 0;
    if (biClrUsed != 0)
        return int(std::min<std::uint32_t>(biClrUsed, 256));
    return 1 << biBitCount;
}

qint64 BitmapInfoHeader::StrideBytes() const
{
    if (biWidth <= 0 || biBitCount == 0 || biBitCount > 32)
        return -1;
    return ((qint64(biWidth) * biBitCount + 31) / 32) * 4;
}

PackedDib PackedDib::FromImage(const QImage& source)
{
    if (source.isNull())
        return {};
    const bool alpha = source.hasAlphaChannel();
    const QImage image =
        source.convertToFormat(alpha ? QImage::Format_ARGB32 : QImage::Format_RGB32);
    BitmapInfoHeader h;
    h.biWidth = image.width();
    h.biHeight = image.height();
    h.biBitCount = alpha ? 32 : 24;
    const qint64 stride = h.StrideBytes();
    h.biSizeImage = std::uint32_t(stride * image.height());
    QByteArray bytes;
    if (alpha) {
        h.biSize = BitmapInfoHeader::kV4Size;
        h.biCompression = BitmapInfoHeader::BitFields;
        bytes = h.Bytes();
        bytes.resize(BitmapInfoHeader::kV4Size, '\0');
        char* masks = bytes.data() + BitmapInfoHeader::kSize;
        qToLittleEndian<std::uint32_t>(0x00FF0000u, masks);
        qToLittleEndian<std::uint32_t>(0x0000FF00u, masks + 4);
        qToLittleEndian<std::uint32_t>(0x000000FFu, masks + 8);
        qToLittleEndian<std::uint32_t>(0xFF000000u, masks + 12);
        // The colour space field: plain sRGB, so that no end points or gamma need to follow.
        qToLittleEndian<std::uint32_t>(0x73524742u, masks + 16);
    } else {
        bytes = h.Bytes();
    }
    const qsizetype headerBytes = bytes.size();
    bytes.resize(headerBytes + qsizetype(h.biSizeImage), '\0');
    char* bits = bytes.data() + headerBytes;
    const int width = image.width();
    const int height = image.height();
    for (int row = 0; row < height; ++row) {
        // Stored bottom-up, blue-green-red order.
        const auto* src = reinterpret_cast<const QRgb*>(image.constScanLine(height - 1 - row));
        auto* dst = reinterpret_cast<unsigned char*>(bits + row * stride);
        for (int x = 0; x < width; ++x) {
            *dst++ = static_cast<unsigned char>(qBlue(src[x]));
            *dst++ = static_cast<unsigned char>(qGreen(src[x]));
            *dst++ = static_cast<unsigned char>(qRed(src[x]));
            if (alpha)
                *dst++ = static_cast<unsigned char>(qAlpha(src[x]));
        }
    }
    return PackedDib(std::move(bytes));
}

std::optional<BitmapInfoHeader> PackedDib::Header() const
{
    return BitmapInfoHeader::Read(m_bytes.constData(), m_bytes.size());
}

qint64 PackedDib::StandardBitsOffset() const
{
    const auto h = Header();
    if (!h)
        return -1;
    qint64 headerEnd = h->biSize;
    if (h->biCompression == BitmapInfoHeader::BitFields)
        headerEnd = std::max<qint64>(headerEnd, BitmapInfoHeader::kMasksEnd);
    return headerEnd + qint64(h->ColorCount()) * 4;
}

QImage PackedDib::ToImage() const
{
    return ToImage(StandardBitsOffset());
}

QImage PackedDib::ToImage(qint64 bitsOffset) const
{
    if (bitsOffset < 0 || bitsOffset > m_bytes.size())
        return {};
    return ToImage(m_bytes.constData() + bitsOffset, m_bytes.size() - bitsOffset);
}

QImage PackedDib::ToImage(const char* bitsData, qint64 bitsSize) const
{
    const auto header = Header();
    if (!header || !bitsData || bitsSize <= 0)
        return {};
    const BitmapInfoHeader& h = *header;
    const auto layout = checkLayout(h, m_bytes.size(), bitsSize);
    if (!layout)
        return {};
    Palette palette{};
    if (!readPalette(h, m_bytes, palette))
        return {};
    const auto masks = readMasks(h, m_bytes);
    if (!masks)
        return {};

    const auto* rows = reinterpret_cast<const unsigned char*>(bitsData);
    std::vector<unsigned char> expanded;
    if (layout->rle) {
        decodeRle(rows, bitsSize, h.biBitCount, layout->width, layout->height, expanded);
        rows = expanded.data();
    }

    QImage image(layout->width, layout->height,
                 masks->hasAlpha() ? QImage::Format_ARGB32 : QImage::Format_RGB32);
    if (image.isNull())
        return {};
    decodeRows(*layout, rows, palette, *masks, image);
    return image;
}
