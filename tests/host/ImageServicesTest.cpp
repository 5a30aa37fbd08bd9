// The host's image services and raster image definition: decoding pictures from untrusted
// bytes and files without over-allocating, and rendering thumbnails of images and PDF pages.

#include "host/KvDbRasterImageDef.h"
#include "host/ZuIntImgServices.h"
#include "support/NamedPipe.h"

#include <gtest/gtest.h>

#include <QBuffer>
#include <QFile>
#include <QImageWriter>
#include <QPainter>
#include <QPdfWriter>
#include <QTemporaryDir>

#include <cstdint>
#include <vector>

namespace {

QByteArray pngOf(const QImage& image)
{
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    image.save(&buffer, "PNG");
    return bytes;
}

QImage solid(int width, int height, QRgb color)
{
    QImage image(width, height, QImage::Format_RGB32);
    image.fill(color);
    return image;
}

// Gives the PNG another size in its header, with a checksum that still matches.
QByteArray withHeaderSize(QByteArray png, quint32 width, quint32 height)
{
    for (int i = 0; i < 4; ++i) {
        png[16 + i] = char(width >> (24 - 8 * i));
        png[20 + i] = char(height >> (24 - 8 * i));
    }
    quint32 crc = 0xFFFFFFFFu;
    for (const char c : png.mid(12, 17)) {
        crc ^= static_cast<unsigned char>(c);
        for (int k = 0; k < 8; ++k)
            crc = (crc >> 1) ^ (0xEDB88320u & (0u - (crc & 1u)));
    }
    crc = ~crc;
    for (int i = 0; i < 4; ++i)
        png[29 + i] = char(crc >> (24 - 8 * i));
    return png;
}

// Qt reads GIF but does not write it: a one-colour GIF, LZW-coded with a clear code after
// every second pixel so that every code stays three bits wide.
QByteArray gifBytes(int width, int height, QRgb color)
{
    QByteArray gif("GIF89a");
    const auto u16 = [&gif](int v) {
        gif.append(char(v & 0xFF));
        gif.append(char(v >> 8));
    };
    u16(width);
    u16(height);
    gif.append(char(0x81)); // global table of 4 entries
    gif.append(char(0));
    gif.append(char(0));
    for (int i = 0; i < 4; ++i) {
        gif.append(char(qRed(color)));
        gif.append(char(qGreen(color)));
        gif.append(char(qBlue(color)));
    }
    gif.append(',');
    u16(0);
    u16(0);
    u16(width);
    u16(height);
    gif.append(char(0));
    gif.append(char(2)); // minimum code size
    QByteArray data;
    std::uint32_t bits = 0;
    int count = 0;
    const auto code = [&](unsigned c) {
        bits |= c << count;
        count += 3;
        while (count >= 8) {
            data.append(char(bits & 0xFF));
            bits >>= 8;
            count -= 8;
        }
    };
    for (int i = 0; i < width * height; ++i) {
        if (i % 2 == 0)
            code(4);
        code(0);
    }
    code(5);
    if (count > 0)
        data.append(char(bits & 0xFF));
    for (int at = 0; at < data.size(); at += 255) {
        const QByteArray block = data.mid(at, 255);
        gif.append(char(block.size()));
        gif.append(block);
    }
    gif.append(char(0));
    gif.append(';');
    return gif;
}

} // namespace

TEST(ImageServices, decodesPngAndMakesAPackedDib)
{
    ZuIntImgServices* services = getZuIntImgServices();
    const QImage image = services->DecodePng(pngOf(solid(7, 3, qRgb(1, 100, 200))));
    ASSERT_TRUE(services->IsValid(image));
    const PackedDib dib = services->ImageToDib(image);
    EXPECT_EQ(dib.Header()->biWidth, 7);
    EXPECT_EQ(dib.Header()->biHeight, 3);
    EXPECT_EQ(dib.ToImage().pixel(6, 2), qRgb(1, 100, 200));
    EXPECT_FALSE(services->IsValid(QImage()));
    EXPECT_TRUE(services->ImageToDib(QImage()).IsNull());
}

