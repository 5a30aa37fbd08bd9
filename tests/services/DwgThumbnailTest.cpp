// Reading the preview stored in drawing files, and turning packed DIBs into bitmaps.

#include "services/DwgThumbnail.h"
#include "support/DibBuilder.h"
#include "support/DibTestSet.h"
#include "support/DrawingFileBuilder.h"
#include "support/NamedPipe.h"

#include <gtest/gtest.h>

#include <QBuffer>
#include <QImage>
#include <QTemporaryDir>

#include <utility>
#include <vector>

namespace {

QImage solidImage(int width, int height, QRgb color)
{
    QImage image(width, height, QImage::Format_RGB32);
    image.fill(color);
    return image;
}

QByteArray redDib()
{
    return DrawingFileBuilder::BmpBytes(solidImage(4, 3, qRgb(200, 0, 0)));
}

QByteArray bluePng()
{
    return DrawingFileBuilder::PngBytes(solidImage(5, 2, qRgb(0, 0, 200)));
}

// A PNG chunk checksum, so that a doctored header still passes the decoder's own checks.
std::uint32_t crc32(const QByteArray& bytes)
{
    std::uint32_t crc = 0xFFFFFFFFu;
    for (const char c : bytes) {
        crc ^= static_cast<unsigned char>(c);
        for (int k = 0; k < 8; ++k)
            crc = (crc >> 1) ^ (0xEDB88320u & (0u - (crc & 1u)));
    }
    return ~crc;
}

PackedDib extract(const DrawingFileBuilder& builder)
{
    QByteArray bytes = builder.Bytes();
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::ReadOnly);
    return TroveUI::ExtractDwgThumbnail(buffer);
}

QRgb centre(const PackedDib& dib)
{
    const QImage image = dib.ToImage();
    return image.isNull() ? 0 : image.pixel(image.width() / 2, image.height() / 2);
}

// Records which byte ranges the reader asks for.
class RecordingBuffer : public QBuffer
{
public:
    using QBuffer::QBuffer;
    std::vector<std::pair<qint64, qint64>> reads;

protected:
    qint64 readData(char* data, qint64 maxSize) override
    {
        const qint64 at = pos();
        const qint64 got = QBuffer::readData(data, maxSize);
        if (got > 0)
            reads.emplace_back(at, got);
        return got;
    }
};

} // namespace

TEST(DwgThumbnailVersions, everyKnownMagicIsReadWithTheSameLayout)
{
    for (const char* magic : {"KV402", "KV401", "KV1800", "KV1018", "KV1021", "KV701a", "KV1024",
                              "KV1027", "KV1032", "KV1015"}) {
        const PackedDib dib = extract(DrawingFileBuilder().Magic(magic).AddBmp(redDib()));
        EXPECT_EQ(dib.Bytes(), redDib()) << magic;
    }
}

TEST(DwgThumbnailVersions, fiveLetterMagicsCompareOnlyFiveBytes)
{
    EXPECT_FALSE(extract(DrawingFileBuilder().Magic("KV4029").AddBmp(redDib())).IsNull());
    EXPECT_FALSE(extract(DrawingFileBuilder().Magic("KV401x").AddBmp(redDib())).IsNull());
}

TEST(DwgThumbnailVersions, unknownMagicsHaveNoPreview)
{
    for (const char* magic : {"KV1019", "KV403", "kv1032", "KV10", "XV1032", "KV701A", ""}) {
        EXPECT_TRUE(extract(DrawingFileBuilder().Magic(magic).AddBmp(redDib())).IsNull()) << magic;
    }
}

TEST(DwgThumbnailVersions, kv1015NeedsANonZeroMaintenanceByte)
{
    const auto file = [](unsigned char maintenance) {
        return DrawingFileBuilder().Magic("KV1015").MaintenanceByte(maintenance).AddBmp(redDib());
    };
    EXPECT_TRUE(extract(file(0)).IsNull());
    EXPECT_FALSE(extract(file(1)).IsNull());
    EXPECT_FALSE(extract(file(0xFF)).IsNull());
    // Other versions do not look at that byte.
    EXPECT_FALSE(
        extract(DrawingFileBuilder().Magic("KV1032").MaintenanceByte(0).AddBmp(redDib())).IsNull());
}

TEST(DwgThumbnailBlock, sentinelMustMatchEveryByte)
{
    for (int i = 0; i < 16; ++i) {
        QByteArray sentinel = DrawingFileBuilder::Sentinel();
        sentinel[i] = char(sentinel[i] ^ 0x01);
        EXPECT_TRUE(extract(DrawingFileBuilder().SentinelBytes(sentinel).AddBmp(redDib())).IsNull())
            << "byte " << i;
    }
}

