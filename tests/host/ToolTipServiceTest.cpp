// The rich tool-tip popup: what it shows for each combination of flags, where it goes on the
// screen, and its colours.

#include "host/KvToolTipService.h"
#include "support/ScopedOverrides.h"

#include "framework/ZuUiTheme.h"

#include <gtest/gtest.h>

#include <QGuiApplication>
#include <QScreen>
#include <QWidget>

namespace {

QPixmap redPicture(int width, int height)
{
    QPixmap pixmap(width, height);
    pixmap.fill(QColor(220, 0, 0));
    return pixmap;
}

int countRed(const QImage& image)
{
    int count = 0;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            const QRgb p = image.pixel(x, y);
            count += qRed(p) > 200 && qGreen(p) < 30 && qBlue(p) < 30;
        }
    }
    return count;
}

class RichToolTip : public testing::Test
{
protected:
    KvToolTipService& service = *KvToolTipService::Instance();
    const QRect screen = QGuiApplication::primaryScreen()->availableGeometry();

    QWidget& show(const KvNameDescriptionToolTipInfo& info, QRect at = QRect(100, 100, 40, 16))
    {
        service.SetToolTipInfo(&info);
        service.Show(at);
        return *service.Popup();
    }

    void TearDown() override
    {
        service.Hide();
        service.SetToolTipInfo(nullptr);
    }
};

} // namespace

TEST_F(RichToolTip, thumbnailShowsAtTheRequestedEdgeOnlyWhenWanted)
{
    KvNameDescriptionToolTipInfo info("Plan", "Status: Loaded\nSize: 2 KB", redPicture(50, 50),
                                      true, true);
    info.SetPreviewWidth(64);
    info.SetPreviewHeight(64);
    const QImage withPreview = show(info).grab().toImage();
    EXPECT_EQ(countRed(withPreview), 64 * 64);
    EXPECT_GE(withPreview.height(), 64);

    info.SetPreviewWidth(256);
    info.SetPreviewHeight(256);
    EXPECT_EQ(countRed(show(info).grab().toImage()), 256 * 256);

    const KvNameDescriptionToolTipInfo detailsOnly("Plan", "Status: Loaded\nSize: 2 KB",
                                                   redPicture(50, 50), false, true);
    const QImage details = show(detailsOnly).grab().toImage();
    EXPECT_EQ(countRed(details), 0);
    EXPECT_LT(details.height(), 64);
}

TEST_F(RichToolTip, descriptionShowsForDetailsAndWhenThereIsNothingElse)
{
    const KvNameDescriptionToolTipInfo nameOnly("Plan", "", QPixmap(), false, false);
    const int nameHeight = show(nameOnly).height();
    const QString lines = "A: 1\nB: 2\nC: 3\nD: 4\nE: 5\nF: 6\nG: 7";

    // Classic: neither flag, the description is all the tip can say.
    const KvNameDescriptionToolTipInfo classic("Plan", lines, redPicture(8, 8), false, false);
    const int classicHeight = show(classic).height();
    EXPECT_GT(classicHeight, nameHeight + 5 * QFontMetrics(service.Popup()->font()).height());

    // A wanted preview with no picture falls back to the description as well.
    const KvNameDescriptionToolTipInfo noPicture("Plan", lines, QPixmap(), true, false);
    EXPECT_EQ(show(noPicture).height(), classicHeight);

    // Preview only: the description stays away.
    KvNameDescriptionToolTipInfo previewOnly("Plan", lines, redPicture(8, 8), true, false);
    previewOnly.SetPreviewWidth(20);
    previewOnly.SetPreviewHeight(20);
    EXPECT_LT(show(previewOnly).height(), classicHeight);
}

TEST_F(RichToolTip, placedBelowTheRectangleOrAboveWhenThereIsNoRoomAndKeptOnScreen)
{
    const KvNameDescriptionToolTipInfo info("Plan", "Status: Loaded", QPixmap(), false, true);
    QWidget& popup = show(info, QRect(100, 100, 40, 16));
    EXPECT_TRUE(service.IsShowing());
    EXPECT_EQ(popup.pos(), QPoint(100, 120));

    show(info, QRect(100, screen.bottom() - 10, 40, 16));
    EXPECT_EQ(popup.geometry().bottom(), screen.bottom() - 10 - 4 - 1);

    show(info, QRect(screen.right() - 5, 100, 40, 16));
    EXPECT_EQ(popup.geometry().right(), screen.right());

    service.Hide();
    EXPECT_FALSE(service.IsShowing());
    // Shown without a tip: nothing shows.
    service.SetToolTipInfo(nullptr);
    service.Show(QRect(100, 100, 40, 16));
    EXPECT_FALSE(service.IsShowing());
}

TEST_F(RichToolTip, followsTheTheme)
{
    const KvNameDescriptionToolTipInfo info("Plan", "Status: Loaded", QPixmap(), false, true);
    for (const bool dark : {false, true}) {
        ScopedTheme theme(dark);
        const QImage shot = show(info).grab().toImage();
        const QColor expected = CZuUiTheme::Instance().GetColor(CZuUiTheme::ToolTipBackground);
        EXPECT_EQ(shot.pixel(3, shot.height() - 3), expected.rgb()) << dark;
    }
}