TEST(ImageServices, refusesPngsThatCannotHoldThePictureTheyClaim)
{
    ZuIntImgServices* services = getZuIntImgServices();
    const QByteArray small = pngOf(solid(5, 2, qRgb(9, 9, 9)));
    // Plausible sizes decode, even large ones that compress well.
    EXPECT_EQ(services->DecodePng(pngOf(solid(1000, 1000, qRgb(3, 3, 3)))).size(),
              QSize(1000, 1000));
    // A header claiming far more than the data could inflate to is refused up front.
    EXPECT_TRUE(services->DecodePng(withHeaderSize(small, 2000, 2000)).isNull());
    EXPECT_TRUE(services->DecodePng(withHeaderSize(small, 0x7FFFFFFF, 0x7FFFFFFF)).isNull());
    EXPECT_TRUE(services->DecodePng(small.left(small.size() - 20)).isNull());
    EXPECT_TRUE(services->DecodePng(QByteArray()).isNull());
    // Only PNG is accepted here, whatever else the image readers know.
    QByteArray jpeg;
    QBuffer buffer(&jpeg);
    buffer.open(QIODevice::WriteOnly);
    solid(4, 4, qRgb(0, 0, 0)).save(&buffer, "JPEG");
    EXPECT_TRUE(services->DecodePng(jpeg).isNull());
}

TEST(ImageServices, replacementServicesAreUsedUntilRemoved)
{
    struct Refusing : ZuIntImgServices
    {
        QImage DecodePng(const QByteArray&) const override { return {}; }
    } refusing;
    const QByteArray png = pngOf(solid(2, 2, qRgb(1, 1, 1)));
    ZuIntImgServices* previous = ZuIntImgServices::SetInstance(&refusing);
    EXPECT_TRUE(getZuIntImgServices()->DecodePng(png).isNull());
    ZuIntImgServices::SetInstance(previous);
    EXPECT_FALSE(getZuIntImgServices()->DecodePng(png).isNull());
}

TEST(RasterImageDef, loadsWithinTheWorkingSizeAndMakesSmallerThumbnails)
{
    QTemporaryDir dir;
    const QString tall = dir.filePath("tall.jpg");
    ASSERT_TRUE(solid(300, 600, qRgb(0, 90, 180)).save(tall, "JPEG"));
    const std::unique_ptr<KvDbRasterImageDef> def = KvDbRasterImageDef::Create();
    def->setSourceFileName(tall);
    ASSERT_TRUE(def->load(128, 128));
    EXPECT_EQ(def->loadedImage().size(), QSize(64, 128));
    const PackedDib* thumbnail = def->getThumbnailDib(50, 50);
    ASSERT_NE(thumbnail, nullptr);
    EXPECT_EQ(thumbnail->Header()->biWidth, 25);
    EXPECT_EQ(thumbnail->Header()->biHeight, 50);
    EXPECT_NEAR(qBlue(thumbnail->ToImage().pixel(12, 25)), 180, 8);
    def->close();
    EXPECT_FALSE(def->isLoaded());
    EXPECT_EQ(def->getThumbnailDib(50, 50), nullptr);

    // Pictures smaller than the box keep their size.
    const QString tiny = dir.filePath("tiny.bmp");
    ASSERT_TRUE(solid(12, 8, qRgb(5, 5, 5)).save(tiny, "BMP"));
    def->setSourceFileName(tiny);
    ASSERT_TRUE(def->load(128, 128));
    EXPECT_EQ(def->getThumbnailDib(50, 50)->Header()->biWidth, 12);
    EXPECT_EQ(def->getThumbnailDib(0, 50), nullptr);
}

