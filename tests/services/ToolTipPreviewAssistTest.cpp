// The process-wide thumbnail cache: drawings through their stored preview, other files through
// the raster image definition, keyed by the exact path.

#include "services/ToolTipPreviewAssist.h"
#include "support/DrawingFileBuilder.h"

#include <gtest/gtest.h>

#include <QFile>
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

TEST_F(PreviewCache, otherFilesAreRenderedAsFiftyPixelThumbnailsAndCached)
{
    QImage wide(400, 200, QImage::Format_RGB32);
    wide.fill(qRgb(30, 60, 90));
    const std::wstring file = image("wide.png", wide, "PNG");
    const QPixmap thumbnail = cache.GetPreview(file);
    ASSERT_FALSE(thumbnail.isNull());
    EXPECT_EQ(thumbnail.size(), QSize(50, 25));
    EXPECT_EQ(centreOf(thumbnail), qRgb(30, 60, 90));
    EXPECT_EQ(cache.FindPreview(file).cacheKey(), thumbnail.cacheKey());
    // A drawing whose stored picture cannot be read gets no rendering either.
    QByteArray broken = DrawingFileBuilder::BmpBytes(solidImage(4, 4, qRgb(1, 1, 1)));
    broken.truncate(50);
    const std::wstring drawingFile = path("broken.dwg");
    ASSERT_TRUE(DrawingFileBuilder().AddBmp(broken).Write(QString::fromStdWString(drawingFile)));
    EXPECT_TRUE(cache.GetPreview(drawingFile).isNull());
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
