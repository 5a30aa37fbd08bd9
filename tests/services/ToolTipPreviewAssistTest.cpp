// The process-wide thumbnail cache: drawings through their stored preview, other files through
// the raster image definition, keyed by the exact path.

#include "services/ToolTipPreviewAssist.h"
#include "support/DrawingFileBuilder.h"

#include <gtest/gtest.h>

#include <QFile>
#include <QImageWriter>
#include <QPainter>
#include <QPdfWriter>
#include <QTemporaryDir>

namespace {

QImage solidImage(int width, int height, QRgb color)
{
    QImage image(width, height, QImage::Format_RGB32);
    image.fill(color);
    return image;
}

class PreviewCache : public testing::Test
{
protected:
    CToolTipPreviewAssist& cache = *CToolTipPreviewAssist::GetCache();
    QTemporaryDir dir;

    // Paths are unique per test, so tests do not see each other's entries in the shared cache.
    std::wstring path(const QString& name) const { return dir.filePath(name).toStdWString(); }

    std::wstring drawing(const QString& name, QRgb color)
    {
        const std::wstring file = path(name);
        EXPECT_TRUE(DrawingFileBuilder()
                        .AddBmp(DrawingFileBuilder::BmpBytes(solidImage(8, 6, color)))
                        .Write(QString::fromStdWString(file)));
        return file;
    }

    std::wstring image(const QString& name, const QImage& picture, const char* format)
    {
        const std::wstring file = path(name);
        EXPECT_TRUE(picture.save(QString::fromStdWString(file), format)) << format;
        return file;
    }
};

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

QRgb centreOf(const QPixmap& pixmap)
{
    const QImage image = pixmap.toImage();
    return image.pixel(image.width() / 2, image.height() / 2);
}

} // namespace

TEST_F(PreviewCache, drawingPreviewIsMadeOnceAndKept)
{
    const std::wstring file = drawing("plan.dwg", qRgb(0, 128, 0));
    EXPECT_TRUE(cache.FindPreview(file).isNull());
    const QPixmap first = cache.GetPreview(file);
    ASSERT_FALSE(first.isNull());
    EXPECT_EQ(first.size(), QSize(8, 6));
    EXPECT_EQ(centreOf(first), qRgb(0, 128, 0));
    EXPECT_EQ(cache.FindPreview(file).cacheKey(), first.cacheKey());

    // A hit never goes back to the file: not when it changes, not when it is gone.
    drawing("plan.dwg", qRgb(255, 0, 0));
    EXPECT_EQ(cache.GetPreview(file).cacheKey(), first.cacheKey());
    QFile::remove(QString::fromStdWString(file));
    EXPECT_EQ(cache.GetPreview(file).cacheKey(), first.cacheKey());
}

TEST_F(PreviewCache, failuresAreNotRememberedSoTheFileIsTriedAgain)
{
    const std::wstring file = path("later.dwg");
    EXPECT_TRUE(cache.GetPreview(file).isNull()); // not there yet
    ASSERT_TRUE(DrawingFileBuilder().Write(QString::fromStdWString(file)));
    EXPECT_TRUE(cache.GetPreview(file).isNull()); // a drawing without a picture
    EXPECT_TRUE(cache.FindPreview(file).isNull());
    drawing("later.dwg", qRgb(0, 0, 255));
    EXPECT_EQ(centreOf(cache.GetPreview(file)), qRgb(0, 0, 255));
}

TEST_F(PreviewCache, pathsDifferingInLetterCaseAreDifferentEntries)
{
    const std::wstring lower = drawing("site.dwg", qRgb(10, 20, 30));
    const std::wstring upper = drawing("Site.dwg", qRgb(200, 100, 50));
    EXPECT_EQ(centreOf(cache.GetPreview(lower)), qRgb(10, 20, 30));
    EXPECT_EQ(centreOf(cache.GetPreview(upper)), qRgb(200, 100, 50));
    EXPECT_TRUE(cache.FindPreview(path("SITE.dwg")).isNull());
}

TEST_F(PreviewCache, addPreviewStoresReplacesAndIgnoresEmptyInput)
{
    const std::wstring file = path("added.png");
    QPixmap red = QPixmap::fromImage(solidImage(3, 3, qRgb(255, 0, 0)));
    QPixmap blue = QPixmap::fromImage(solidImage(3, 3, qRgb(0, 0, 255)));
    cache.AddPreview(file, QPixmap());
    EXPECT_TRUE(cache.FindPreview(file).isNull());
    cache.AddPreview(std::wstring(), red);
    EXPECT_TRUE(cache.FindPreview(std::wstring()).isNull());
    cache.AddPreview(file, red);
    cache.AddPreview(file, blue);
    EXPECT_EQ(cache.FindPreview(file).cacheKey(), blue.cacheKey());
    // A stored picture is what GetPreview answers, without looking for the file.
    EXPECT_EQ(cache.GetPreview(file).cacheKey(), blue.cacheKey());
    EXPECT_TRUE(cache.GetPreview(std::wstring()).isNull());
}

