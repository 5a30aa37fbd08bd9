// The preview pane: where a picture goes, what is kept of the DIB handed over, and what is
// painted.

#include "support/DibBuilder.h"
#include "support/ScopedOverrides.h"
#include "views/XrefPreview.h"

#include "framework/ZuUiTheme.h"

#include <gtest/gtest.h>

namespace {

PackedDib solidDib(int width, int height, QRgb color)
{
    return DibBuilder(width, height, 24).Fill(color).Dib();
}

} // namespace

TEST(PreviewGeometry, shrinksToFitNeverEnlargesAndCentres)
{
    struct Case
    {
        QSize pane;
        QSize dib;
        QRect drawn;
    };
    const Case cases[] = {
        {{300, 200}, {50, 50}, {125, 75, 50, 50}},    // small: own size, centred
        {{300, 200}, {400, 300}, {26, 7, 248, 186}},  // 286 x 186 available: scale 0.62
        {{300, 200}, {400, -300}, {26, 7, 248, 186}}, // stored top-down: absolute height
        {{300, 200}, {286, 186}, {7, 7, 286, 186}},   // fits exactly
        {{300, 200}, {1000, 10}, {7, 99, 286, 2}},    // 10 * 0.286 = 2.86, truncated
        {{14, 100}, {50, 50}, {}},                    // no room inside the margins
        {{300, 200}, {0, 50}, {}},
    };
    for (const Case& c : cases) {
        EXPECT_EQ(KvSmPreview::PictureRect(QRect(QPoint(0, 0), c.pane), c.dib), c.drawn)
            << c.dib.width() << "x" << c.dib.height() << " in " << c.pane.width() << "x"
            << c.pane.height();
    }
}

TEST(PreviewPainting, paintsThePictureOverTheThemeBackground)
{
    for (const bool dark : {false, true}) {
        ScopedTheme theme(dark);
        CXrefPreview preview;
        preview.resize(300, 200);
        const PackedDib dib = solidDib(400, 300, qRgb(200, 30, 30));
        preview.SetPreviewBitmap(&dib, nullptr, 0);
        const QImage shot = preview.grab().toImage();
        const QRgb background = CZuUiTheme::Instance().GetColor(CZuUiTheme::Background).rgb();
        EXPECT_EQ(shot.pixel(26, 7), qRgb(200, 30, 30)) << dark;
        EXPECT_EQ(shot.pixel(273, 192), qRgb(200, 30, 30)) << dark;
        EXPECT_EQ(shot.pixel(25, 100), background) << dark;
        EXPECT_EQ(shot.pixel(274, 100), background) << dark;
        EXPECT_EQ(shot.pixel(150, 6), background) << dark;
        EXPECT_EQ(shot.pixel(150, 193), background) << dark;
    }
}

TEST(PreviewPictures, nullClearsThePane)
{
    CXrefPreview preview;
    preview.resize(100, 100);
    EXPECT_TRUE(preview.HasNoPicture());
    const PackedDib dib = solidDib(10, 10, qRgb(1, 2, 3));
    preview.SetPreviewBitmap(&dib, nullptr, 0);
    EXPECT_FALSE(preview.HasNoPicture());
    EXPECT_FALSE(preview.CreateBitmap().isNull());
    preview.SetPreviewBitmap(nullptr, "ignored", 7);
    EXPECT_TRUE(preview.HasNoPicture());
    EXPECT_TRUE(preview.DibCopy().isEmpty());
    EXPECT_TRUE(preview.CreateBitmap().isNull());
}

TEST(PreviewPictures, headerWithSeparatePixelsKeepsFortyFourBytes)
{
    CXrefPreview preview;
    QList<QRgb> palette(256, qRgb(0, 0, 0));
    palette[7] = qRgb(10, 200, 10);
    const DibBuilder builder = DibBuilder(4, 2, 8).Palette(palette).Fill(7);
    const PackedDib header(builder.HeaderBytes());
    {
        QByteArray pixels = builder.PixelBytes();
        preview.SetPreviewBitmap(&header, pixels.constData(), pixels.size());
        pixels.fill('\0'); // the caller's pixels may change once the call returns
    }
    EXPECT_EQ(preview.DibCopy(), builder.HeaderBytes().left(44));
    const QImage picture = preview.CreateBitmap().toImage();
    ASSERT_EQ(picture.size(), QSize(4, 2));
    EXPECT_EQ(picture.pixel(3, 1), qRgb(10, 200, 10));

    // Too few pixels for the header: nothing to show, nothing read past them.
    const QByteArray few(3, '\x07');
    preview.SetPreviewBitmap(&header, few.constData(), few.size());
    EXPECT_FALSE(preview.HasNoPicture());
    EXPECT_TRUE(preview.Picture().isNull());
}

