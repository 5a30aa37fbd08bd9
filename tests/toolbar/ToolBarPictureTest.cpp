// Renders the tool bar in both themes at two scales and keeps the pictures under
// <build>/test-output/toolbar for a look; the checks make sure the pictures are drawn, themed
// and show their states.

#include "ToolBarFixture.h"

#include "support/PictureCase.h"
#include "support/ScopedOverrides.h"

#include "framework/ZuUiTheme.h"
#include "resources/TroveResources.h"

#include <QApplication>
#include <QImage>
#include <QToolTip>

#include <string>

namespace {

class ToolBarPicture : public ToolBarFixture, public testing::WithParamInterface<PictureCase>
{
protected:
    QString PicturePath(const char* what) const { return GetParam().PicturePath("toolbar", what); }
};

bool isGrey(QColor colour)
{
    return std::abs(colour.red() - colour.green()) <= 2 &&
           std::abs(colour.green() - colour.blue()) <= 2;
}

// Pixels of @p area in @p image that are not the background colour.
int drawnPixels(const QImage& image, const QRect& area, QColor background)
{
    int count = 0;
    for (int y = area.top(); y <= area.bottom(); ++y)
        for (int x = area.left(); x <= area.right(); ++x)
            count += image.pixelColor(x, y) != background;
    return count;
}

} // namespace

TEST_P(ToolBarPicture, drawsEveryButtonInTheTheme)
{
    const PictureCase& c = GetParam();
    ScopedTheme theme(c.dark);
    ScopedDpiScale scale(c.scale);
    const CZuUiTheme& colours = CZuUiTheme::Instance();
    const QColor background = colours.GetColor(CZuUiTheme::Background);

    host.setPalette(colours.Palette());
    host.setAutoFillBackground(true);
    CXrefToolBar* b = Make<CXrefToolBar>();
    ASSERT_TRUE(b);
    const int margin = CZuUiHiDpi::ScaleX(8);
    b->move(margin, margin);
    host.resize(b->sizeHint() + QSize(2 * margin, 2 * margin));
    host.show();
    QApplication::setActiveWindow(&host);
    ASSERT_TRUE(QTest::qWaitForWindowActive(&host));

    const QImage normal = host.grab().toImage();
    ASSERT_TRUE(normal.save(PicturePath("toolbar")));
    const int image = CZuUiHiDpi::Round(24 * c.scale);
    const int split = image + CZuUiHiDpi::Round(15 * c.scale);
    EXPECT_EQ(normal.size(), QSize(3 * split + image + 2 * margin, image + 2 * margin));
    EXPECT_EQ(normal.pixelColor(0, 0), background);
    for (CZuUiBitmapButton* button :
         {static_cast<CZuUiBitmapButton*>(b->AttachButton()),
          static_cast<CZuUiBitmapButton*>(b->RefreshButton()),
          static_cast<CZuUiBitmapButton*>(b->ChangePathButton()), b->HelpButton()}) {
        const QRect picture(button->geometry().topLeft() + QPoint(margin, margin),
                            QSize(image, image));
        EXPECT_GT(drawnPixels(normal, picture, background), image * image / 8)
            << button->GetWindowText().toStdString();
    }

    // Keyboard focus on attach, refresh held down, the path button switched off.
    b->HelpButton()->setFocus(Qt::OtherFocusReason);
    b->AttachButton()->setFocus(Qt::TabFocusReason);
    b->RefreshButton()->setDown(true);
    b->EnablePathOperations(false);
    const QImage states = host.grab().toImage();
    ASSERT_TRUE(states.save(PicturePath("toolbar_states")));
    const QPoint attach = b->AttachButton()->geometry().topLeft() + QPoint(margin, margin);
    const int frame = std::max(1, CZuUiHiDpi::ScaleX(1));
    EXPECT_EQ(states.pixelColor(attach + QPoint(frame, image / 2)),
              colours.GetColor(CZuUiTheme::FocusFrame));
    const QPoint refresh = b->RefreshButton()->geometry().topLeft() + QPoint(margin, margin);
    EXPECT_EQ(states.pixelColor(refresh + QPoint(frame + 1, frame + 1)),
              colours.GetColor(CZuUiTheme::ButtonPressed));
    const QRect path(b->ChangePathButton()->geometry().topLeft() + QPoint(margin, margin),
                     b->ChangePathButton()->size());
    for (int y = path.top(); y <= path.bottom(); ++y)
        for (int x = path.left(); x <= path.right(); ++x)
            ASSERT_TRUE(isGrey(states.pixelColor(x, y))) << x << "," << y;

    // The pointer comes to rest on the refresh button: its tip shows, in the theme's colours.
    QWidget* refreshButton = b->RefreshButton();
    QEnterEvent enter(QPointF(4, 4), QPointF(4, 4), refreshButton->mapToGlobal(QPointF(4, 4)));
    QApplication::sendEvent(refreshButton, &enter);
    QWidget* label = nullptr;
    for (int waited = 0; waited < 2000 && !label; waited += 10) {
        QTest::qWait(10);
        for (QWidget* widget : QApplication::topLevelWidgets()) {
            if (widget->inherits("QTipLabel") && widget->isVisible())
                label = widget;
        }
    }
    ASSERT_TRUE(label);
    EXPECT_EQ(b->ToolTip()->ShownText(), TroveUI::ResString(1036));
    const QImage tip = label->grab().toImage();
    ASSERT_TRUE(tip.save(PicturePath("toolbar_tip")));
    EXPECT_EQ(tip.pixelColor(tip.width() - 2, tip.height() / 2),
              colours.GetColor(CZuUiTheme::ToolTipBackground));
    QToolTip::hideText();
}

INSTANTIATE_TEST_SUITE_P(ThemesAndScales, ToolBarPicture, testing::ValuesIn(kPictureCases),
                         [](const testing::TestParamInfo<PictureCase>& info) {
                             return std::string(info.param.dark ? "dark" : "light") +
                                    (info.param.scale > 1.5 ? "200" : "100");
                         });
