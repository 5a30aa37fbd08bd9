#include "support/DibBuilder.h"

#include <QtEndian>

#include <cstdlib>

DibBuilder::DibBuilder(int width, int height, int bitCount)
{
    m_header.biWidth = width;
    m_header.biHeight = height;
    m_header.biBitCount = std::uint16_t(bitCount);
    m_pixel = [](int, int) { return 0u; };
}

DibBuilder& DibBuilder::Compression(std::uint32_t compression)
{
    m_header.biCompression = compression;
    return *this;
}

DibBuilder& DibBuilder::ClrUsed(std::uint32_t count)
{
    m_header.biClrUsed = count;
    return *this;
}

DibBuilder& DibBuilder::SizeImage(std::uint32_t bytes)
{
    m_header.biSizeImage = bytes;
    return *this;
}

DibBuilder& DibBuilder::HeaderSize(std::uint32_t bytes)
{
    m_header.biSize = bytes;
    return *this;
}

DibBuilder& DibBuilder::Palette(QList<QRgb> colors)
{
    m_palette = std::move(colors);
    return *this;
}

DibBuilder& DibBuilder::Masks(std::uint32_t red, std::uint32_t green, std::uint32_t blue)
{
    m_masks = {red, green, blue};
    return *this;
}

DibBuilder& DibBuilder::AlphaMask(std::uint32_t alpha)
{
    m_masks.resize(3, 0u);
    m_masks.append(alpha);
    return *this;
}

DibBuilder& DibBuilder::RawPixels(QByteArray bytes)
{
    m_rawPixels = std::move(bytes);
    m_hasRawPixels = true;
    return *this;
}

DibBuilder& DibBuilder::Pixels(PixelFunction pixel)
{
    m_pixel = std::move(pixel);
    return *this;
}

DibBuilder& DibBuilder::Fill(std::uint32_t value)
{
    return Pixels([value](int, int) { return value; });
}

QByteArray DibBuilder::HeaderBytes() const
{
    QByteArray out = m_header.Bytes();
    for (std::uint32_t mask : m_masks) {
        char word[4];
        qToLittleEndian(mask, word);
        out.append(word, 4);
    }
    // A longer header is written out to its size; absurd sizes are left for hostile-header
    // tests to state.
    if (m_header.biSize > std::uint32_t(out.size()) && m_header.biSize <= 4096)
        out.append(QByteArray(qsizetype(m_header.biSize) - out.size(), '\0'));
    for (QRgb color : m_palette) {
        out.append(char(qBlue(color)));
        out.append(char(qGreen(color)));
        out.append(char(qRed(color)));
        out.append('\0');
    }
    return out;
}

QByteArray DibBuilder::PixelBytes() const
{
    if (m_hasRawPixels)
        return m_rawPixels;
    const int width = m_header.biWidth;
    const int height = std::abs(m_header.biHeight);
    const int bits = m_header.biBitCount;
    if (width <= 0 || height <= 0 || bits <= 0 || bits > 32)
        return {};
    const qint64 stride = ((qint64(width) * bits + 31) / 32) * 4;
    QByteArray out(qsizetype(stride * height), '\0');
    for (int stored = 0; stored < height; ++stored) {
        const int y = m_header.biHeight > 0 ? height - 1 - stored : stored;
        auto* row = reinterpret_cast<unsigned char*>(out.data() + stored * stride);
        for (int x = 0; x < width; ++x) {
            const std::uint32_t v = m_pixel(x, y);
            switch (bits) {
            case 1:
            case 2:
            case 4:
            case 8: {
                const int perByte = 8 / bits;
                const int shift = 8 - bits * (x % perByte + 1);
                row[x / perByte] |= static_cast<unsigned char>((v & ((1u << bits) - 1)) << shift);
                break;
            }
            case 16:
                qToLittleEndian(std::uint16_t(v), row + x * 2);
                break;
            case 24:
                row[x * 3] = static_cast<unsigned char>(qBlue(v));
                row[x * 3 + 1] = static_cast<unsigned char>(qGreen(v));
                row[x * 3 + 2] = static_cast<unsigned char>(qRed(v));
                break;
            case 32:
                qToLittleEndian(v, row + x * 4);
                break;
            default: // bit counts the format does not have: zero pixels of the right length
                break;
            }
        }
    }
    return out;
}

QByteArray DibBuilder::Bytes() const
{
    return HeaderBytes() + PixelBytes();
}

QByteArray DibBuilder::FileBytes() const
{
    const QByteArray dib = Bytes();
    QByteArray file("BM");
    char word[4];
    qToLittleEndian(std::uint32_t(14 + dib.size()), word);
    file.append(word, 4);
    file.append(4, '\0');
    qToLittleEndian(std::uint32_t(14 + HeaderBytes().size()), word);
    file.append(word, 4);
    return file + dib;
}