TEST(DwgThumbnailBlock, previewBlockMayStandAnywhere)
{
    const PackedDib dib = extract(DrawingFileBuilder().BlockAt(5000).AddBmp(redDib()));
    EXPECT_EQ(dib.Bytes(), redDib());
}

TEST(DwgThumbnailBlock, seekerOutsideTheFileGivesNothing)
{
    for (std::uint32_t seeker : {0u, 1023u, 1025u, 900000u, 0xFFFFFFFFu})
        EXPECT_TRUE(extract(DrawingFileBuilder().Seeker(seeker).AddBmp(redDib())).IsNull())
            << seeker;
}

TEST(DwgThumbnailEntries, firstUsableEntryWinsInFileOrder)
{
    EXPECT_EQ(centre(extract(DrawingFileBuilder().AddPng(bluePng()).AddBmp(redDib()))),
              qRgb(0, 0, 200));
    EXPECT_EQ(centre(extract(DrawingFileBuilder().AddBmp(redDib()).AddPng(bluePng()))),
              qRgb(200, 0, 0));
    EXPECT_EQ(centre(extract(DrawingFileBuilder()
                                 .AddHeaderEntry()
                                 .AddWmf(QByteArray(300, '\x01'))
                                 .AddEntry(9, QByteArray(10, '\x02'))
                                 .AddBmp(redDib()))),
              qRgb(200, 0, 0));
}

TEST(DwgThumbnailEntries, pngEntryBecomesAPackedDibOfThePicture)
{
    const PackedDib dib = extract(DrawingFileBuilder().AddPng(bluePng()));
    const QImage image = dib.ToImage();
    ASSERT_FALSE(image.isNull());
    EXPECT_EQ(image.size(), QSize(5, 2));
    EXPECT_EQ(image.pixel(4, 1), qRgb(0, 0, 200));
    EXPECT_EQ(dib.Header()->biSize, 40u);
}

TEST(DwgThumbnailEntries, blocksWithoutAPictureEntryGiveNothing)
{
    EXPECT_TRUE(extract(DrawingFileBuilder()).IsNull());
    EXPECT_TRUE(
        extract(DrawingFileBuilder().AddHeaderEntry().AddWmf(QByteArray(64, 'w'))).IsNull());
    EXPECT_TRUE(extract(DrawingFileBuilder().AddWmf(QByteArray(64, 'w'))).IsNull());
    // A count of zero hides entries that are there.
    EXPECT_TRUE(extract(DrawingFileBuilder().EntryCount(0).AddBmp(redDib())).IsNull());
}

TEST(DwgThumbnailEntries, entriesAboveTheSizeLimitAreSkipped)
{
    const PackedDib dib =
        extract(DrawingFileBuilder()
                    .AddEntry(DrawingFileBuilder::Bmp, redDib(), std::nullopt, 100000001u)
                    .AddPng(bluePng()));
    EXPECT_EQ(centre(dib), qRgb(0, 0, 200));
    // The limit itself is allowed: such an entry is taken, and as this file cannot hold it,
    // the reading ends there without a picture instead of moving on to the PNG.
    EXPECT_TRUE(extract(DrawingFileBuilder()
                            .AddEntry(DrawingFileBuilder::Bmp, redDib(), std::nullopt, 100000000u)
                            .AddPng(bluePng()))
                    .IsNull());
}

TEST(DwgThumbnailEntries, zeroHeaderWordDiscardsTheFirstUsableEntry)
{
    QByteArray zeroed = redDib();
    zeroed.replace(0, 4, QByteArray(4, '\0'));
    EXPECT_TRUE(extract(DrawingFileBuilder().AddBmp(zeroed)).IsNull());
    // The discarded entry still ends the scan: the later PNG is not looked at.
    EXPECT_TRUE(extract(DrawingFileBuilder().AddBmp(zeroed).AddPng(bluePng())).IsNull());
    EXPECT_TRUE(extract(DrawingFileBuilder().AddBmp(QByteArray())).IsNull());
    EXPECT_TRUE(extract(DrawingFileBuilder().AddBmp(QByteArray("\x28\x00", 2))).IsNull());
}

