#include "framework/ZuUiImageList.h"
#include "framework/ZuUiRm.h"
#include "resources/TroveResources.h"
#include "support/ScopedOverrides.h"

#include <QPainter>

#include <gtest/gtest.h>

namespace {

CZuUiRmId id(const char* name)
{
    return CZuUiRmId(TroveUI::ResourceInstance(), name);
}

QImage render(const QIcon& icon, int edge = 16)
{
    return icon.pixmap(QSize(edge, edge)).toImage().convertToFormat(QImage::Format_ARGB32);
}

TEST(ResourceManager, LoadsIconsBitmapsAndCursorsByName)
{
    EXPECT_FALSE(CZuUiRm::Icon(id("IDI_STATUS_UNRESOLVED")).isNull());
    EXPECT_FALSE(CZuUiRm::Bitmap(id("REFRESH_BTN")).isNull());
    EXPECT_TRUE(CZuUiRm::Icon(id("REFRESH_BTN")).isNull()) << "bitmaps are not icons";
    EXPECT_TRUE(CZuUiRm::Icon(id("NO_SUCH_ICON")).isNull());
    EXPECT_TRUE(CZuUiRm::Icon(CZuUiRmId()).isNull());
    const QCursor fallback(Qt::SizeHorCursor);
    EXPECT_EQ(
        CZuUiRm::Cursor(CZuUiRmId(TroveUI::ResourceInstance(), 30980u), QPoint(16, 16), fallback)
            .shape(),
        Qt::BitmapCursor);
    EXPECT_EQ(CZuUiRm::Cursor(id("NOPE"), QPoint(), fallback).shape(), Qt::SizeHorCursor);
}

TEST(ResourceManager, IconsRenderSharplyAtAnyPixelRatio)
{
    const QIcon icon = CZuUiRm::Icon(id("IDI_TYPE_DWG"));
    const QPixmap twice = icon.pixmap(QSize(16, 16), 2.0);
    EXPECT_EQ(twice.size(), QSize(32, 32));
    EXPECT_DOUBLE_EQ(twice.devicePixelRatio(), 2.0);
    EXPECT_NE(render(icon), QImage()) << "something is drawn";
}

TEST(ResourceManager, DarkThemePicksTheDarkVariant)
{
    EXPECT_EQ(CZuUiRm::LegacyDarkSuffix(id("IDI_BADGE_UNLOADED")).Name(),
              QStringLiteral("IDI_BADGE_UNLOADED_DARK"));
    EXPECT_TRUE(CZuUiRm::LegacyDarkSuffix(CZuUiRmId()).IsNull());
    const QImage light = render(CZuUiRm::ThemedIcon(id("IDI_TYPE_PDF")));
    QImage dark;
    {
        ScopedTheme theme(true);
        dark = render(CZuUiRm::ThemedIcon(id("IDI_TYPE_PDF")));
    }
    EXPECT_NE(light, dark);
    EXPECT_EQ(render(CZuUiRm::ThemedIcon(id("IDI_TYPE_PDF"))), light);
}

TEST(ResourceManager, ImageListAddReportsMissingIcons)
{
    CZuUiImageList list(QSize(16, 16));
    EXPECT_EQ(CZuUiRm::ImageListAdd(list, id("IDI_STATUS_BLANK")), 0);
    EXPECT_EQ(CZuUiRm::ImageListAdd(list, id("IDI_TYPE_DWG")), 1);
    EXPECT_EQ(CZuUiRm::ImageListAdd(list, id("MISSING")), -1);
    EXPECT_EQ(list.GetImageCount(), 2);
}

TEST(ImageList, OverlaysAndStateImagesFollowTheClassicIndexRules)
{
    CZuUiImageList list(QSize(16, 16));
    QPixmap red(16, 16);
    red.fill(Qt::red);
    QPixmap corner(16, 16);
    corner.fill(Qt::transparent);
    {
        QPainter p(&corner);
        p.fillRect(0, 8, 8, 8, Qt::blue);
    }
    EXPECT_EQ(list.Add(red), 0);
    EXPECT_EQ(list.Add(corner), 1);
    EXPECT_EQ(list.Add(QIcon()), -1);
    EXPECT_TRUE(list.SetOverlayImage(1, 2));
    EXPECT_FALSE(list.SetOverlayImage(5, 3)) << "no such image";
    EXPECT_FALSE(list.SetOverlayImage(1, 16)) << "overlay numbers end at 15";
    EXPECT_EQ(list.OverlayImage(2), 1);
    EXPECT_EQ(list.OverlayImage(3), -1);

    QImage canvas(16, 16, QImage::Format_ARGB32);
    canvas.fill(Qt::white);
    {
        QPainter p(&canvas);
        list.Draw(p, 0, QRect(0, 0, 16, 16), 2);
    }
    EXPECT_EQ(canvas.pixel(12, 2), qRgb(255, 0, 0));
    EXPECT_EQ(canvas.pixel(2, 12), qRgb(0, 0, 255));

    canvas.fill(Qt::white);
    {
        QPainter p(&canvas);
        list.Draw(p, -2, QRect(0, 0, 16, 16), 7); // no image, overlay without picture
        list.DrawState(p, 0, QRect(0, 0, 16, 16));
    }
    EXPECT_EQ(canvas.pixel(8, 8), qRgb(255, 255, 255));
    {
        QPainter p(&canvas);
        list.DrawState(p, 1, QRect(0, 0, 16, 16)); // state 1 is image 0
    }
    EXPECT_EQ(canvas.pixel(8, 8), qRgb(255, 0, 0));

    EXPECT_EQ(list.ReplaceIcon(1, red), 1);
    EXPECT_EQ(list.ReplaceIcon(9, red), -1);
    CZuUiImageList uncreated;
    EXPECT_EQ(uncreated.Add(red), -1);
    EXPECT_FALSE(uncreated.Create(QSize(0, 16)));
}

TEST(HiDpi, RoundsHalfAwayFromZero)
{
    EXPECT_EQ(CZuUiHiDpi::Round(22.5), 23);
    EXPECT_EQ(CZuUiHiDpi::Round(-22.5), -23);
    EXPECT_EQ(CZuUiHiDpi::Round(22.49), 22);
    ScopedDpiScale scale(1.5, 2.0);
    EXPECT_EQ(CZuUiHiDpi::ScaleX(15), 23);
    EXPECT_EQ(CZuUiHiDpi::ScaleY(15), 30);
    EXPECT_EQ(CZuUiHiDpi::UnscaleX(23), 15);
}

TEST(HiDpi, OverridesNestAndRestore)
{
    const double original = CZuUiHiDpi::GetMonitorDpiXScale();
    {
        ScopedDpiScale outer(2.0);
        {
            ScopedDpiScale inner(1.25);
            EXPECT_DOUBLE_EQ(CZuUiHiDpi::GetMonitorDpiXScale(), 1.25);
        }
        EXPECT_DOUBLE_EQ(CZuUiHiDpi::GetMonitorDpiYScale(), 2.0);
        CZuUiHiDpi::SetOverride(0, -1); // refused
        EXPECT_DOUBLE_EQ(CZuUiHiDpi::GetMonitorDpiYScale(), 2.0);
    }
    EXPECT_DOUBLE_EQ(CZuUiHiDpi::GetMonitorDpiXScale(), original);
}

} // namespace
