#include "framework/ZuUiImageList.h"
#include "framework/ZuUiRm.h"
#include "resources/TroveResources.h"
#include "services/RmxImageSettings.h"
#include "services/TroveUIFunctions.h"
#include "services/XrefMessageBox.h"

#include <QApplication>
#include <QTest>

#include <gtest/gtest.h>

namespace {

QImage picture(const QIcon& icon, int edge)
{
    return icon.pixmap(QSize(edge, edge)).toImage().convertToFormat(QImage::Format_ARGB32);
}

QImage libraryIcon(const char* name, int edge)
{
    return picture(CZuUiRm::Icon(CZuUiRmId(TroveUI::ResourceInstance(), name)), edge);
}

TEST(RmxImageSettings, OneInstanceBetweenNewAndDelete)
{
    using TroveUI::RmxImageSettings;
    ASSERT_FALSE(RmxImageSettings::IsValueCreated());
    RmxImageSettings::New();
    RmxImageSettings* first = &RmxImageSettings::Value();
    EXPECT_FALSE(first->GetTroveLoggedIn());
    first->SetTroveLoggedIn(true);
    RmxImageSettings::New();
    EXPECT_EQ(&RmxImageSettings::Value(), first) << "a second New keeps the instance";
    EXPECT_TRUE(RmxImageSettings::Value().GetTroveLoggedIn());
    RmxImageSettings::Delete();
    EXPECT_FALSE(RmxImageSettings::IsValueCreated());
    EXPECT_EQ(RmxImageSettings::m_pInstance, nullptr);
    RmxImageSettings::Delete(); // harmless
    RmxImageSettings::New();
    EXPECT_FALSE(RmxImageSettings::Value().GetTroveLoggedIn())
        << "a new instance starts logged out";
    RmxImageSettings::Delete();
}

TEST(FileExtIcon, ReferenceFileTypesGetTheLibrarysIcons)
{
    // The file does not exist: only the extension counts.
    const QIcon dwg =
        TroveUI::GetFileExtIcon(L"/no/such/folder/plan.DWG", 16, 16, TroveUI::SmallIcon, false);
    EXPECT_EQ(picture(dwg, 16), libraryIcon("IDI_TYPE_DWG", 16));
    EXPECT_EQ(picture(TroveUI::GetFileExtIcon(L"scan.e57", 16, 16, TroveUI::SmallIcon, false), 16),
              libraryIcon("IDI_TYPE_POINTCLOUD", 16));
    EXPECT_EQ(picture(TroveUI::GetFileExtIcon(L"pdf", 16, 16, TroveUI::SmallIcon, false), 16),
              libraryIcon("IDI_TYPE_PDF", 16))
        << "a bare extension names the type";
    EXPECT_EQ(picture(TroveUI::GetFileExtIcon(L"plan.dwg", 16, 16, TroveUI::SmallIcon, true), 16),
              libraryIcon("IDI_TYPE_FOLDER", 16));
}

TEST(FileExtIcon, SizesFollowTheRequestOrTheSizeClass)
{
    const QIcon exact = TroveUI::GetFileExtIcon(L"a.dwg", 20, 24, TroveUI::SmallIcon, false);
    EXPECT_EQ(exact.availableSizes().value(0), QSize(20, 24));
    const QIcon large = TroveUI::GetFileExtIcon(L"a.dwg", 0, 0, TroveUI::LargeShellIcon, false);
    EXPECT_EQ(large.availableSizes().value(0), QSize(32, 32));
    const QIcon odd = TroveUI::GetFileExtIcon(L"a.dwg", 0, 0, TroveUI::EFileExtIconType(9), false);
    EXPECT_EQ(odd.availableSizes().value(0), QSize(32, 32)) << "unknown classes are large";
    // Unknown types still get a picture.
    EXPECT_FALSE(TroveUI::GetFileExtIcon(L"notes.zzq", 16, 16, TroveUI::SmallIcon, false).isNull());
    EXPECT_FALSE(TroveUI::GetFileExtIcon(L"", 16, 16, TroveUI::SmallIcon, false).isNull());
}

TEST(LoadIcon, AddsByNumericIdAndIgnoresTheSize)
{
    CZuUiImageList list(QSize(16, 16));
    EXPECT_EQ(TroveUI::LoadIconW(list, TroveUI::ResourceInstance(), 30980, 99, 99, 0), -1)
        << "30980 is a cursor, not an icon";
    EXPECT_EQ(TroveUI::LoadIconW(list, TroveUI::ResourceInstance(), 12345, 16, 16, 0), -1);
    EXPECT_EQ(list.GetImageCount(), 0);
}

TEST(MessageStrip, ShowsTheLastMessageAndTakesFocusOnClick)
{
    QWidget window;
    auto* strip = new CXrefMessageBox(&window);
    auto* other = new QWidget(&window);
    other->setFocusPolicy(Qt::StrongFocus);
    strip->setGeometry(0, 0, 300, 22);
    window.show();
    QApplication::setActiveWindow(&window);
    other->setFocus();
    strip->SetMessage(QStringLiteral("Reference not found"));
    EXPECT_EQ(strip->Message(), QStringLiteral("Reference not found"));
    QTest::mouseClick(strip, Qt::LeftButton);
    EXPECT_TRUE(strip->hasFocus());
    strip->SetMessage(QString());
    EXPECT_TRUE(strip->Message().isEmpty());
}

} // namespace

#include "panel/KvXrefTroveUI.h"
#include "util/KvXrefUtil.h"

namespace {

TEST(ModuleEntry, StartAndEndPassThroughToTheUtilityLibrary)
{
    const int before = Util::CrtInitializeCount();
    EXPECT_EQ(kvXrefTroveUIInitialize(), 1);
    EXPECT_EQ(Util::CrtInitializeCount(), before + 1);
    EXPECT_EQ(kvXrefTroveUITerminate(), 1);
    EXPECT_EQ(Util::CrtInitializeCount(), before);
}

} // namespace