TEST(DwgThumbnailHostileFiles, truncationAnywhereBeforeTheEntryEndGivesNothing)
{
    const DrawingFileBuilder whole = DrawingFileBuilder().AddHeaderEntry().AddBmp(redDib());
    const qint64 size = whole.Bytes().size();
    for (qint64 cut : {qint64(0), qint64(5), qint64(12), qint64(16), qint64(1024), qint64(1030),
                       qint64(1040), qint64(1045), qint64(1050), size - 1}) {
        DrawingFileBuilder cutFile = whole;
        EXPECT_TRUE(extract(cutFile.TruncateAt(cut)).IsNull()) << "cut at " << cut;
    }
}

TEST(DwgThumbnailHostileFiles, entriesReachingPastTheEndGiveNothing)
{
    EXPECT_TRUE(
        extract(DrawingFileBuilder().AddEntry(DrawingFileBuilder::Bmp, redDib(), 0xFFFFFFF0u))
            .IsNull());
    // Claims 99 MB in a 2 KB file: refused before anything is allocated.
    EXPECT_TRUE(extract(DrawingFileBuilder().AddEntry(DrawingFileBuilder::Bmp, redDib(),
                                                      std::nullopt, 99000000u))
                    .IsNull());
    EXPECT_TRUE(extract(DrawingFileBuilder().AddEntry(DrawingFileBuilder::Png, bluePng(),
                                                      std::nullopt, 99000000u))
                    .IsNull());
}

TEST(DwgThumbnailHostileFiles, countBeyondTheDirectoryFailsOnlyWhenReached)
{
    // The file ends inside the third directory slot; nothing usable comes before it.
    DrawingFileBuilder noPicture;
    noPicture.EntryCount(200).AddWmf(QByteArray(4, 'w'));
    EXPECT_TRUE(extract(noPicture).IsNull());
    // A usable entry before the overrun is still found, as the directory is read in order.
    const PackedDib dib = extract(DrawingFileBuilder().EntryCount(200).AddBmp(redDib()));
    EXPECT_EQ(centre(dib), qRgb(200, 0, 0));
}

TEST(DwgThumbnailHostileFiles, corruptPngGivesNothing)
{
    QByteArray broken = bluePng();
    broken.truncate(broken.size() / 2);
    EXPECT_TRUE(extract(DrawingFileBuilder().AddPng(broken)).IsNull());
    EXPECT_TRUE(extract(DrawingFileBuilder().AddPng(QByteArray(100, '\x7F'))).IsNull());
    // A PNG header claiming a gigantic picture is refused before decoding.
    QByteArray giant = bluePng();
    giant.replace(16, 8, QByteArray::fromHex("0000FFFF0000FFFF"));
    const std::uint32_t crc = crc32(giant.mid(12, 17));
    giant[29] = char(crc >> 24);
    giant[30] = char(crc >> 16);
    giant[31] = char(crc >> 8);
    giant[32] = char(crc);
    EXPECT_TRUE(extract(DrawingFileBuilder().AddPng(giant)).IsNull());
}

TEST(DwgThumbnailFiles, readsThroughThePathAndRefusesWhatIsNoFile)
{
    QTemporaryDir dir;
    const QString path = dir.filePath(QStringLiteral("Plan ä.dwg"));
    ASSERT_TRUE(DrawingFileBuilder().AddBmp(redDib()).Write(path));
    EXPECT_EQ(TroveUI::ExtractDwgThumbnail(path.toStdWString()).Bytes(), redDib());
    EXPECT_TRUE(TroveUI::ExtractDwgThumbnail(dir.filePath("missing.dwg").toStdWString()).IsNull());
    EXPECT_TRUE(TroveUI::ExtractDwgThumbnail(dir.path().toStdWString()).IsNull());
    EXPECT_TRUE(TroveUI::ExtractDwgThumbnail(std::wstring()).IsNull());
    // A named pipe would keep the reader waiting for a writer.
    NamedPipe pipe(dir.filePath("pipe.dwg"));
    if (pipe.IsValid()) {
        PackedDib fromPipe(QByteArray("not read"));
        EXPECT_TRUE(pipe.ReturnsWithoutWaiting(
            [&] { fromPipe = TroveUI::ExtractDwgThumbnail(pipe.Path().toStdWString()); }));
        EXPECT_TRUE(fromPipe.IsNull());
    }
}

