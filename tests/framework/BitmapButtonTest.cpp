// The themed bitmap buttons: what AutoLoad takes from the window text, that the picture follows
// the theme from the module it came from, the focus cue, the keys, and the two parts of the
// drop-down button.

#include "support/QtPrinters.h"
#include "support/ScopedOverrides.h"

#include "framework/ZuUiBitmapButton.h"
#include "framework/ZuUiThemedDropDownBitmapButton.h"
#include "util/ResourceModule.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QTest>

#include <memory>

namespace {

QByteArray squareSvg(const char* colour)
{
    return QByteArray("<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"24\" height=\"24\">"
                      "<rect width=\"24\" height=\"24\" fill=\"") +
           colour + "\"/></svg>";
}

// A module with one bitmap, red in the light theme and blue in the dark one, made current.
class BitmapModule
{
public:
    BitmapModule() : m_previous(Util::CurrentResourceModule())
    {
        QDir(m_dir.path()).mkpath(QStringLiteral("bitmaps"));
        write(QStringLiteral("bitmaps/PIC.svg"), squareSvg("#ff0000"));
        write(QStringLiteral("bitmaps/PIC_DARK.svg"), squareSvg("#0000ff"));
        write(QStringLiteral("bitmaps/OTHER.svg"), squareSvg("#00ff00"));
        m_module = std::make_unique<Util::ResourceModule>(m_dir.path());
        Util::SetCurrentResourceModule(m_module.get());
    }
    ~BitmapModule() { Util::SetCurrentResourceModule(m_previous); }

private:
    void write(const QString& name, const QByteArray& data)
    {
        QFile file(m_dir.filePath(name));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(data);
    }
    QTemporaryDir m_dir;
    const Util::ResourceModule* m_previous;
    std::unique_ptr<Util::ResourceModule> m_module;
};

QColor centre(QWidget& widget)
{
    const QImage image = widget.grab().toImage();
    return image.pixelColor(image.width() / 2, image.height() / 2);
}

struct WindowTextCase
{
    const char* text;
    bool loads;
    const char* key;
    const char* label;
};

class AutoLoad : public testing::TestWithParam<WindowTextCase>
{};

} // namespace

TEST_P(AutoLoad, takesBitmapKeyAndLabelFromWindowText)
{
    BitmapModule module;
    const WindowTextCase& c = GetParam();
    CZuUiBitmapButton button;
    ASSERT_TRUE(button.LoadBitmap(QStringLiteral("OTHER")));
    button.SetWindowText(QString::fromUtf8(c.text));
    EXPECT_EQ(button.AutoLoad(), c.loads);
    EXPECT_EQ(button.BitmapKey(), QString::fromUtf8(c.key));
    EXPECT_EQ(button.HasBitmap(), c.loads);
    EXPECT_EQ(button.Label(), QString::fromUtf8(c.label));
    // A button without picture still paints (its label) and does not fail.
    button.resize(60, 24);
    EXPECT_FALSE(button.grab().isNull());
}

INSTANTIATE_TEST_SUITE_P(WindowTexts, AutoLoad,
                         testing::Values(WindowTextCase{"PIC|Refresh", true, "PIC", "Refresh"},
                                         WindowTextCase{"PIC", true, "PIC", ""},
                                         WindowTextCase{"PIC|A|B", true, "PIC", "A|B"},
                                         WindowTextCase{"MISSING|Help", false, "", "Help"},
                                         WindowTextCase{"|Help", false, "", "Help"},
                                         WindowTextCase{"", false, "", ""}));

TEST(BitmapButton, loadingAMissingBitmapKeepsThePreviousOne)
{
    BitmapModule module;
    CZuUiBitmapButton button;
    ASSERT_TRUE(button.LoadBitmap(QStringLiteral("PIC")));
    EXPECT_FALSE(button.LoadBitmap(QStringLiteral("MISSING")));
    EXPECT_FALSE(button.LoadBitmap(QString()));
    EXPECT_EQ(button.BitmapKey(), QStringLiteral("PIC"));
}

TEST(BitmapButton, pictureFollowsThemeFromItsOwnModule)
{
    ScopedTheme light(false);
    CZuUiBitmapButton button;
    button.resize(24, 24);
    button.SetImageBorder(0);
    {
        BitmapModule module;
        ASSERT_TRUE(button.LoadBitmap(QStringLiteral("PIC")));
        EXPECT_EQ(centre(button), QColor(Qt::red));
        CZuUiTheme::Instance().SetDarkTheme(true);
        EXPECT_EQ(centre(button), QColor(Qt::blue));
        CZuUiTheme::Instance().SetDarkTheme(false);
        EXPECT_EQ(centre(button), QColor(Qt::red));
    }
}

TEST(BitmapButton, disabledPictureIsGreyed)
{
    BitmapModule module;
    ScopedTheme light(false);
    CZuUiBitmapButton button;
    button.resize(24, 24);
    button.SetImageBorder(0);
    ASSERT_TRUE(button.LoadBitmap(QStringLiteral("PIC")));
    button.setEnabled(false);
    const QColor colour = centre(button);
    EXPECT_EQ(colour.red(), colour.green());
    EXPECT_EQ(colour.green(), colour.blue());
}