TEST(PreviewPictures, packedLengthPadsRowsToSixteenBits)
{
    struct Case
    {
        int width;
        int height;
        int bits;
        std::uint32_t sizeImage;
        qint64 length;
    };
    const Case cases[] = {
        {3, 2, 8, 0, 40 + 8 + 1024},  // ((3 * 8 + 15) / 16) * 2 * 2
        {5, 2, 8, 0, 40 + 12 + 1024}, // 16-bit rows: 6 bytes where the pixels use 8
        {1, 1, 1, 0, 40 + 2 + 8},     {4, 2, 16, 0, 40 + 16}, // no colour table above 8 bits
        {5, 3, 24, 0, 40 + 48},       {5, 3, 24, 100, 140},
        {5, -3, 24, 0, 40 - 48}, // top-down with no image size: negative
    };
    for (const Case& c : cases) {
        BitmapInfoHeader h;
        h.biWidth = c.width;
        h.biHeight = c.height;
        h.biBitCount = std::uint16_t(c.bits);
        h.biSizeImage = c.sizeImage;
        EXPECT_EQ(KvSmPreview::PackedDibLength(h), c.length) << c.width << "x" << c.height;
    }
}

TEST(PreviewPictures, packedDibIsCopiedByItsReckonedLength)
{
    CXrefPreview preview;
    QList<QRgb> palette(256, qRgb(0, 0, 0));
    palette[1] = qRgb(0, 0, 250);
    QByteArray packed = DibBuilder(3, 2, 8).Palette(palette).Fill(1).Bytes();
    packed.append(QByteArray(500, '\x55')); // trailing bytes that are not the picture's
    const PackedDib dib(packed);
    preview.SetPreviewBitmap(&dib, nullptr, 0);
    EXPECT_EQ(preview.DibCopy(), packed.left(1072));
    EXPECT_EQ(preview.CreateBitmap().toImage().pixel(2, 1), qRgb(0, 0, 250));

    // Rows reckoned at 16 bits make the copy shorter than the pixels; the picture is whole.
    const PackedDib wide = DibBuilder(10, 10, 24).Fill(0xFF00C800).Dib();
    preview.SetPreviewBitmap(&wide, nullptr, 0);
    EXPECT_EQ(preview.DibCopy().size(), 40 + 30 * 10);
    EXPECT_EQ(preview.Picture().size(), QSize(10, 10));
    EXPECT_EQ(preview.Picture().pixel(9, 9), qRgb(0, 200, 0));

    // A header that claims more than the block holds: only what is there is copied.
    QByteArray claims = DibBuilder(3, 2, 24).SizeImage(100000).Bytes();
    const PackedDib overlong(claims);
    preview.SetPreviewBitmap(&overlong, nullptr, 0);
    EXPECT_EQ(preview.DibCopy(), claims);

    // A length of zero or below: nothing copied, yet the pane does not count as empty.
    const PackedDib negative = DibBuilder(5, -3, 24).Fill(0xFFFFFFFF).Dib();
    preview.SetPreviewBitmap(&negative, nullptr, 0);
    EXPECT_TRUE(preview.DibCopy().isEmpty());
    EXPECT_FALSE(preview.HasNoPicture());
    EXPECT_TRUE(preview.Picture().isNull());
}

// A line drawing shrunk to a third: one-pixel dark lines at columns the reduction does not
// sample. Pictures of few colours keep them; no picture is ever blended into new colours.
TEST(PreviewPainting, shrinkingKeepsThinDarkLinesOfFewColourPicturesAndNeverBlends)
{
    const auto lineAt = [](int x, int) { return std::uint32_t(x % 30 == 16 ? 1 : 0); };
    const auto drawn = [](const PackedDib& dib) {
        CXrefPreview preview;
        preview.resize(114, 114); // 100 x 100 inside the margins: 300 x 300 drawn at a third
        preview.SetPreviewBitmap(&dib, nullptr, 0);
        return preview.grab().toImage().copy(7, 7, 100, 100);
    };
    const auto columnsWith = [](const QImage& image, QRgb color) {
        int count = 0;
        for (int x = 0; x < image.width(); ++x)
            count += image.pixel(x, 50) == color;
        return count;
    };
    const QRgb white = qRgb(255, 255, 255);
    const QRgb black = qRgb(0, 0, 0);
    for (const int bits : {1, 4, 8}) {
        const QImage image = drawn(
            DibBuilder(300, 300, bits).ClrUsed(2).Palette({white, black}).Pixels(lineAt).Dib());
        EXPECT_EQ(columnsWith(image, black), 10) << bits << " bits";
        EXPECT_EQ(columnsWith(image, black) + columnsWith(image, white), 100) << bits << " bits";
    }
    // Many colours: pixels are dropped, not averaged; every pixel keeps a colour of the source.
    const QImage rich = drawn(
        DibBuilder(300, 300, 24)
            .Pixels([](int x, int) { return std::uint32_t(x % 2 ? 0xFF000000u : 0xFFFFFFFFu); })
            .Dib());
    EXPECT_EQ(columnsWith(rich, black) + columnsWith(rich, white), 100);
}
