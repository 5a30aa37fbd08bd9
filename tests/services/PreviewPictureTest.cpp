// Draws a drawing's stored preview the two ways the panel shows it, in the preview pane and as
// the tool tip's bitmap over the tool tip's background, in both themes at two scales, and keeps
// the pictures under <build>/test-output/preview for a look. The preview is the kind real
// drawings carry: 32 bits a pixel with junk in the unused fourth byte, which must neither let
// the background show through nor change a colour.

#include "services/DwgThumbnail.h"
#include "services/ToolTipPreviewAssist.h"
#include "support/DibBuilder.h"
#include "support/DrawingFileBuilder.h"
#include "support/PictureCase.h"
#include "support/ScopedOverrides.h"
#include "views/XrefPreview.h"

#include "framework/ZuUiTheme.h"

#include <gtest/gtest.h>

#include <QPainter>
#include <QTemporaryDir>

namespace {

constexpr int kWidth = 96;
constexpr int kHeight = 64;

// A little plan, dark lines on a light sheet, with the fourth byte of each pixel filled the
// way the writing program left it: mostly zero, with runs of other values.
std::uint32_t planPixel(int x, int y)
{
    const std::uint32_t junk = ((x / 8 + y / 5) % 3 == 0) ? 0u : std::uint32_t((x * 7 + y) & 0xFF);
    std::uint32_t colour = 0x00F4F1E8u;
    if (x == 8 || x == kWidth - 9 || y == 6 || y == kHeight - 7)
        colour = 0x00202020u; // outline
    else if (x > 20 && x < 44 && y > 16 && y < 40)
        colour = 0x00C03020u; // a red room
    else if ((x + y) % 11 == 0 && x > 50)
        colour = 0x002050A0u; // hatching
    return junk << 24 | colour;
}

class PreviewPicture : public testing::TestWithParam<PictureCase>
{
protected:
    QTemporaryDir dir;
};

} // namespace

TEST_P(PreviewPicture, junkInTheFourthByteNeitherHidesNorTintsThePreview)
{
    const PictureCase& c = GetParam();
    ScopedTheme theme(c.dark);
    ScopedDpiScale scale(c.scale);
    const QString file = dir.filePath(QStringLiteral("plan_%1.dwg").arg(c.Suffix()));
    ASSERT_TRUE(DrawingFileBuilder()
                    .AddBmp(DibBuilder(kWidth, kHeight, 32).Pixels(planPixel).Bytes())
                    .Write(file));
    const QColor background = CZuUiTheme::Instance().GetColor(CZuUiTheme::Background);

    // The preview pane, at the picture's own size so that every pixel can be checked.
    const PackedDib dib = TroveUI::ExtractDwgThumbnail(file.toStdWString());
    ASSERT_FALSE(dib.IsNull());
    CXrefPreview pane;
    pane.setPalette(CZuUiTheme::Instance().Palette());
    pane.resize(kWidth + 40, kHeight + 40);
    pane.SetPreviewBitmap(&dib, nullptr, 0);
    const QImage shown = pane.grab().toImage();
    ASSERT_TRUE(shown.save(c.PicturePath("preview", "pane")));
    const QRect target = KvSmPreview::PictureRect(pane.rect(), QSize(kWidth, kHeight));
    ASSERT_EQ(target.size(), QSize(kWidth, kHeight));
    const qreal ratio = shown.devicePixelRatio();
    int wrong = 0;
    for (int y = 0; y < kHeight; ++y)
        for (int x = 0; x < kWidth; ++x) {
            const QPoint at((QPointF(target.topLeft() + QPoint(x, y)) * ratio).toPoint());
            wrong += shown.pixel(at) != (planPixel(x, y) | 0xFF000000u);
        }
    EXPECT_EQ(wrong, 0) << "pixels of the pane that are not the preview's";

    // The tool tip's bitmap, drawn over the tool tip's background.
    const QPixmap bitmap = CToolTipPreviewAssist::GetCache()->GetPreview(file.toStdWString());
    ASSERT_EQ(bitmap.size(), QSize(kWidth, kHeight));
    QImage tip(kWidth + 8, kHeight + 8, QImage::Format_RGB32);
    tip.fill(background);
    {
        QPainter painter(&tip);
        painter.drawPixmap(4, 4, bitmap);
    }
    ASSERT_TRUE(tip.save(c.PicturePath("preview", "tooltip")));
    wrong = 0;
    for (int y = 0; y < kHeight; ++y)
        for (int x = 0; x < kWidth; ++x)
            wrong += tip.pixel(x + 4, y + 4) != (planPixel(x, y) | 0xFF000000u);
    EXPECT_EQ(wrong, 0) << "pixels of the tool tip that are not the preview's";
}

INSTANTIATE_TEST_SUITE_P(
    ThemesAndScales, PreviewPicture, testing::ValuesIn(kPictureCases),
    [](const testing::TestParamInfo<PictureCase>& info) {
        return info.param.Suffix().replace(QLatin1Char('.'), QLatin1Char('_')).toStdString();
    });