TEST(DwgThumbnailFiles, readsOnlyTheHeaderTheDirectoryAndOneEntry)
{
    QByteArray bytes = DrawingFileBuilder()
                           .AddHeaderEntry()
                           .AddBmp(redDib())
                           .AddPng(bluePng())
                           .PadTo(200000)
                           .Bytes();
    RecordingBuffer buffer(&bytes);
    buffer.open(QIODevice::ReadOnly | QIODevice::Unbuffered);
    ASSERT_FALSE(TroveUI::ExtractDwgThumbnail(buffer).IsNull());
    qint64 total = 0;
    for (const auto& read : buffer.reads)
        total += read.second;
    // 1,024 header + 16 sentinel, 4 size and 1 count + 3 entries of 9 + the DIB itself.
    EXPECT_EQ(total, 1024 + 21 + 27 + redDib().size());
    EXPECT_EQ(buffer.reads.size(), 4u);
}

TEST(CopyBitmapInfo, convertsTrueColourInBothRowOrders)
{
    const auto pixel = [](int x, int y) { return x == 0 && y == 0 ? 0xFF102030u : 0xFFA0B0C0u; };
    for (int height : {3, -3}) {
        const QPixmap bitmap =
            TroveUI::CopyBitmapInfo(DibBuilder(2, height, 24).Pixels(pixel).Dib());
        ASSERT_FALSE(bitmap.isNull()) << height;
        const QImage image = bitmap.toImage();
        EXPECT_EQ(image.size(), QSize(2, 3));
        EXPECT_EQ(image.pixel(0, 0), qRgb(0x10, 0x20, 0x30)) << height;
        EXPECT_EQ(image.pixel(1, 2), qRgb(0xA0, 0xB0, 0xC0)) << height;
    }
}

TEST(CopyBitmapInfo, usesTheColourTableForEightBitsAndFewer)
{
    struct Case
    {
        int bits;
        std::uint32_t clrUsed;
        int tableEntries;
    };
    for (const Case c :
         {Case{1, 0, 2}, Case{4, 0, 16}, Case{8, 0, 256}, Case{8, 3, 3}, Case{4, 2, 2}}) {
        QList<QRgb> table(c.tableEntries, qRgb(9, 9, 9));
        table[1] = qRgb(250, 128, 0);
        const PackedDib dib = DibBuilder(3, 2, c.bits)
                                  .ClrUsed(c.clrUsed)
                                  .Palette(table)
                                  .Pixels([](int x, int) { return x == 2 ? 1u : 0u; })
                                  .Dib();
        const QImage image = TroveUI::CopyBitmapInfo(dib).toImage();
        ASSERT_FALSE(image.isNull()) << c.bits << "/" << c.clrUsed;
        EXPECT_EQ(image.pixel(2, 1), qRgb(250, 128, 0)) << c.bits << "/" << c.clrUsed;
        EXPECT_EQ(image.pixel(0, 0), qRgb(9, 9, 9)) << c.bits << "/" << c.clrUsed;
    }
}

TEST(CopyBitmapInfo, bitFieldMasksAreReadAsPixels)
{
    // Pixels are taken from right after the header, so the three masks become the first three
    // pixels of the bottom row and everything moves on by three.
    const PackedDib dib = DibBuilder(4, 1, 32)
                              .Compression(BitmapInfoHeader::BitFields)
                              .Masks(0x00FF0000u, 0x0000FF00u, 0x000000FFu)
                              .Fill(0x000000FFu)
                              .Dib();
    const QImage image = TroveUI::CopyBitmapInfo(dib).toImage();
    ASSERT_FALSE(image.isNull());
    EXPECT_EQ(image.pixel(0, 0), qRgb(255, 0, 0));
    EXPECT_EQ(image.pixel(1, 0), qRgb(0, 255, 0));
    EXPECT_EQ(image.pixel(2, 0), qRgb(0, 0, 255));
    EXPECT_EQ(image.pixel(3, 0), qRgb(0, 0, 255));
}