TEST(BitmapButton, imageBorderLeavesFreeSpaceScaledWithDpi)
{
    BitmapModule module;
    ScopedTheme light(false);
    ScopedDpiScale scale(2.0);
    CZuUiBitmapButton button;
    button.resize(48, 48);
    ASSERT_TRUE(button.LoadBitmap(QStringLiteral("PIC")));
    const QImage image = button.grab().toImage();
    const QColor background = CZuUiTheme::Instance().GetColor(CZuUiTheme::Background);
    // Three device-independent pixels are six here.
    EXPECT_EQ(image.pixelColor(5, 24), background);
    EXPECT_EQ(image.pixelColor(6, 24), QColor(Qt::red));
    EXPECT_EQ(image.pixelColor(41, 24), QColor(Qt::red));
    EXPECT_EQ(image.pixelColor(42, 24), background);
}

TEST(BitmapButton, enterReturnAndSpaceClick)
{
    CZuUiBitmapButton button;
    QSignalSpy clicked(&button, &QAbstractButton::clicked);
    QTest::keyClick(&button, Qt::Key_Return);
    QTest::keyClick(&button, Qt::Key_Enter, Qt::KeypadModifier);
    QTest::keyClick(&button, Qt::Key_Space);
    EXPECT_EQ(clicked.count(), 3);
    QTest::keyClick(&button, Qt::Key_Return, Qt::ControlModifier);
    EXPECT_EQ(clicked.count(), 3);
    button.setEnabled(false);
    QTest::keyClick(&button, Qt::Key_Return);
    EXPECT_EQ(clicked.count(), 3);
}

TEST(BitmapButton, focusFrameShowsOnlyForKeyboardFocus)
{
    ScopedTheme light(false);
    QWidget window;
    window.resize(100, 40);
    auto* before = new QWidget(&window);
    before->setFocusPolicy(Qt::StrongFocus);
    auto* button = new CZuUiBitmapButton(&window);
    button->setGeometry(40, 0, 24, 24);
    window.show();
    QApplication::setActiveWindow(&window);
    ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
    const QColor frame = CZuUiTheme::Instance().GetColor(CZuUiTheme::FocusFrame);

    button->setFocus(Qt::MouseFocusReason);
    ASSERT_TRUE(button->hasFocus());
    EXPECT_NE(button->grab().toImage().pixelColor(1, 12), frame);

    before->setFocus(Qt::OtherFocusReason);
    button->setFocus(Qt::TabFocusReason);
    EXPECT_EQ(button->grab().toImage().pixelColor(1, 12), frame);

    // Any key turns the cue on for a button that got focus by the mouse.
    before->setFocus(Qt::OtherFocusReason);
    button->setFocus(Qt::MouseFocusReason);
    QTest::keyClick(button, Qt::Key_Shift);
    EXPECT_EQ(button->grab().toImage().pixelColor(1, 12), frame);
}

namespace {

struct DropDownFixture : testing::Test
{
    DropDownFixture()
    {
        button.resize(39, 24);
        button.SetArrowWidth(15);
    }
    CZuUiThemedDropDownBitmapButton button;
    QSignalSpy clicked{&button, &QAbstractButton::clicked};
    QSignalSpy dropDown{&button, &CZuUiThemedDropDownBitmapButton::dropDownRequested};
};

} // namespace

TEST_F(DropDownFixture, arrowPartDropsDownInsteadOfClicking)
{
    EXPECT_EQ(button.ArrowRect(), QRect(24, 0, 15, 24));
    QTest::mouseClick(&button, Qt::LeftButton, {}, QPoint(30, 12));
    EXPECT_TRUE(button.GetMenuButtonSelected());
    EXPECT_EQ(dropDown.count(), 1);
    EXPECT_EQ(clicked.count(), 0);
    EXPECT_FALSE(button.isDown());

    QTest::mouseClick(&button, Qt::LeftButton, {}, QPoint(23, 12));
    EXPECT_FALSE(button.GetMenuButtonSelected());
    EXPECT_EQ(dropDown.count(), 1);
    EXPECT_EQ(clicked.count(), 1);
}

TEST_F(DropDownFixture, withoutArrowWidthTheWholeButtonClicks)
{
    button.SetArrowWidth(0);
    EXPECT_TRUE(button.ArrowRect().isEmpty());
    QTest::mouseClick(&button, Qt::LeftButton, {}, QPoint(36, 12));
    EXPECT_EQ(dropDown.count(), 0);
    EXPECT_EQ(clicked.count(), 1);
    // An arrow wider than the button leaves no image part, and nothing breaks.
    button.SetArrowWidth(500);
    EXPECT_EQ(button.ArrowRect(), button.rect());
    EXPECT_FALSE(button.grab().isNull());
}

TEST_F(DropDownFixture, keyboardDropsDown)
{
    QTest::keyClick(&button, Qt::Key_Down, Qt::AltModifier);
    QTest::keyClick(&button, Qt::Key_F4);
    QTest::keyClick(&button, Qt::Key_Menu);
    EXPECT_EQ(dropDown.count(), 3);
    QTest::keyClick(&button, Qt::Key_Down);
    QTest::keyClick(&button, Qt::Key_Space);
    EXPECT_EQ(dropDown.count(), 3);
    EXPECT_EQ(clicked.count(), 1);
}

TEST_F(DropDownFixture, disabledButtonNeitherClicksNorDropsDown)
{
    button.setEnabled(false);
    QTest::mouseClick(&button, Qt::LeftButton, {}, QPoint(30, 12));
    QTest::mouseClick(&button, Qt::LeftButton, {}, QPoint(5, 12));
    QTest::keyClick(&button, Qt::Key_Down, Qt::AltModifier);
    EXPECT_EQ(dropDown.count(), 0);
    EXPECT_EQ(clicked.count(), 0);
}