TEST(RasterImageDef, readsTheCommonImageFormats)
{
    QTemporaryDir dir;
    const QImage wide = solid(400, 200, qRgb(30, 60, 90));
    std::vector<QString> files;
    for (const char* format : {"PNG", "JPEG", "BMP", "TIFF"}) {
        if (!QImageWriter::supportedImageFormats().contains(QByteArray(format).toLower()))
            continue;
        files.push_back(dir.filePath(QStringLiteral("wide.%1").arg(format)));
        ASSERT_TRUE(wide.save(files.back(), format)) << format;
    }
    QFile gif(dir.filePath("wide.gif")); // Qt reads GIF but cannot write it
    ASSERT_TRUE(gif.open(QIODevice::WriteOnly));
    gif.write(gifBytes(400, 200, qRgb(30, 60, 90)));
    gif.close();
    files.push_back(gif.fileName());

    KvDbRasterImageDef def;
    for (const QString& file : files) {
        def.setSourceFileName(file);
        ASSERT_TRUE(def.load(128, 128)) << file.toStdString();
        EXPECT_EQ(def.loadedImage().size(), QSize(128, 64)) << file.toStdString();
        const PackedDib* thumbnail = def.getThumbnailDib(50, 50);
        ASSERT_NE(thumbnail, nullptr) << file.toStdString();
        const QImage picture = thumbnail->ToImage();
        EXPECT_EQ(picture.size(), QSize(50, 25)) << file.toStdString();
        EXPECT_NEAR(qBlue(picture.pixel(25, 12)), 90, 8) << file.toStdString();
    }
}

TEST(RasterImageDef, rendersThePdfFirstPageToFitTheBox)
{
    QTemporaryDir dir;
    const QString path = dir.filePath("sheet.bin"); // found by its content, not its name
    {
        QPdfWriter writer(path);
        writer.setPageSize(QPageSize(QPageSize::A3));
        QPainter painter(&writer);
        painter.fillRect(QRect(0, 0, writer.width(), writer.height()), Qt::black);
    }
    KvDbRasterImageDef def;
    def.setSourceFileName(path);
    ASSERT_TRUE(def.load(128, 128));
    EXPECT_EQ(def.loadedImage().height(), 128);
    EXPECT_NEAR(def.loadedImage().width(), 91, 1); // A3 upright: 297 x 420
    EXPECT_LT(qRed(def.loadedImage().pixel(45, 64)), 30);
}

TEST(RasterImageDef, whatCannotBeReadLoadsNothing)
{
    QTemporaryDir dir;
    const auto write = [&dir](const QString& name, const QByteArray& bytes) {
        QFile file(dir.filePath(name));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(bytes);
        return dir.filePath(name);
    };
    const QByteArray png = pngOf(solid(40, 40, qRgb(1, 2, 3)));
    const QString cases[] = {
        write("cut.png", png.left(png.size() / 2)),
        write("claims.png", withHeaderSize(png, 60000, 60000)),
        write("locked.pdf", "%PDF-1.4\n1 0 obj << /Type /Catalog >> endobj\ntrailer <<>>\n%%EOF"),
        write("junk.pdf", QByteArray(3000, '%')),
        write("plain.txt", "not a picture"),
        dir.filePath("missing.png"),
        dir.path(),
        QString(),
    };
    KvDbRasterImageDef def;
    for (const QString& path : cases) {
        def.setSourceFileName(path);
        EXPECT_FALSE(def.load(128, 128)) << path.toStdString();
        EXPECT_EQ(def.getThumbnailDib(50, 50), nullptr) << path.toStdString();
    }
    // A named pipe is no file: the readers must not sit waiting for someone to write to it.
    NamedPipe pipe(dir.filePath("pipe.png"));
    if (pipe.IsValid()) {
        def.setSourceFileName(pipe.Path());
        bool loaded = true;
        EXPECT_TRUE(pipe.ReturnsWithoutWaiting([&] { loaded = def.load(128, 128); }));
        EXPECT_FALSE(loaded);
    }
}

TEST(RasterImageDef, factoryReplacesTheDefinition)
{
    struct Counting : KvDbRasterImageDef
    {
        bool load(int, int) override { return false; }
    };
    int made = 0;
    const auto previous = KvDbRasterImageDef::SetFactory([&made] {
        ++made;
        return std::make_unique<Counting>();
    });
    EXPECT_FALSE(KvDbRasterImageDef::Create()->load(1, 1));
    EXPECT_EQ(made, 1);
    KvDbRasterImageDef::SetFactory(previous);
    EXPECT_EQ(dynamic_cast<Counting*>(KvDbRasterImageDef::Create().get()), nullptr);
}