TEST_F(PreviewCache, imagesAreRenderedAsThumbnailsOfAtMostFiftyPixels)
{
    QImage wide(400, 200, QImage::Format_RGB32);
    wide.fill(qRgb(30, 60, 90));
    struct Case
    {
        const char* format;
        QSize expected;
    };
    for (const Case c :
         {Case{"PNG", QSize(50, 25)}, Case{"JPEG", QSize(50, 25)}, Case{"BMP", QSize(50, 25)}}) {
        const std::wstring file = image(QStringLiteral("wide.%1").arg(c.format), wide, c.format);
        const QPixmap thumbnail = cache.GetPreview(file);
        ASSERT_FALSE(thumbnail.isNull()) << c.format;
        EXPECT_EQ(thumbnail.size(), c.expected) << c.format;
        const QRgb centre = centreOf(thumbnail);
        EXPECT_NEAR(qBlue(centre), 90, 8) << c.format;
        EXPECT_EQ(cache.FindPreview(file).cacheKey(), thumbnail.cacheKey()) << c.format;
    }
    {
        QFile gif(dir.filePath("wide.gif"));
        ASSERT_TRUE(gif.open(QIODevice::WriteOnly));
        gif.write(gifBytes(160, 80, qRgb(30, 60, 90)));
    }
    const QPixmap gif = cache.GetPreview(path("wide.gif"));
    ASSERT_FALSE(gif.isNull());
    EXPECT_EQ(gif.size(), QSize(50, 25));
    EXPECT_EQ(centreOf(gif), qRgb(30, 60, 90));
    if (QImageWriter::supportedImageFormats().contains("tiff")) {
        const std::wstring file =
            image("tall.tif", wide.transformed(QTransform().rotate(90)), "TIFF");
        EXPECT_EQ(cache.GetPreview(file).size(), QSize(25, 50));
    }
    // Small pictures keep their size.
    EXPECT_EQ(cache.GetPreview(image("small.png", solidImage(20, 10, qRgb(1, 2, 3)), "PNG")).size(),
              QSize(20, 10));
}

TEST_F(PreviewCache, pdfUnderlaysShowTheirFirstPage)
{
    const QString file = dir.filePath("underlay.pdf");
    {
        QPdfWriter writer(file);
        writer.setPageSize(QPageSize(QPageSize::A4));
        writer.setPageOrientation(QPageLayout::Landscape);
        QPainter painter(&writer);
        painter.fillRect(QRect(QPoint(0, 0), QSize(writer.width(), writer.height())),
                         QColor(220, 0, 0));
        writer.newPage();
        painter.fillRect(QRect(QPoint(0, 0), QSize(writer.width(), writer.height())),
                         QColor(0, 0, 220));
    }
    const QPixmap thumbnail = cache.GetPreview(file.toStdWString());
    ASSERT_FALSE(thumbnail.isNull());
    EXPECT_EQ(thumbnail.width(), 50);
    EXPECT_NEAR(thumbnail.height(), 35, 1); // A4 across
    EXPECT_GT(qRed(centreOf(thumbnail)), 180);
    EXPECT_LT(qBlue(centreOf(thumbnail)), 60);
}

TEST_F(PreviewCache, unreadableFilesGiveNothing)
{
    const auto write = [this](const QString& name, const QByteArray& bytes) {
        QFile file(dir.filePath(name));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(bytes);
        return path(name);
    };
    QByteArray png = DrawingFileBuilder::PngBytes(solidImage(30, 30, qRgb(5, 5, 5)));
    png.truncate(40);
    EXPECT_TRUE(cache.GetPreview(write("cut.png", png)).isNull());
    EXPECT_TRUE(cache.GetPreview(write("noise.jpg", QByteArray(5000, '\x42'))).isNull());
    EXPECT_TRUE(cache.GetPreview(write("broken.pdf", "%PDF-1.7\n1 0 obj garbage\n%%EOF")).isNull());
    EXPECT_TRUE(cache.GetPreview(write("empty.dwg", QByteArray())).isNull());
    EXPECT_TRUE(cache.GetPreview(dir.path().toStdWString()).isNull());
}
