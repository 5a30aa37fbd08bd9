// Renders the three in-place editors over a cell in both themes at two scales and keeps the
// pictures under <build>/test-output/editors for a look; the checks make sure the frame, the
// text and the browse button's dots are there in the theme's colours.

#include "InPlaceEditorTestHost.h"
#include "support/PictureCase.h"
#include "support/ScopedOverrides.h"
#include "views/editors/InPlaceComboBoxCtrl.h"
#include "views/editors/InPlaceFileEditCtrl.h"
#include "views/editors/XrefInPlaceComboBoxCtrl.h"

#include "framework/ZuUiHiDpi.h"
#include "framework/ZuUiTheme.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QImage>

namespace {

class InPlaceEditorPicture : public InPlaceEditorTest,
                             public ::testing::WithParamInterface<PictureCase>
{
protected:
    QString picturePath(const char* what) const { return GetParam().PicturePath("editors", what); }
};

int pixelsOf(const QImage& image, const QRect& area, QColor colour)
{
    int count = 0;
    for (int y = area.top(); y <= area.bottom(); ++y)
        for (int x = area.left(); x <= area.right(); ++x)
            count += image.pixelColor(x, y) == colour;
    return count;
}

// Pixels of @p area nearer in lightness to @p ink than to @p face: the dots with their
// smoothed rims.
int inkedPixels(const QImage& image, const QRect& area, QColor ink, QColor face)
{
    int count = 0;
    for (int y = area.top(); y <= area.bottom(); ++y)
        for (int x = area.left(); x <= area.right(); ++x) {
            const int lightness = image.pixelColor(x, y).lightness();
            count += std::abs(lightness - ink.lightness()) < std::abs(lightness - face.lightness());
        }
    return count;
}

TEST_P(InPlaceEditorPicture, editorsStandOutFromTheCellInTheTheme)
{
    ScopedTheme theme(GetParam().dark);
    ScopedDpiScale scale(GetParam().scale);
    const CZuUiTheme& colours = CZuUiTheme::Instance();
    m_owner->setPalette(colours.Palette());
    m_owner->setAutoFillBackground(true);
    QFont font = m_owner->font();
    font.setPixelSize(CZuUiHiDpi::ScaleY(12));
    m_owner->setFont(font);
    const int rowHeight = CZuUiHiDpi::ScaleY(20);
    m_owner->resize(CZuUiHiDpi::ScaleX(260), 4 * rowHeight);
    m_window.resize(m_owner->size() + QSize(20, 20));

    auto* text = new CInPlaceEditCtrl(0, 1, QStringLiteral("Ground floor plan"));
    ASSERT_TRUE(text->Create(QRect(CZuUiHiDpi::ScaleX(10), 0, CZuUiHiDpi::ScaleX(150), rowHeight),
                             m_owner, 40001));
    auto* combo = new CInPlaceComboBoxCtrl(
        1, 1, {QStringLiteral("Attach"), QStringLiteral("Overlay")}, QStringLiteral("Overlay"));
    ASSERT_TRUE(
        combo->Create(QRect(CZuUiHiDpi::ScaleX(10), rowHeight, CZuUiHiDpi::ScaleX(150), rowHeight),
                      m_owner, 40002));
    auto* file = new CInPlaceFileEditCtrl(2, 1, QStringLiteral("/projects/tower/site plan.dwg"));
    ASSERT_TRUE(file->Create(
        QRect(CZuUiHiDpi::ScaleX(10), 2 * rowHeight, CZuUiHiDpi::ScaleX(240), rowHeight), m_owner,
        40000));
    auto* flat = new CInPlaceFileEditCtrl(3, 1, QStringLiteral("xrefs"),
                                          CInPlaceFileEditCtrl::BrowseFolder |
                                              CInPlaceFileEditCtrl::FlatButton);
    flat->SetButtonColor(QColor(0xEF, 0xEF, 0xEF));
    ASSERT_TRUE(flat->Create(
        QRect(CZuUiHiDpi::ScaleX(10), 3 * rowHeight, CZuUiHiDpi::ScaleX(240), rowHeight), m_owner,
        40000));
    file->setFocus();

    const QImage picture = m_owner->grab().toImage();
    ASSERT_TRUE(picture.save(picturePath("editors")));

    // The focused editor is framed in the focus colour, the others in the border colour.
    const QImage fileImage = file->grab().toImage();
    EXPECT_EQ(fileImage.pixelColor(0, fileImage.height() / 2),
              colours.GetColor(CZuUiTheme::FocusFrame));
    const QImage textImage = text->grab().toImage();
    EXPECT_EQ(textImage.pixelColor(0, textImage.height() / 2),
              colours.GetColor(CZuUiTheme::Border));

    // Three dots of the text colour on the button face, each about a fifth of the button wide;
    // the edge is left out of the count.
    const QRect button = file->ButtonRect();
    const QRect face = button.adjusted(1, 1, -1, -1);
    const QColor ink = colours.GetColor(CZuUiTheme::Text);
    const QColor faceColour = colours.GetColor(CZuUiTheme::ButtonFace);
    const int diameter = button.width() / 5;
    EXPECT_GE(pixelsOf(fileImage, face, ink), 3) << "the dots' middles";
    const int inked = inkedPixels(fileImage, face, ink, faceColour);
    EXPECT_GE(inked, 3 * diameter * diameter / 2);
    EXPECT_LE(inked, 3 * (diameter + 1) * (diameter + 1));
    EXPECT_GT(pixelsOf(fileImage, face, faceColour), face.width() * face.height() / 2);
}

TEST_P(InPlaceEditorPicture, dropDownFollowsTheThemeAndShowsItsChoicesWhole)
{
    ScopedTheme theme(GetParam().dark);
    ScopedDpiScale scale(GetParam().scale);
    auto* combo = new CXrefInPlaceComboBoxCtrl(0, 1, QStringLiteral("Overlay"));
    // A narrow cell: narrower than the longer choice with the list's scroll bar beside it.
    ASSERT_TRUE(combo->Create(QRect(10, 10, 60, CZuUiHiDpi::ScaleY(20)), m_owner, 40002));
    combo->showPopup();
    QWidget* popup = QApplication::activePopupWidget();
    ASSERT_NE(popup, nullptr);
    const QImage picture = popup->grab().toImage();
    ASSERT_TRUE(picture.save(picturePath("dropdown")));

    // The style paints the entries as menu entries; their background is dark on the dark
    // theme and light on the light one, as the cell under the list is.
    const QAbstractItemView* list = combo->view();
    const QRect first = list->visualRect(list->model()->index(0, 0));
    const QColor entry = list->viewport()->grab().toImage().pixelColor(1, first.top() + 1);
    EXPECT_EQ(entry.lightness() < 128, GetParam().dark) << entry.name().toStdString();
    EXPECT_GE(list->viewport()->width(), list->sizeHintForColumn(0));
    combo->hidePopup();
}

INSTANTIATE_TEST_SUITE_P(Themes, InPlaceEditorPicture, ::testing::ValuesIn(kPictureCases));

} // namespace
