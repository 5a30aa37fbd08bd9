#include "framework/ZuUiMenu.h"
#include "resources/TroveResources.h"
#include "support/ModalStandIns.h"

#include <QAction>
#include <QMenu>

#include <gtest/gtest.h>

namespace {

std::unique_ptr<QMenu> sample()
{
    return CZuUiMenu::MenuFromJson(R"({"items": [
        {"text": "File", "items": [{"id": 10, "text": "Open"}, {"separator": true}, {"id": 11, "text": "Close"}]},
        {"text": "Edit", "items": [{"id": 20, "text": "Copy"},
                                   {"text": "More", "items": [{"id": 30, "text": "Deep"}]}]}
    ]})");
}

TEST(Menu, LoadsMenuResourcesFromTheModule)
{
    const auto menu = CZuUiMenu::LoadMenu(TroveUI::ResourceInstance(), 2080);
    ASSERT_TRUE(menu);
    EXPECT_EQ(CZuUiMenu::GetMenuItemCount(menu.get()), 3);
    EXPECT_EQ(CZuUiMenu::GetMenuItemID(menu.get(), 0), CZuUiMenu::kPopupId);
    const QMenu* refresh = CZuUiMenu::GetSubMenu(menu.get(), 0);
    ASSERT_TRUE(refresh);
    EXPECT_EQ(CZuUiMenu::GetMenuItemID(refresh, 0), 1081u);
    EXPECT_EQ(CZuUiMenu::GetMenuItemID(refresh, 1), 1082u);
    EXPECT_FALSE(CZuUiMenu::LoadMenu(TroveUI::ResourceInstance(), 4242));
    EXPECT_FALSE(CZuUiMenu::LoadMenu(&TroveUI::DefaultResourceModule(), 0));
}

TEST(Menu, MalformedResourcesBuildNothing)
{
    EXPECT_FALSE(CZuUiMenu::MenuFromJson("not json"));
    EXPECT_FALSE(CZuUiMenu::MenuFromJson(R"({"items": 3})"));
    EXPECT_FALSE(CZuUiMenu::MenuFromJson(R"({"items": [{"id": -1, "text": "x"}]})"));
    EXPECT_FALSE(CZuUiMenu::MenuFromJson(R"({"items": [7]})"));
    // Nesting deeper than any menu needs is refused rather than recursed into.
    QByteArray deep = R"({"id": 1, "text": "x"})";
    for (int i = 0; i < 20; ++i)
        deep = R"({"text": "s", "items": [)" + deep + "]}";
    EXPECT_FALSE(CZuUiMenu::MenuFromJson(R"({"items": [)" + deep + "]}"));
}

TEST(Menu, PositionsReportSeparatorsAndSubMenus)
{
    const auto menu = sample();
    const QMenu* file = CZuUiMenu::GetSubMenu(menu.get(), 0);
    EXPECT_EQ(CZuUiMenu::GetMenuItemID(file, 1), 0u);
    EXPECT_EQ(CZuUiMenu::GetMenuItemID(file, 2), 11u);
    EXPECT_EQ(CZuUiMenu::GetMenuItemID(file, 3), CZuUiMenu::kPopupId);
    EXPECT_EQ(CZuUiMenu::GetMenuItemID(file, -1), CZuUiMenu::kPopupId);
    EXPECT_EQ(CZuUiMenu::GetMenuState(file, 1, CZuUiMenu::ByPosition), int(CZuUiMenu::Separator));
    EXPECT_EQ(CZuUiMenu::GetMenuState(menu.get(), 1, CZuUiMenu::ByPosition), int(CZuUiMenu::Popup));
    EXPECT_EQ(CZuUiMenu::GetMenuState(menu.get(), 99, CZuUiMenu::ByCommand), -1);
}

TEST(Menu, CommandsAreFoundInSubMenus)
{
    auto menu = sample();
    EXPECT_EQ(CZuUiMenu::GetMenuString(menu.get(), 30, CZuUiMenu::ByCommand),
              QStringLiteral("Deep"));
    EXPECT_TRUE(CZuUiMenu::RemoveMenu(menu.get(), 10, CZuUiMenu::ByCommand));
    const QMenu* file = CZuUiMenu::GetSubMenu(menu.get(), 0);
    EXPECT_EQ(CZuUiMenu::GetMenuItemCount(file), 2);
    EXPECT_EQ(CZuUiMenu::GetMenuItemID(file, 0), 0u) << "later entries move up";
    EXPECT_FALSE(CZuUiMenu::RemoveMenu(menu.get(), 10, CZuUiMenu::ByCommand));
    // Inserting before a command puts the new entry into that command's menu.
    EXPECT_TRUE(
        CZuUiMenu::InsertMenu(menu.get(), 30, CZuUiMenu::ByCommand, 31, QStringLiteral("New")));
    const QMenu* more = CZuUiMenu::GetSubMenu(CZuUiMenu::GetSubMenu(menu.get(), 1), 1);
    EXPECT_EQ(CZuUiMenu::GetMenuItemID(more, 0), 31u);
    EXPECT_EQ(CZuUiMenu::GetMenuItemID(more, 1), 30u);
}

