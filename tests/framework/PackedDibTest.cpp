#include "framework/PackedDib.h"
#include "support/DibBuilder.h"
#include "support/DibTestSet.h"

#include <QtEndian>

#include <gtest/gtest.h>

#include <initializer_list>
#include <limits>
#include <tuple>
#include <vector>

namespace {

// Builds a packed bitmap byte by byte, so that tests can also build broken ones.
struct Dib
{
    BitmapInfoHeader header;
    QByteArray table; // colour table or masks
    QByteArray bits;

    QByteArray bytes() const { return header.Bytes() + table + bits; }
    PackedDib packed() const { return PackedDib(bytes()); }

    Dib& colors(std::initializer_list<QRgb> rgbs)
    {
        for (QRgb rgb : rgbs) {
            table.append(char(qBlue(rgb)));
            table.append(char(qGreen(rgb)));
            table.append(char(qRed(rgb)));
            table.append('\0');
        }
        return *this;
    }
    Dib& masks(std::uint32_t r, std::uint32_t g, std::uint32_t b)
    {
        for (std::uint32_t m : {r, g, b}) {
            char raw[4];
            qToLittleEndian(m, raw);
            table.append(raw, 4);
        }
        return *this;
    }
};

Dib make(int width, int height, int bitCount, std::uint32_t compression = BitmapInfoHeader::Rgb)
{
    Dib dib;
    dib.header.biWidth = width;
    dib.header.biHeight = height;
    dib.header.biBitCount = std::uint16_t(bitCount);
    dib.header.biCompression = compression;
    return dib;
}

QByteArray bytes(std::initializer_list<int> values)
{
    QByteArray out;
    for (int v : values)
        out.append(char(v));
    return out;
}

// A bitmap file of @p dib with its pixels @p bitsOffset bytes into the DIB.
QByteArray bmpFile(const PackedDib& dib, qint64 bitsOffset)
{
    QByteArray file("BM");
    char word[4];
    qToLittleEndian(std::uint32_t(14 + dib.Bytes().size()), word);
    file.append(word, 4);
    file.append(4, '\0');
    qToLittleEndian(std::uint32_t(14 + bitsOffset), word);
    file.append(word, 4);
    return file + dib.Bytes();
}

TEST(PackedDib, HeaderRoundTripsThroughItsBytes)
{
    BitmapInfoHeader h;
    h.biWidth = -5;
    h.biHeight = 7;
    h.biBitCount = 8;
    h.biClrUsed = 3;
    const QByteArray raw = h.Bytes();
    ASSERT_EQ(raw.size(), 40);
    const auto back = BitmapInfoHeader::Read(raw.constData(), raw.size());
    ASSERT_TRUE(back);
    EXPECT_EQ(back->biWidth, -5);
    EXPECT_EQ(back->biClrUsed, 3u);
    EXPECT_EQ(back->ColorCount(), 3);
    EXPECT_FALSE(BitmapInfoHeader::Read(raw.constData(), 39));
}

TEST(PackedDib, ColourCountFollowsTheBitCount)
{
    for (auto [bits, used, expected] : {std::tuple{1, 0, 2},
                                        {4, 0, 16},
                                        {8, 0, 256},
                                        {8, 5, 5},
                                        {8, 100000, 256},
                                        {16, 5, 0},
                                        {24, 0, 0},
                                        {32, 0, 0}}) {
        BitmapInfoHeader h;
        h.biBitCount = std::uint16_t(bits);
        h.biClrUsed = std::uint32_t(used);
        EXPECT_EQ(h.ColorCount(), expected) << bits << " bits, " << used << " used";
    }
}

TEST(PackedDib, PalettedPicturesReadBottomUp)
{
    // 3 x 2, 8 bits: rows padded to 4 bytes; first stored row is the bottom one.
    Dib dib = make(3, 2, 8);
    dib.header.biClrUsed = 3;
    dib.colors({qRgb(255, 0, 0), qRgb(0, 255, 0), qRgb(0, 0, 255)});
    dib.bits = bytes({0, 1, 2, 0, 2, 2, 1, 0});
    const QImage image = dib.packed().ToImage();
    ASSERT_EQ(image.size(), QSize(3, 2));
    EXPECT_EQ(image.pixel(0, 1), qRgb(255, 0, 0));
    EXPECT_EQ(image.pixel(2, 1), qRgb(0, 0, 255));
    EXPECT_EQ(image.pixel(0, 0), qRgb(0, 0, 255));
    EXPECT_EQ(image.pixel(2, 0), qRgb(0, 255, 0));
}

TEST(PackedDib, NegativeHeightMeansTopDown)
{
    Dib dib = make(2, -2, 24);
    dib.bits = bytes({0, 0, 255, 0, 255, 0, 0, 0, /* row 2 */ 255, 0, 0, 255, 255, 255, 0, 0});
    const QImage image = dib.packed().ToImage();
    ASSERT_EQ(image.size(), QSize(2, 2));
    EXPECT_EQ(image.pixel(0, 0), qRgb(255, 0, 0));
    EXPECT_EQ(image.pixel(1, 0), qRgb(0, 255, 0));
    EXPECT_EQ(image.pixel(0, 1), qRgb(0, 0, 255));
    EXPECT_EQ(image.pixel(1, 1), qRgb(255, 255, 255));
}

TEST(PackedDib, OneAndFourBitPixelsPackFromTheHighBits)
{
    Dib mono = make(9, 1, 1);
    mono.colors({qRgb(0, 0, 0), qRgb(255, 255, 255)});
    mono.bits = bytes({0b10100000, 0b10000000, 0, 0});
    const QImage one = mono.packed().ToImage();
    ASSERT_EQ(one.width(), 9);
    EXPECT_EQ(one.pixel(0, 0), qRgb(255, 255, 255));
    EXPECT_EQ(one.pixel(1, 0), qRgb(0, 0, 0));
    EXPECT_EQ(one.pixel(2, 0), qRgb(255, 255, 255));
    EXPECT_EQ(one.pixel(8, 0), qRgb(255, 255, 255));

    Dib nibbles = make(3, 1, 4);
    nibbles.header.biClrUsed = 3;
    nibbles.colors({qRgb(1, 1, 1), qRgb(2, 2, 2), qRgb(3, 3, 3)});
    nibbles.bits = bytes({0x21, 0x00, 0, 0});
    const QImage four = nibbles.packed().ToImage();
    EXPECT_EQ(four.pixel(0, 0), qRgb(3, 3, 3));
    EXPECT_EQ(four.pixel(1, 0), qRgb(2, 2, 2));
    EXPECT_EQ(four.pixel(2, 0), qRgb(1, 1, 1));
}

TEST(PackedDib, SixteenBitPicturesUse555OrTheirMasks)
{
    // Narrow channels move into the high bits: five bits of red at full strength are 248.
    Dib plain = make(1, 1, 16);
    plain.bits = bytes({0x00, 0x7C, 0, 0});
    EXPECT_EQ(plain.packed().ToImage().pixel(0, 0), qRgb(248, 0, 0));

    Dib fields = make(1, 1, 16, BitmapInfoHeader::BitFields);
    fields.masks(0xF800, 0x07E0, 0x001F);
    fields.bits = bytes({0xE0, 0x07, 0, 0}); // pure green in 5-6-5
    EXPECT_EQ(fields.packed().ToImage().pixel(0, 0), qRgb(0, 252, 0));
}

TEST(PackedDib, MasksWiderThanEightBitsKeepTheirTopBits)
{
    const QImage image = DibBuilder(2, 1, 32)
                             .Compression(BitmapInfoHeader::BitFields)
                             .Masks(0x3FF00000u, 0x000FFC00u, 0x000003FFu)
                             .Pixels([](int x, int) { return x == 0 ? 0x3FFFFFFFu : 0x3FC3FC03u; })
                             .Dib()
                             .ToImage();
    EXPECT_EQ(image.pixel(0, 0), qRgb(255, 255, 255));
    EXPECT_EQ(image.pixel(1, 0), qRgb(255, 63, 0));
}

// Real drawings leave junk in the fourth byte of 32-bit pixels; the format says it is unused,
// and taking it as transparency made whole previews vanish.
TEST(PackedDib, FourthByteOfPlainThirtyTwoBitPixelsIsUnused)
{
    const auto mixed = [](int x, int y) {
        return (std::uint32_t((x * 37 + y * 91) & 0xFF) << 24) | std::uint32_t(0x10203 * (x + 1));
    };
    for (const std::uint32_t headerSize : {40u, 108u}) {
        // Nor does the alpha mask of a longer header describe a plain picture.
        DibBuilder builder(7, 3, 32);
        builder.HeaderSize(headerSize).Pixels(mixed);
        if (headerSize > 40)
            builder.Masks(0x00FF0000u, 0x0000FF00u, 0x000000FFu).AlphaMask(0xFF000000u);
        const QImage image = builder.Dib().ToImage();
        ASSERT_FALSE(image.isNull()) << headerSize;
        EXPECT_FALSE(image.hasAlphaChannel()) << headerSize;
        for (int y = 0; y < 3; ++y)
            for (int x = 0; x < 7; ++x)
                ASSERT_EQ(image.pixel(x, y), mixed(x, y) | 0xFF000000u) << x << "," << y;
    }
}

TEST(PackedDib, AlphaComesOnlyFromAMaskTheHeaderDeclares)
{
    const auto pixels = [](int x, int) { return x == 0 ? 0x80102030u : 0x00405060u; };
    const auto decode = [&](std::uint32_t headerSize, std::uint32_t alphaMask) {
        DibBuilder builder(2, 1, 32);
        builder.HeaderSize(headerSize)
            .Compression(BitmapInfoHeader::BitFields)
            .Masks(0x00FF0000u, 0x0000FF00u, 0x000000FFu)
            .Pixels(pixels);
        if (headerSize > 52)
            builder.AlphaMask(alphaMask);
        return builder.Dib().ToImage();
    };

    // A 40-byte header is followed by three masks only: the fourth byte is no alpha.
    const QImage plain = decode(40, 0);
    EXPECT_FALSE(plain.hasAlphaChannel());
    EXPECT_EQ(plain.pixel(0, 0), qRgb(0x10, 0x20, 0x30));

    for (const std::uint32_t headerSize : {56u, 108u, 124u}) {
        const QImage image = decode(headerSize, 0xFF000000u);
        ASSERT_TRUE(image.hasAlphaChannel()) << headerSize;
        EXPECT_EQ(image.pixel(0, 0), qRgba(0x10, 0x20, 0x30, 0x80)) << headerSize;
        EXPECT_EQ(image.pixel(1, 0), qRgba(0x40, 0x50, 0x60, 0)) << headerSize;
    }
    EXPECT_FALSE(decode(52, 0).hasAlphaChannel()) << "no room for an alpha mask";
    EXPECT_FALSE(decode(108, 0).hasAlphaChannel()) << "an empty alpha mask declares none";

    // A one-bit alpha of 1 is opaque, not half transparent.
    const QImage oneBit = DibBuilder(2, 1, 16)
                              .HeaderSize(108)
                              .Compression(BitmapInfoHeader::BitFields)
                              .Masks(0x7C00, 0x03E0, 0x001F)
                              .AlphaMask(0x8000)
                              .Pixels([](int x, int) { return x == 0 ? 0xFC00u : 0x7C00u; })
                              .Dib()
                              .ToImage();
    EXPECT_EQ(oneBit.pixel(0, 0), qRgba(248, 0, 0, 255));
    EXPECT_EQ(qAlpha(oneBit.pixel(1, 0)), 0);
}

TEST(PackedDib, RunLengthEncodedPicturesExpand)
{
    Dib rle = make(4, 2, 8, BitmapInfoHeader::Rle8);
    rle.header.biClrUsed = 2;
    rle.colors({qRgb(0, 0, 0), qRgb(255, 255, 255)});
    // bottom row: 4 x index 1; top row: absolute run 0,1,0 then one 1; end of picture.
    rle.bits = bytes({4, 1, 0, 0, 0, 3, 0, 1, 0, 0, 1, 1, 0, 1});
    const QImage image = rle.packed().ToImage();
    ASSERT_EQ(image.size(), QSize(4, 2));
    EXPECT_EQ(image.pixel(0, 1), qRgb(255, 255, 255));
    EXPECT_EQ(image.pixel(3, 1), qRgb(255, 255, 255));
    EXPECT_EQ(image.pixel(0, 0), qRgb(0, 0, 0));
    EXPECT_EQ(image.pixel(1, 0), qRgb(255, 255, 255));
    EXPECT_EQ(image.pixel(3, 0), qRgb(255, 255, 255));
}

TEST(PackedDib, PixelsCanStartWhereverTheCallerSays)
{
    // Masks are read after the header, but the caller decides where pixels begin (the masks
    // may deliberately be read as pixels).
    Dib dib = make(1, 1, 32, BitmapInfoHeader::BitFields);
    dib.masks(0x00FF0000, 0x0000FF00, 0x000000FF);
    dib.bits = bytes({1, 2, 3, 0});
    const PackedDib packed = dib.packed();
    EXPECT_EQ(packed.StandardBitsOffset(), 52);
    EXPECT_EQ(packed.ToImage().pixel(0, 0), qRgb(3, 2, 1));
    EXPECT_EQ(packed.ToImage(40).pixel(0, 0), qRgb(0xFF, 0, 0)) << "the red mask read as a pixel";
    const QByteArray separate = bytes({9, 8, 7, 0});
    EXPECT_EQ(packed.ToImage(separate.constData(), separate.size()).pixel(0, 0), qRgb(7, 8, 9));
}

TEST(PackedDib, FromImageRoundTrips)
{
    QImage source(5, 3, QImage::Format_RGB32);
    for (int y = 0; y < 3; ++y)
        for (int x = 0; x < 5; ++x)
            source.setPixel(x, y, qRgb(x * 40, y * 80, 7));
    const PackedDib dib = PackedDib::FromImage(source);
    EXPECT_EQ(dib.Header()->biBitCount, 24);
    EXPECT_EQ(dib.Header()->biHeight, 3);
    EXPECT_EQ(dib.ToImage(), source);

    // Transparency survives only in a layout that declares it.
    QImage translucent(3, 2, QImage::Format_ARGB32);
    translucent.fill(qRgba(10, 20, 30, 40));
    translucent.setPixel(2, 0, qRgba(1, 2, 3, 0));
    const PackedDib alpha = PackedDib::FromImage(translucent);
    EXPECT_EQ(alpha.Header()->biBitCount, 32);
    EXPECT_TRUE(alpha.Header()->DeclaresAlphaMask());
    EXPECT_EQ(alpha.ToImage(), translucent);
    EXPECT_EQ(QImage::fromData(bmpFile(alpha, alpha.StandardBitsOffset()), "BMP"), translucent)
        << "other readers see the same picture";
    EXPECT_TRUE(PackedDib::FromImage(QImage()).IsNull());
}

// Hostile headers: every one must give a null picture without reading outside the block.
TEST(PackedDib, HostileHeadersGiveNoPicture)
{
    std::vector<std::pair<const char*, Dib>> cases;
    cases.emplace_back("zero width", make(0, 1, 24));
    cases.emplace_back("negative width", make(-4, 1, 24));
    cases.emplace_back("zero height", make(1, 0, 24));
    cases.emplace_back("minimum height", make(1, std::numeric_limits<std::int32_t>::min(), 24));
    cases.emplace_back("huge picture", make(1 << 20, 1 << 20, 24));
    cases.emplace_back("odd bit count", make(1, 1, 7));
    cases.emplace_back("zero bit count", make(1, 1, 0));
    cases.emplace_back("bits too short", make(10, 10, 24));
    cases.emplace_back("compressed 24 bits", make(1, 1, 24, BitmapInfoHeader::Rle8));
    cases.emplace_back("png compression", make(1, 1, 24, 5));
    cases.emplace_back("top-down run length", make(2, -2, 8, BitmapInfoHeader::Rle8));
    cases.back().second.colors({0, 0});
    cases.back().second.header.biClrUsed = 2;
    cases.back().second.bits = bytes({0, 1});
    cases.emplace_back("run length claiming millions of pixels",
                       make(3, 1 << 24, 4, BitmapInfoHeader::Rle4));
    cases.back().second.header.biClrUsed = 2;
    cases.back().second.colors({0, 0});
    cases.back().second.bits = bytes({0, 1, 0, 0});
    Dib missingTable = make(1, 1, 8);
    missingTable.bits = bytes({0, 0, 0, 0});
    cases.emplace_back("colour table past the end", missingTable);
    Dib bigHeader = make(1, 1, 24);
    bigHeader.header.biSize = 100000;
    bigHeader.bits = bytes({0, 0, 0, 0});
    cases.emplace_back("header size past the end", bigHeader);
    Dib smallHeader = make(1, 1, 24);
    smallHeader.header.biSize = 12;
    smallHeader.bits = bytes({0, 0, 0, 0});
    cases.emplace_back("header size too small", smallHeader);
    Dib missingMasks = make(1, 1, 32, BitmapInfoHeader::BitFields);
    cases.emplace_back("masks past the end", missingMasks);

    for (const auto& [name, dib] : cases)
        EXPECT_TRUE(dib.packed().ToImage().isNull()) << name;
    EXPECT_TRUE(PackedDib(QByteArray(39, '\0')).ToImage().isNull());
    EXPECT_TRUE(PackedDib().ToImage().isNull());
    EXPECT_TRUE(make(1, 1, 24).packed().ToImage(-1).isNull());
    EXPECT_TRUE(make(1, 1, 24).packed().ToImage(nullptr, 4).isNull());
}

TEST(PackedDib, DamagedRunLengthDataStopsEarly)
{
    Dib rle = make(4, 4, 4, BitmapInfoHeader::Rle4);
    rle.header.biClrUsed = 2;
    rle.colors({qRgb(0, 0, 0), qRgb(255, 0, 0)});
    // A delta far outside the picture, then an absolute run longer than the data.
    rle.bits = bytes({0, 2, 200, 200, 0, 9, 0x11});
    const QImage image = rle.packed().ToImage();
    ASSERT_EQ(image.size(), QSize(4, 4));
    EXPECT_EQ(image.pixel(0, 0), qRgb(0, 0, 0));
}

// Every picture of the test set reads the same here as through Qt's own bitmap-file reader.
TEST(PackedDib, ReadsEveryLayoutAsQtsBitmapReaderDoes)
{
    for (const DibCase& c : DibTestSet()) {
        const QImage ours = c.builder.Dib().ToImage();
        const QImage qt = QImage::fromData(c.builder.FileBytes(), "BMP");
        ASSERT_FALSE(qt.isNull()) << c.name;
        EXPECT_EQ(FirstDifference(ours, qt), QString()) << c.name;
        EXPECT_EQ(ours.hasAlphaChannel(), qt.hasAlphaChannel()) << c.name;
    }
}

} // namespace
