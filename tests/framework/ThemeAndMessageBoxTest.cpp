#include "framework/ControlId.h"
#include "framework/Win32Types.h"
#include "framework/ZuUiMessageBox.h"
#include "framework/ZuUiTheme.h"
#include "support/ModalStandIns.h"
#include "support/ScopedOverrides.h"

#include <QSignalSpy>
#include <QWidget>

#include <gtest/gtest.h>

namespace {

TEST(Theme, SwitchingSetsChangesEveryColourAndAnnouncesIt)
{
    CZuUiTheme& theme = CZuUiTheme::Instance();
    ASSERT_FALSE(theme.IsDarkTheme());
    QSignalSpy spy(&theme, &CZuUiTheme::themeChanged);
    std::vector<QColor> light;
    for (int role = 0; role < CZuUiTheme::ColorCount; ++role)
        light.push_back(theme.GetColor(role));
    {
        ScopedTheme dark(true);
        EXPECT_TRUE(theme.IsDarkTheme());
        EXPECT_LT(theme.GetColor(CZuUiTheme::Background).lightness(),
                  theme.GetColor(CZuUiTheme::Text).lightness());
        EXPECT_NE(theme.GetColor(CZuUiTheme::Background), light[0]);
        theme.SetDarkTheme(true); // no change, no signal
    }
    EXPECT_EQ(spy.count(), 2);
    EXPECT_FALSE(theme.GetColor(-1).isValid());
    EXPECT_FALSE(theme.GetColor(CZuUiTheme::ColorCount).isValid());
    EXPECT_EQ(theme.Palette().color(QPalette::Window), light[CZuUiTheme::Background]);
}

TEST(MessageBox, HandlerSeesTheApplicationTitle)
{
    MessageBoxRecorder recorder(CZuUiMessageBox::IdNo);
    EXPECT_EQ(CZuUiMessageBox::Show(QStringLiteral("Really?"), CZuUiMessageBox::YesNo, 7),
              CZuUiMessageBox::IdNo);
    ASSERT_EQ(recorder.Boxes().size(), 1u);
    EXPECT_EQ(recorder.Boxes()[0].caption, CZuUiMessageBox::ApplicationTitle());
    EXPECT_EQ(recorder.Boxes()[0].helpId, 7u);
}

TEST(ControlId, ChildrenAreFoundByTheirIds)
{
    QWidget parent;
    auto* a = new QWidget(&parent);
    auto* b = new QWidget(a);
    ControlId::Set(a, 30100);
    ControlId::Set(b, 30102);
    EXPECT_EQ(ControlId::Get(b), 30102);
    EXPECT_EQ(ControlId::Get(&parent), 0);
    EXPECT_EQ(ControlId::FindChild(&parent, 30102), b);
    EXPECT_EQ(ControlId::FindChild(&parent, 1), nullptr);
    EXPECT_EQ(ControlId::FindChild(nullptr, 30102), nullptr);
}

TEST(Win32Types, ColoursAndFontsConvert)
{
    EXPECT_EQ(ToQColor(MakeColorRef(10, 20, 30)), QColor(10, 20, 30));
    EXPECT_EQ(ToColorRef(QColor(1, 2, 3)), 0x030201u);
    LOGFONTW font;
    font.lfHeight = -13;
    font.lfWeight = 700;
    font.lfItalic = 1;
    const wchar_t face[] = L"DejaVu Sans";
    std::copy(std::begin(face), std::end(face), font.lfFaceName);
    const QFont q = ToQFont(font, QFont());
    EXPECT_EQ(q.pixelSize(), 13);
    EXPECT_EQ(q.weight(), QFont::Bold);
    EXPECT_TRUE(q.italic());
    EXPECT_EQ(q.family(), QStringLiteral("DejaVu Sans"));
    EXPECT_TRUE(IsBold(font));
    // A description that leaves things open keeps the base font's.
    const QFont base(QStringLiteral("Sans"), 11);
    EXPECT_EQ(ToQFont(LOGFONTW(), base).pointSize(), 11);
}

} // namespace