TEST(Menu, EnableAndCheckReportThePreviousState)
{
    auto menu = sample();
    EXPECT_EQ(CZuUiMenu::EnableMenuItem(menu.get(), 20, CZuUiMenu::Grayed), 0);
    EXPECT_EQ(CZuUiMenu::GetMenuState(menu.get(), 20, CZuUiMenu::ByCommand),
              int(CZuUiMenu::Grayed));
    EXPECT_FALSE(CZuUiMenu::FindItem(menu.get(), 20, CZuUiMenu::ByCommand)->isEnabled());
    EXPECT_EQ(CZuUiMenu::EnableMenuItem(menu.get(), 20, CZuUiMenu::Enabled | 0x4),
              int(CZuUiMenu::Grayed));
    EXPECT_TRUE(CZuUiMenu::FindItem(menu.get(), 20, CZuUiMenu::ByCommand)->isEnabled());
    EXPECT_EQ(CZuUiMenu::EnableMenuItem(menu.get(), 77, CZuUiMenu::Grayed), -1);

    EXPECT_EQ(CZuUiMenu::CheckMenuItem(menu.get(), 11, CZuUiMenu::Checked), 0);
    EXPECT_EQ(CZuUiMenu::CheckMenuItem(menu.get(), 11, CZuUiMenu::ByCommand),
              int(CZuUiMenu::Checked));
    EXPECT_EQ(CZuUiMenu::GetMenuState(menu.get(), 11, CZuUiMenu::ByCommand), 0);
    // Sub-menu entries carry check marks too.
    EXPECT_EQ(CZuUiMenu::CheckMenuItem(menu.get(), 0, CZuUiMenu::ByPosition | CZuUiMenu::Checked),
              0);
    EXPECT_EQ(CZuUiMenu::GetMenuState(menu.get(), 0, CZuUiMenu::ByPosition),
              int(CZuUiMenu::Popup | CZuUiMenu::Checked));
}

TEST(Menu, AppendAndModifyKeepIdsAndFlags)
{
    auto menu = CZuUiMenu::CreatePopupMenu();
    EXPECT_TRUE(CZuUiMenu::AppendMenu(menu.get(), CZuUiMenu::Checked | CZuUiMenu::Grayed, 5,
                                      QStringLiteral("Five")));
    EXPECT_TRUE(CZuUiMenu::AppendMenu(menu.get(), CZuUiMenu::Separator, 0, {}));
    EXPECT_FALSE(
        CZuUiMenu::AppendMenu(menu.get(), CZuUiMenu::Popup, 0, QStringLiteral("None"), nullptr));
    EXPECT_TRUE(CZuUiMenu::AppendMenu(menu.get(), CZuUiMenu::Popup, 0, QStringLiteral("Sub"),
                                      CZuUiMenu::CreatePopupMenu().release()));
    EXPECT_EQ(CZuUiMenu::GetMenuItemCount(menu.get()), 3);
    EXPECT_EQ(CZuUiMenu::GetMenuState(menu.get(), 5, CZuUiMenu::ByCommand),
              int(CZuUiMenu::Checked | CZuUiMenu::Grayed));
    EXPECT_TRUE(
        CZuUiMenu::ModifyMenu(menu.get(), 0, CZuUiMenu::ByPosition, 0, QStringLiteral("Renamed")));
    EXPECT_EQ(CZuUiMenu::GetMenuItemID(menu.get(), 0), 0u);
    EXPECT_EQ(CZuUiMenu::GetMenuString(menu.get(), 0, CZuUiMenu::ByPosition),
              QStringLiteral("Renamed"));
    EXPECT_EQ(CZuUiMenu::GetMenuState(menu.get(), 0, CZuUiMenu::ByPosition), 0);
}

TEST(Menu, TrackingGoesThroughTheReplaceableHandler)
{
    auto menu = sample();
    MenuTracker tracker;
    tracker.ChooseCommand(11);
    EXPECT_EQ(CZuUiMenu::TrackPopupMenu(CZuUiMenu::GetSubMenu(menu.get(), 0),
                                        CZuUiMenu::TrackReturnCmd, QPoint(5, 6), nullptr),
              11u);
    ASSERT_EQ(tracker.Count(), 1);
    EXPECT_EQ(tracker.ShownMenus()[0].entries,
              (QStringList{QStringLiteral("Open"), QStringLiteral("-"), QStringLiteral("Close")}));
    EXPECT_EQ(tracker.ShownMenus()[0].point, QPoint(5, 6));
    // An empty menu is never shown.
    auto empty = CZuUiMenu::CreatePopupMenu();
    EXPECT_EQ(CZuUiMenu::TrackPopupMenu(empty.get(), 0, QPoint(), nullptr), 0u);
    EXPECT_EQ(tracker.Count(), 1);
}

} // namespace