TEST(CopyBitmapInfo, hostileHeadersGiveNoBitmap)
{
    EXPECT_TRUE(TroveUI::CopyBitmapInfo(PackedDib()).isNull());
    EXPECT_TRUE(TroveUI::CopyBitmapInfo(PackedDib(QByteArray(39, '\0'))).isNull());
    const auto bitmapOf = [](DibBuilder builder) { return TroveUI::CopyBitmapInfo(builder.Dib()); };
    EXPECT_TRUE(bitmapOf(DibBuilder(0, 4, 24)).isNull());
    EXPECT_TRUE(bitmapOf(DibBuilder(-4, 4, 24)).isNull());
    EXPECT_TRUE(bitmapOf(DibBuilder(4, 0, 24)).isNull());
    for (int bits : {0, 3, 7, 33, 65535})
        EXPECT_TRUE(bitmapOf(DibBuilder(4, 4, bits)).isNull()) << bits;
    // Enormous sizes with a few bytes of pixels: refused, not allocated.
    QByteArray huge = DibBuilder(2, 2, 32).Bytes();
    huge.replace(4, 8, QByteArray::fromHex("FFFFFF7FFFFFFF7F"));
    EXPECT_TRUE(TroveUI::CopyBitmapInfo(PackedDib(huge)).isNull());
    huge.replace(8, 4, QByteArray::fromHex("00000080"));
    EXPECT_TRUE(TroveUI::CopyBitmapInfo(PackedDib(huge)).isNull());
    // A colour count that puts the pixels past the end of the buffer.
    EXPECT_TRUE(
        bitmapOf(DibBuilder(2, 2, 8).ClrUsed(0xFFFFFFFFu).Palette({qRgb(1, 2, 3)})).isNull());
    // One byte of pixels short.
    QByteArray shortDib = DibBuilder(3, 3, 24).Bytes();
    shortDib.chop(1);
    EXPECT_TRUE(TroveUI::CopyBitmapInfo(PackedDib(shortDib)).isNull());
}

// The conversion a drawing's preview goes through shows each picture as Qt's own bitmap-file
// reader does, wherever its pixels follow the header and colour table (that is, everywhere but
// in bit-field pictures with a 40-byte header, whose masks it reads as pixels).
TEST(CopyBitmapInfo, showsEveryLayoutAsQtsBitmapReaderDoes)
{
    int compared = 0;
    for (const DibCase& c : DibTestSet()) {
        const PackedDib dib = c.builder.Dib();
        const BitmapInfoHeader header = *dib.Header();
        if (dib.StandardBitsOffset() != qint64(header.biSize) + header.ColorCount() * 4)
            continue;
        ++compared;
        const QImage qt = QImage::fromData(c.builder.FileBytes(), "BMP");
        ASSERT_FALSE(qt.isNull()) << c.name;
        EXPECT_EQ(FirstDifference(TroveUI::DibToImage(dib), qt), QString()) << c.name;
        // A bitmap may keep translucent pixels premultiplied; the same picture made a bitmap
        // the same way must still come out the same.
        EXPECT_EQ(FirstDifference(TroveUI::CopyBitmapInfo(dib).toImage(),
                                  QPixmap::fromImage(qt).toImage()),
                  QString())
            << c.name;
    }
    EXPECT_GE(compared, 15);
}

// Previews of real drawings carry junk in the fourth byte of their 32-bit pixels. It once made
// them partly or wholly transparent, and the colours of what was left drifted on the way to a
// bitmap.
TEST(CopyBitmapInfo, fourthByteOfPlainPixelsNeitherHidesNorTintsThePreview)
{
    const auto pixel = [](int x, int y) {
        const std::uint32_t junk[] = {0x00, 0x01, 0x7F, 0x80, 0xFE, 0xFF};
        return junk[(x + 2 * y) % 6] << 24 | std::uint32_t(0x00C08040 + x * 0x010203 + y);
    };
    const QByteArray dib = DibBuilder(6, 4, 32).Pixels(pixel).Bytes();
    QByteArray file = DrawingFileBuilder().AddBmp(dib).Bytes();
    QBuffer buffer(&file);
    buffer.open(QIODevice::ReadOnly);
    const PackedDib preview = TroveUI::ExtractDwgThumbnail(buffer);
    ASSERT_FALSE(preview.IsNull());
    for (const QImage& image :
         {TroveUI::DibToImage(preview), TroveUI::CopyBitmapInfo(preview).toImage()}) {
        ASSERT_EQ(image.size(), QSize(6, 4));
        EXPECT_FALSE(image.hasAlphaChannel());
        for (int y = 0; y < 4; ++y)
            for (int x = 0; x < 6; ++x)
                ASSERT_EQ(image.pixel(x, y), pixel(x, y) | 0xFF000000u) << x << "," << y;
    }
}

TEST(DwgThumbnailEntries, transparencyOfAPngEntrySurvivesTheConversion)
{
    QImage picture(4, 2, QImage::Format_ARGB32);
    picture.fill(qRgba(0, 90, 180, 255));
    picture.setPixel(0, 0, qRgba(0, 0, 0, 0));
    picture.setPixel(3, 1, qRgba(200, 100, 50, 128));
    const PackedDib dib =
        extract(DrawingFileBuilder().AddPng(DrawingFileBuilder::PngBytes(picture)));
    const QImage image = TroveUI::DibToImage(dib);
    EXPECT_EQ(FirstDifference(image, picture), QString());
}
