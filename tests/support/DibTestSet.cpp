#include "support/DibTestSet.h"

#include <cstdint>

namespace {

QByteArray bytes(std::initializer_list<int> values)
{
    QByteArray out;
    for (int v : values)
        out.append(char(v));
    return out;
}

QList<QRgb> ramp(int count)
{
    QList<QRgb> colors;
    for (int i = 0; i < count; ++i)
        colors << qRgb((i * 53) & 0xFF, (i * 97 + 40) & 0xFF, (255 - i * 11) & 0xFF);
    return colors;
}

// A junk fourth byte, different from pixel to pixel and never the same for long.
std::uint32_t junk(int x, int y)
{
    return std::uint32_t((x * 37 + y * 91 + 1) & 0xFF) << 24;
}

std::uint32_t trueColour(int x, int y)
{
    return std::uint32_t(((x * 40) & 0xFF) << 16 | ((y * 60) & 0xFF) << 8 | ((x * y * 7) & 0xFF));
}

} // namespace

std::vector<DibCase> DibTestSet()
{
    using H = BitmapInfoHeader;
    std::vector<DibCase> set;
    const auto index = [](int modulo) {
        return [modulo](int x, int y) { return std::uint32_t((x * 3 + y * 5) % modulo); };
    };
    set.push_back({"1 bit", DibBuilder(9, 3, 1).Palette(ramp(2)).Pixels(index(2))});
    set.push_back({"1 bit, top-down", DibBuilder(9, -3, 1).Palette(ramp(2)).Pixels(index(2))});
    set.push_back({"4 bits", DibBuilder(7, 3, 4).Palette(ramp(16)).Pixels(index(16))});
    set.push_back(
        {"4 bits, 5 colours", DibBuilder(5, 2, 4).ClrUsed(5).Palette(ramp(5)).Pixels(index(5))});
    set.push_back({"8 bits", DibBuilder(5, 4, 8).Palette(ramp(256)).Pixels(index(256))});
    set.push_back({"8 bits, 3 colours, top-down",
                   DibBuilder(6, -2, 8).ClrUsed(3).Palette(ramp(3)).Pixels(index(3))});
    // Runs, absolute runs with and without padding, end of line, end of picture. No deltas:
    // Qt's reader leaves the pixels a delta skips as whatever its memory held.
    set.push_back({"8 bits, run lengths",
                   DibBuilder(6, 4, 8).Compression(H::Rle8).ClrUsed(4).Palette(ramp(4)).RawPixels(
                       bytes({3, 1, 0, 3, 2, 3, 1, 0, 0, 0, 6, 2, 0, 0, 0,
                              4, 3, 0, 1, 2, 2, 0, 0, 0, 4, 3, 2, 1, 0, 1}))});
    set.push_back({"4 bits, run lengths",
                   DibBuilder(6, 2, 4).Compression(H::Rle4).Palette(ramp(16)).RawPixels(
                       bytes({3, 0x12, 0, 3, 0x34, 0x50, 0, 0, 6, 0xAB, 0, 1}))});
    // The top bit of a 5-5-5 pixel is unused as well.
    set.push_back({"16 bits, 5-5-5", DibBuilder(3, 3, 16).Pixels([](int x, int y) {
                       return std::uint32_t((x * 0x2345 + y * 0x1111) & 0xFFFF);
                   })});
    set.push_back({"16 bits, 5-6-5 bit fields", DibBuilder(3, 2, 16)
                                                    .Compression(H::BitFields)
                                                    .Masks(0xF800, 0x07E0, 0x001F)
                                                    .Pixels([](int x, int y) {
                                                        return std::uint32_t(
                                                            (x * 0x4321 + y * 0x0841) & 0xFFFF);
                                                    })});
    set.push_back({"16 bits, 4-4-4 bit fields", DibBuilder(4, 2, 16)
                                                    .Compression(H::BitFields)
                                                    .Masks(0x0F00, 0x00F0, 0x000F)
                                                    .Pixels([](int x, int y) {
                                                        return std::uint32_t(
                                                            (x * 0x3579 + y * 0x1234) & 0xFFFF);
                                                    })});
    set.push_back({"24 bits", DibBuilder(5, 3, 24).Pixels(trueColour)});
    set.push_back({"24 bits, top-down", DibBuilder(5, -3, 24).Pixels(trueColour)});
    set.push_back({"32 bits, fourth byte mixed", DibBuilder(5, 3, 32).Pixels([](int x, int y) {
                       return junk(x, y) | trueColour(x, y);
                   })});
    set.push_back(
        {"32 bits, fourth byte 1 everywhere",
         DibBuilder(4, 2, 32).Pixels([](int x, int y) { return 0x01000000u | trueColour(x, y); })});
    set.push_back(
        {"32 bits, top-down, fourth byte mixed",
         DibBuilder(3, -4, 32).Pixels([](int x, int y) { return junk(x, y) | trueColour(x, y); })});
    set.push_back({"32 bits, bit fields, fourth byte mixed",
                   DibBuilder(4, 3, 32)
                       .Compression(H::BitFields)
                       .Masks(0x00FF0000u, 0x0000FF00u, 0x000000FFu)
                       .Pixels([](int x, int y) { return junk(x, y) | trueColour(x, y); })});
    set.push_back({"32 bits, bit fields in blue-green-red order",
                   DibBuilder(4, 2, 32)
                       .Compression(H::BitFields)
                       .Masks(0x000000FFu, 0x0000FF00u, 0x00FF0000u)
                       .Pixels([](int x, int y) { return junk(x, y) | trueColour(x, y); })});
    set.push_back({"32 bits, 108-byte header without alpha mask",
                   DibBuilder(4, 2, 32)
                       .HeaderSize(108)
                       .Compression(H::BitFields)
                       .Masks(0x00FF0000u, 0x0000FF00u, 0x000000FFu)
                       .Pixels([](int x, int y) { return junk(x, y) | trueColour(x, y); })});
    for (const std::uint32_t size : {108u, 124u}) {
        set.push_back({size == 108 ? "32 bits, 108-byte header with alpha mask"
                                   : "32 bits, 124-byte header with alpha mask",
                       DibBuilder(4, 3, 32)
                           .HeaderSize(size)
                           .Compression(H::BitFields)
                           .Masks(0x00FF0000u, 0x0000FF00u, 0x000000FFu)
                           .AlphaMask(0xFF000000u)
                           .Pixels([](int x, int y) { return junk(x, y) | trueColour(x, y); })});
    }
    set.push_back({"16 bits, 5-6-5 with a 108-byte header",
                   DibBuilder(3, 2, 16)
                       .HeaderSize(108)
                       .Compression(H::BitFields)
                       .Masks(0xF800, 0x07E0, 0x001F)
                       .Pixels([](int x, int y) {
                           return std::uint32_t((x * 0x4321 + y * 0x0841) & 0xFFFF);
                       })});
    return set;
}

QString FirstDifference(const QImage& actual, const QImage& expected)
{
    if (actual.size() != expected.size())
        return QStringLiteral("size %1x%2, expected %3x%4")
            .arg(actual.width())
            .arg(actual.height())
            .arg(expected.width())
            .arg(expected.height());
    const QImage a = actual.convertToFormat(QImage::Format_ARGB32);
    const QImage e = expected.convertToFormat(QImage::Format_ARGB32);
    for (int y = 0; y < a.height(); ++y) {
        for (int x = 0; x < a.width(); ++x) {
            if (a.pixel(x, y) != e.pixel(x, y))
                return QStringLiteral("pixel %1,%2 is %3, expected %4")
                    .arg(x)
                    .arg(y)
                    .arg(a.pixel(x, y), 8, 16, QLatin1Char('0'))
                    .arg(e.pixel(x, y), 8, 16, QLatin1Char('0'));
        }
    }
    return {};
}
