// The library must never ask its default resource module for something it does not hold: the
// declared lists and a scan of the sources are both checked against the module.

#include "framework/ZuUiMenu.h"
#include "framework/ZuUiRm.h"
#include "resources/ResourceIds.h"
#include "resources/TroveResources.h"
#include "util/ResourceModule.h"

#include <QDirIterator>
#include <QFile>
#include <QMenu>
#include <QRegularExpression>
#include <QSet>

#include <gtest/gtest.h>

namespace {

const Util::ResourceModule& module()
{
    return TroveUI::DefaultResourceModule();
}

bool hasIcon(const QString& name)
{
    return !CZuUiRm::Icon(CZuUiRmId(&module(), name)).isNull();
}

bool hasBitmap(const QString& name)
{
    return !CZuUiRm::Bitmap(CZuUiRmId(&module(), name)).isNull();
}

TEST(ResourceCompleteness, EveryDeclaredStringHasAText)
{
    for (unsigned id : TroveUI::Res::kStringIds)
        EXPECT_FALSE(module().String(id).isEmpty()) << "string " << id;
}

TEST(ResourceCompleteness, EveryIconAndBitmapExistsInBothThemes)
{
    for (const char* name : TroveUI::Res::kStatusIconNames) {
        EXPECT_TRUE(hasIcon(QString::fromLatin1(name))) << name;
        EXPECT_TRUE(hasIcon(QString::fromLatin1(name) + QLatin1String("_DARK"))) << name;
    }
    for (const char* name : TroveUI::Res::kTypeIconNames) {
        EXPECT_TRUE(hasIcon(QString::fromLatin1(name))) << name;
        EXPECT_TRUE(hasIcon(QString::fromLatin1(name) + QLatin1String("_DARK"))) << name;
    }
    for (const char* name : TroveUI::Res::kBitmapNames) {
        EXPECT_TRUE(hasBitmap(QString::fromLatin1(name))) << name;
        EXPECT_TRUE(hasBitmap(QString::fromLatin1(name) + QLatin1String("_DARK"))) << name;
    }
    EXPECT_EQ(CZuUiRm::Cursor(CZuUiRmId(&module(), TroveUI::Res::kSplitCursorId), QPoint(),
                              QCursor(Qt::ArrowCursor))
                  .shape(),
              Qt::BitmapCursor);
}

TEST(ResourceCompleteness, ToolBarMenusHoldTheirThreeDropDowns)
{
    const QList<unsigned> refresh = {1081, 1082};
    const QList<unsigned> path = {1176, 1177, 1178, 1180, 1181};
    const QList<unsigned> attach = {1083, 1107, 1084, 1087, 1088, 1090, 32784, 1085};
    for (unsigned id : {TroveUI::Res::kToolBarMenuId, TroveUI::Res::kTroveToolBarMenuId}) {
        const auto menu = CZuUiMenu::LoadMenu(&module(), id);
        ASSERT_TRUE(menu) << id;
        ASSERT_EQ(CZuUiMenu::GetMenuItemCount(menu.get()), 3) << id;
        auto commands = [&](int position) {
            QList<unsigned> ids;
            const QMenu* sub = CZuUiMenu::GetSubMenu(menu.get(), position);
            for (int i = 0; sub && i < CZuUiMenu::GetMenuItemCount(sub); ++i) {
                const unsigned item = CZuUiMenu::GetMenuItemID(sub, i);
                if (item != 0)
                    ids << item;
                EXPECT_FALSE(
                    CZuUiMenu::GetMenuString(sub, unsigned(i), CZuUiMenu::ByPosition).isEmpty() &&
                    item != 0);
            }
            return ids;
        };
        EXPECT_EQ(commands(0), refresh) << id;
        EXPECT_EQ(commands(2), path) << id;
        QList<unsigned> expected = attach;
        if (id == TroveUI::Res::kTroveToolBarMenuId)
            expected.prepend(1086);
        EXPECT_EQ(commands(1), expected) << id;
    }
}

// Reads every source of the library and collects the literal ids and names it loads.
struct SourceUses
{
    QSet<unsigned> strings;
    QSet<QString> icons;
    QSet<QString> bitmaps;
};

SourceUses scanSources()
{
    SourceUses uses;
    const QRegularExpression stringCall(QStringLiteral(
        R"re(\b(?:ResString|ResStringW|LoadStrW|LoadStr|LoadMenuItemString)\s*\((?:[^(),]*,\s*)?(\d{3,5})\s*\))re"));
    const QRegularExpression iconName(QStringLiteral(R"re("(IDI_[A-Z0-9_]+)")re"));
    const QRegularExpression bitmapName(QStringLiteral(R"re("([A-Z0-9_]+_BTN)\b)re"));
    QDirIterator it(QStringLiteral(KVX_SOURCE_DIR "/src"),
                    {QStringLiteral("*.cpp"), QStringLiteral("*.h")}, QDir::Files,
                    QDirIterator::Subdirectories);
    while (it.hasNext()) {
        QFile file(it.next());
        if (!file.open(QIODevice::ReadOnly))
            continue;
        const QString text = QString::fromUtf8(file.readAll());
        for (auto m = stringCall.globalMatch(text); m.hasNext();)
            uses.strings.insert(m.next().captured(1).toUInt());
        for (auto m = iconName.globalMatch(text); m.hasNext();)
            uses.icons.insert(m.next().captured(1));
        for (auto m = bitmapName.globalMatch(text); m.hasNext();)
            uses.bitmaps.insert(m.next().captured(1));
    }
    return uses;
}

TEST(ResourceCompleteness, EverythingTheSourcesLoadExists)
{
    const SourceUses uses = scanSources();
    EXPECT_FALSE(uses.icons.isEmpty()) << "the scan finds the sources";
    for (unsigned id : uses.strings)
        EXPECT_FALSE(module().String(id).isEmpty()) << "string " << id << " is loaded but missing";
    for (const QString& name : uses.icons)
        EXPECT_TRUE(hasIcon(name)) << name.toStdString();
    for (const QString& name : uses.bitmaps)
        EXPECT_TRUE(hasBitmap(name)) << name.toStdString();
}

} // namespace
