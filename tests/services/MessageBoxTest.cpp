#include "framework/ZuUiMessageBox.h"
#include "resources/TroveResources.h"
#include "services/TroveUIFunctions.h"
#include "support/ModalStandIns.h"
#include "util/ResourceModule.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace {

class MessageBoxes : public testing::Test
{
protected:
    void SetUp() override
    {
        CZuUiMessageBox::SetApplicationTitle(QStringLiteral("Host"));
        QFile file(m_dir.filePath(QStringLiteral("strings.json")));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(
            R"({"10": "Cannot find %1 in %2.", "11": "Missing Reference", "12": "Plain text"})");
    }

    QTemporaryDir m_dir;
    Util::ResourceModule m_module{m_dir.path()};
    MessageBoxRecorder m_recorder{CZuUiMessageBox::IdYes};
};

TEST_F(MessageBoxes, CaptionIsTheTitleForTheCallOnly)
{
    EXPECT_EQ(TroveUI::MessageBoxW(L"Text", L"Caption", CZuUiMessageBox::YesNo, 3),
              CZuUiMessageBox::IdYes);
    ASSERT_EQ(m_recorder.Boxes().size(), 1u);
    EXPECT_EQ(m_recorder.Boxes()[0].caption, QStringLiteral("Caption"));
    EXPECT_EQ(m_recorder.Boxes()[0].type, unsigned(CZuUiMessageBox::YesNo));
    EXPECT_EQ(CZuUiMessageBox::ApplicationTitle(), QStringLiteral("Host"));
}

TEST_F(MessageBoxes, EmptyCaptionKeepsTheApplicationsTitle)
{
    TroveUI::MessageBoxW(L"Text", L"", 0, 0);
    EXPECT_EQ(m_recorder.Boxes().back().caption, QStringLiteral("Host"));
    TroveUI::MessageBoxW(&m_module, 12, 0, 0, 0);
    EXPECT_EQ(m_recorder.Boxes().back().text, QStringLiteral("Plain text"));
    EXPECT_EQ(m_recorder.Boxes().back().caption, QStringLiteral("Host"));
}

TEST_F(MessageBoxes, TextsComeFromTheModule)
{
    TroveUI::MessageBoxW(&m_module, 12, 11, 0, 0);
    EXPECT_EQ(m_recorder.Boxes().back().caption, QStringLiteral("Missing Reference"));
    TroveUI::FormatMessageBox(&m_module, 10, 11, 0, 0, L"plan.dwg", L"C:\\jobs");
    EXPECT_EQ(m_recorder.Boxes().back().text, QStringLiteral("Cannot find plan.dwg in C:\\jobs."));
    TroveUI::FormatMessageBox1(&m_module, 10, L"site.dwg", 0, 0, 0);
    EXPECT_TRUE(
        m_recorder.Boxes().back().text.startsWith(QStringLiteral("Cannot find site.dwg in")));
    // A missing text shows an empty box rather than failing.
    TroveUI::MessageBoxW(&m_module, 999, 998, 0, 0);
    EXPECT_TRUE(m_recorder.Boxes().back().text.isEmpty());
    EXPECT_EQ(CZuUiMessageBox::ApplicationTitle(), QStringLiteral("Host"));
}

} // namespace
