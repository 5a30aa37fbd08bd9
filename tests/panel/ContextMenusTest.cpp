// The menus: appending entries by command value, the tool-tip menu's structure and check marks
// after every style command, when it opens, and the views' context menus filled by the host.

#include "PanelFixture.h"

#include "support/ModalStandIns.h"

#include "framework/ZuUiCommandEvent.h"
#include "framework/ZuUiMenu.h"
#include "resources/TroveResources.h"
#include "services/XrefMessageBox.h"
#include "views/XrefPropListCtrl.h"

#include <QAbstractScrollArea>
#include <QAction>
#include <QCoreApplication>
#include <QDomDocument>
#include <QHeaderView>
#include <QMenu>
#include <QTest>

#include <array>

using testing::_;
using testing::Invoke;

namespace {

bool checked(const QMenu* menu, unsigned item, unsigned by = CZuUiMenu::ByCommand)
{
    const int state = CZuUiMenu::GetMenuState(menu, item, by);
    return state >= 0 && (state & CZuUiMenu::Checked);
}

bool greyed(const QMenu* menu, unsigned item, unsigned by = CZuUiMenu::ByCommand)
{
    const int state = CZuUiMenu::GetMenuState(menu, item, by);
    return state >= 0 && (state & CZuUiMenu::Grayed);
}

// --- Appending by command value ------------------------------------------------------------------

TEST(InsertMenuW, separatorWhateverTheFlags)
{
    QMenu menu;
    EXPECT_TRUE(CXrefPanelCtrl::InsertMenuW(menu, Trove::Separator,
                                            CZuUiMenu::Checked | CZuUiMenu::Grayed, nullptr));
    ASSERT_EQ(menu.actions().size(), 1);
    EXPECT_TRUE(menu.actions().at(0)->isSeparator());
}

TEST(InsertMenuW, onlyTheHostSubMenuTitlesArePopups)
{
    QMenu menu;
    for (Trove::MenuItems title : {Trove::HostSubMenu1, Trove::HostSubMenu42, Trove::HostSubMenu45})
        EXPECT_FALSE(CXrefPanelCtrl::InsertMenuW(menu, title, 0, nullptr)) << title;
    EXPECT_EQ(menu.actions().size(), 0) << "a title without its sub-menu adds nothing";

    auto* sub = new QMenu;
    QPointer<QMenu> watch(sub);
    ASSERT_TRUE(CXrefPanelCtrl::InsertMenuW(menu, Trove::HostSubMenu42, CZuUiMenu::Grayed, sub));
    EXPECT_EQ(CZuUiMenu::GetSubMenu(&menu, 0), sub);
    EXPECT_EQ(CZuUiMenu::GetMenuString(&menu, 0, CZuUiMenu::ByPosition), TroveUI::ResString(1171));
    EXPECT_EQ(CZuUiMenu::GetMenuState(&menu, 0, CZuUiMenu::ByPosition),
              int(CZuUiMenu::Popup | CZuUiMenu::Grayed));

    // The tool-tip menu's own titles are plain commands here, and a popup flag makes no popup.
    auto* ignored = new QMenu(&menu);
    for (Trove::MenuItems item : {Trove::Tooltips, Trove::TooltipPreview, Trove::Refresh})
        ASSERT_TRUE(CXrefPanelCtrl::InsertMenuW(menu, item, CZuUiMenu::Popup, ignored)) << item;
    EXPECT_EQ(CZuUiMenu::GetMenuItemID(&menu, 1), unsigned(Trove::Tooltips));
    EXPECT_EQ(CZuUiMenu::GetMenuItemID(&menu, 2), unsigned(Trove::TooltipPreview));
    EXPECT_EQ(CZuUiMenu::GetMenuItemID(&menu, 3), unsigned(Trove::Refresh));
    EXPECT_EQ(CZuUiMenu::GetMenuString(&menu, 3, CZuUiMenu::ByPosition), TroveUI::ResString(1021));
    EXPECT_EQ(CZuUiMenu::GetSubMenu(&menu, 3), nullptr);
}

TEST(InsertMenuW, commandsKeepTheirFlags)
{
    QMenu menu;
    ASSERT_TRUE(CXrefPanelCtrl::InsertMenuW(menu, Trove::HostCommand43,
                                            CZuUiMenu::Checked | CZuUiMenu::Grayed, nullptr));
    ASSERT_TRUE(CXrefPanelCtrl::InsertMenuW(menu, Trove::AttachFromTrove, 0, nullptr));
    EXPECT_TRUE(checked(&menu, Trove::HostCommand43));
    EXPECT_TRUE(greyed(&menu, Trove::HostCommand43));
    EXPECT_EQ(CZuUiMenu::GetMenuString(&menu, Trove::HostCommand43, CZuUiMenu::ByCommand),
              TroveUI::ResString(1172));
    EXPECT_EQ(CZuUiMenu::GetMenuItemID(&menu, 1), unsigned(Trove::AttachFromTrove));
    EXPECT_TRUE(CZuUiMenu::GetMenuString(&menu, 1, CZuUiMenu::ByPosition).isEmpty())
        << "a value without text";
}

TEST(ModifyMenuString, relabelsWithCommandZero)
{
    QMenu menu;
    CXrefPanelCtrl::InsertMenuW(menu, Trove::Refresh, 0, nullptr);
    CXrefPanelCtrl::InsertMenuW(menu, Trove::Attach, 0, nullptr);
    ASSERT_TRUE(
        CXrefPanelCtrl::ModifyMenuString(menu, 1, CZuUiMenu::ByPosition, Trove::HostCommand46));
    EXPECT_EQ(CZuUiMenu::GetMenuItemID(&menu, 1), 0u);
    EXPECT_EQ(CZuUiMenu::GetMenuString(&menu, 1, CZuUiMenu::ByPosition), TroveUI::ResString(1183));
    EXPECT_TRUE(CXrefPanelCtrl::ModifyMenuString(menu, Trove::Refresh, CZuUiMenu::ByCommand,
                                                 Trove::Tooltips));
    EXPECT_EQ(CZuUiMenu::GetMenuString(&menu, 0, CZuUiMenu::ByPosition), TroveUI::ResString(1160));
    EXPECT_FALSE(CXrefPanelCtrl::ModifyMenuString(menu, 9, CZuUiMenu::ByPosition, Trove::Attach));
}

// A fresh process, so that nothing else has loaded the texts before: the first menu call does.
TEST(MenuTextsDeathTest, firstMenuCallLoadsTheTextsWithoutAPanel)
{
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    const auto loadsOnFirstUse = [](bool modify) {
        if (!CXrefPanelCtrl::m_MenuItemstrings.empty())
            std::exit(2);
        QMenu menu;
        if (modify) {
            menu.addAction(QStringLiteral("x"));
            CXrefPanelCtrl::ModifyMenuString(menu, 0, CZuUiMenu::ByPosition, Trove::Attach);
        } else {
            CXrefPanelCtrl::InsertMenuW(menu, Trove::Separator, 0, nullptr);
        }
        std::exit(CXrefPanelCtrl::m_MenuItemstrings.size() == 44 ? 0 : 1);
    };
    EXPECT_EXIT(loadsOnFirstUse(false), testing::ExitedWithCode(0), "");
    EXPECT_EXIT(loadsOnFirstUse(true), testing::ExitedWithCode(0), "");
}

// --- The tool-tip menu ---------------------------------------------------------------------------

class ToolTipMenuTest : public PanelFixture
{
protected:
    void SetUp() override { panel = Make(300, 500); }

    QMenu* Root() const { return panel->GetToolTipMenu(); }
    QMenu* Style() const { return CZuUiMenu::GetSubMenu(Root(), 0); }

    // The ten marks of the style menu: classic, the preview sub-menu, details, the
    // preview-and-details sub-menu, then the sizes 31 to 33 and 36 to 38.
    std::array<bool, 10> Marks() const
    {
        return {checked(Style(), Trove::TooltipClassic),
                checked(Style(), 1, CZuUiMenu::ByPosition),
                checked(Style(), Trove::TooltipDetails),
                checked(Style(), 3, CZuUiMenu::ByPosition),
                checked(Style(), Trove::PreviewSmall),
                checked(Style(), Trove::PreviewMedium),
                checked(Style(), Trove::PreviewLarge),
                checked(Style(), Trove::PreviewDetailsSmall),
                checked(Style(), Trove::PreviewDetailsMedium),
                checked(Style(), Trove::PreviewDetailsLarge)};
    }

    std::unique_ptr<TestPanel> panel;
    ScopedSystemVariable toolTips{QStringLiteral("TOOLTIPS"), 1};
};

TEST_F(ToolTipMenuTest, hasItsEntriesAndTexts)
{
    ASSERT_NE(Root(), nullptr);
    ASSERT_EQ(CZuUiMenu::GetMenuItemCount(Root()), 3);
    EXPECT_EQ(CZuUiMenu::GetMenuString(Root(), 0, CZuUiMenu::ByPosition), TroveUI::ResString(1160));
    EXPECT_EQ(CZuUiMenu::GetMenuItemID(Root(), 1), unsigned(Trove::PreviewDetailsPane));
    EXPECT_EQ(CZuUiMenu::GetMenuItemID(Root(), 2), unsigned(Trove::TooltipClose));
    EXPECT_EQ(CZuUiMenu::GetMenuString(Root(), 2, CZuUiMenu::ByPosition), TroveUI::ResString(1079))
        << "the close entry has its own text";
    EXPECT_TRUE(checked(Root(), Trove::PreviewDetailsPane));

    ASSERT_EQ(CZuUiMenu::GetMenuItemCount(Style()), 4);
    EXPECT_EQ(CZuUiMenu::GetMenuItemID(Style(), 0), unsigned(Trove::TooltipClassic));
    EXPECT_EQ(CZuUiMenu::GetMenuString(Style(), 1, CZuUiMenu::ByPosition),
              TroveUI::ResString(1153));
    EXPECT_EQ(CZuUiMenu::GetMenuItemID(Style(), 2), unsigned(Trove::TooltipDetails));
    EXPECT_EQ(CZuUiMenu::GetMenuString(Style(), 3, CZuUiMenu::ByPosition),
              TroveUI::ResString(1155));
    const QMenu* previewSizes = CZuUiMenu::GetSubMenu(Style(), 1);
    const QMenu* previewDetailsSizes = CZuUiMenu::GetSubMenu(Style(), 3);
    ASSERT_TRUE(previewSizes && previewDetailsSizes);
    EXPECT_EQ(CZuUiMenu::GetMenuString(previewDetailsSizes, 1, CZuUiMenu::ByPosition),
              TroveUI::ResString(1162));
    for (int i = 0; i < 3; ++i) {
        EXPECT_EQ(CZuUiMenu::GetMenuItemID(previewSizes, i), unsigned(Trove::PreviewSmall + i));
        EXPECT_EQ(CZuUiMenu::GetMenuItemID(previewDetailsSizes, i),
                  unsigned(Trove::PreviewDetailsSmall + i));
    }
    // Preview and details, medium: the choices a new panel starts with.
    EXPECT_EQ(Marks(), (std::array<bool, 10>{0, 0, 0, 1, 0, 0, 0, 0, 1, 0}));
}

struct StyleCommand
{
    const char* name;
    void (CXrefPanelCtrl::*command)();
    int style;
    int size; // -1: the size stays
    std::array<bool, 10> marks;
};

const StyleCommand kStyleCommands[] = {
    {"classic", &CXrefPanelCtrl::OnClassic, 0, -1, {1, 0, 0, 0, 0, 0, 0, 0, 0, 0}},
    {"previewSmall", &CXrefPanelCtrl::OnPreviewSmall, 1, 0, {0, 1, 0, 0, 1, 0, 0, 0, 0, 0}},
    {"previewMedium", &CXrefPanelCtrl::OnPreviewMedium, 1, 1, {0, 1, 0, 0, 0, 1, 0, 0, 0, 0}},
    {"previewLarge", &CXrefPanelCtrl::OnPreviewLarge, 1, 2, {0, 1, 0, 0, 0, 0, 1, 0, 0, 0}},
    {"details", &CXrefPanelCtrl::OnDetails, 2, -1, {0, 0, 1, 0, 0, 0, 0, 0, 0, 0}},
    {"previewDetailsSmall",
     &CXrefPanelCtrl::OnPreviewDetailsSmall,
     3,
     0,
     {0, 0, 0, 1, 0, 0, 0, 1, 0, 0}},
    {"previewDetailsMedium",
     &CXrefPanelCtrl::OnPreviewDetailsMedium,
     3,
     1,
     {0, 0, 0, 1, 0, 0, 0, 0, 1, 0}},
    {"previewDetailsLarge",
     &CXrefPanelCtrl::OnPreviewDetailsLarge,
     3,
     2,
     {0, 0, 0, 1, 0, 0, 0, 0, 0, 1}},
};

TEST_F(ToolTipMenuTest, everyStyleCommandLeavesOneStyleMarkedFromAnyPreviousChoice)
{
    for (const StyleCommand& before : kStyleCommands) {
        for (const StyleCommand& command : kStyleCommands) {
            (panel.get()->*before.command)();
            const int sizeBefore = panel->GetToolTipMenuSettings().previewSize;
            (panel.get()->*command.command)();
            EXPECT_EQ(Marks(), command.marks) << before.name << " then " << command.name;
            EXPECT_EQ(panel->GetToolTipMenuSettings().style, command.style) << command.name;
            EXPECT_EQ(panel->GetToolTipMenuSettings().previewSize,
                      command.size < 0 ? sizeBefore : command.size)
                << before.name << " then " << command.name;
        }
    }
}

TEST_F(ToolTipMenuTest, unknownStyleOrSizeLeavesTheirMarks)
{
    panel->OnPreviewSmall();
    QDomDocument profile;
    profile.setContent(QStringLiteral(
        "<Palette><TooltipSettings TooltipStyle=\"1\" TooltipSize=\"5\" ShowDetail=\"1\"/>"
        "</Palette>"));
    ASSERT_TRUE(panel->LoadTooltipSettings(profile.documentElement()));
    EXPECT_EQ(Marks(), (std::array<bool, 10>{0, 1, 0, 0, 1, 0, 0, 0, 0, 0}))
        << "size 5 keeps the small mark";

    profile.setContent(QStringLiteral(
        "<Palette><TooltipSettings TooltipStyle=\"7\" TooltipSize=\"1\" ShowDetail=\"0\"/>"
        "</Palette>"));
    ASSERT_TRUE(panel->LoadTooltipSettings(profile.documentElement()));
    EXPECT_EQ(panel->GetToolTipMenuSettings().style, 7) << "kept as the profile says";
    EXPECT_EQ(Marks(), (std::array<bool, 10>{0, 1, 0, 0, 1, 0, 0, 0, 0, 0}));
    EXPECT_FALSE(checked(Root(), Trove::PreviewDetailsPane)) << "the pane mark still follows";
}

TEST_F(ToolTipMenuTest, opensWithTheStyleEntryGreyedUnlessToolTipsAreOn)
{
    MenuTracker tracker;
    tracker.Choose([](QMenu& menu) {
        EXPECT_FALSE(greyed(&menu, 0, CZuUiMenu::ByPosition));
        return 0u;
    });
    panel->ShowContextMenu(QPoint(40, 50));
    ASSERT_EQ(tracker.Count(), 1);
    EXPECT_EQ(tracker.ShownMenus()[0].point, QPoint(40, 50));
    EXPECT_EQ(tracker.ShownMenus()[0].owner, panel.get());
    EXPECT_EQ(tracker.ShownMenus()[0].flags, unsigned(CZuUiMenu::TrackRightButton));

    for (std::optional<QVariant> value :
         {std::optional<QVariant>(0), std::optional<QVariant>(QStringLiteral("1")),
          std::optional<QVariant>()}) {
        ScopedSystemVariable off(QStringLiteral("TOOLTIPS"), value);
        tracker.Choose([](QMenu& menu) {
            EXPECT_TRUE(greyed(&menu, 0, CZuUiMenu::ByPosition));
            return 0u;
        });
        panel->ShowContextMenu(QPoint());
    }
    EXPECT_EQ(tracker.Count(), 4);
}

TEST_F(ToolTipMenuTest, chosenCommandsRun)
{
    MenuTracker tracker;
    tracker.ChooseCommand(Trove::PreviewLarge);
    panel->ShowContextMenu(QPoint());
    EXPECT_EQ(panel->GetToolTipMenuSettings().style, 1);
    EXPECT_EQ(panel->GetToolTipMenuSettings().previewSize, 2);

    tracker.ChooseCommand(Trove::PreviewDetailsPane);
    panel->ShowContextMenu(QPoint());
    EXPECT_FALSE(panel->IsLowerPaneShown());
    EXPECT_FALSE(checked(Root(), Trove::PreviewDetailsPane));

    std::vector<CXrefPanelCtrlItem*> seen{reinterpret_cast<CXrefPanelCtrlItem*>(1)};
    EXPECT_CALL(*panel, OnMenuSelection(Trove::TooltipClose, _))
        .WillOnce([&seen](Trove::MenuItems, const std::vector<CXrefPanelCtrlItem*>& items) {
            seen = items;
        });
    tracker.ChooseCommand(Trove::TooltipClose);
    panel->ShowContextMenu(QPoint());
    EXPECT_TRUE(seen.empty()) << "the current selection, which is empty";

    tracker.ChooseCommand(Trove::Refresh);
    panel->ShowContextMenu(QPoint()); // not one of this menu's: nothing happens
    EXPECT_EQ(panel->GetToolTipMenuSettings().style, 1);
}

TEST_F(ToolTipMenuTest, hostMenuGetsItsOwnCopyOfTheStyleEntries)
{
    panel->OnDetails();
    {
        QMenu host;
        host.addAction(QStringLiteral("Host"));
        panel->AppendToolTipContextMenu(host);
        ASSERT_EQ(CZuUiMenu::GetMenuItemCount(&host), 3);
        const QMenu* style = CZuUiMenu::GetSubMenu(&host, 1);
        ASSERT_NE(style, nullptr);
        EXPECT_NE(style, Style());
        EXPECT_EQ(CZuUiMenu::GetMenuString(&host, 1, CZuUiMenu::ByPosition),
                  TroveUI::ResString(1160));
        EXPECT_FALSE(greyed(&host, 1, CZuUiMenu::ByPosition));
        EXPECT_TRUE(checked(style, Trove::TooltipDetails));
        EXPECT_FALSE(checked(style, 3, CZuUiMenu::ByPosition));
        EXPECT_EQ(CZuUiMenu::GetMenuItemID(&host, 2), unsigned(Trove::PreviewDetailsPane));
        EXPECT_TRUE(checked(&host, Trove::PreviewDetailsPane));
    }
    // The host's menu is gone with its copy; the panel's own menu still works.
    ASSERT_EQ(CZuUiMenu::GetMenuItemCount(Style()), 4);
    EXPECT_TRUE(checked(Style(), Trove::TooltipDetails));

    ScopedSystemVariable off(QStringLiteral("TOOLTIPS"), 0);
    panel->OnPreviewDetailsPane();
    QMenu host;
    panel->AppendToolTipContextMenu(host);
    EXPECT_TRUE(greyed(&host, 0, CZuUiMenu::ByPosition));
    EXPECT_FALSE(checked(&host, Trove::PreviewDetailsPane));
}

TEST_F(ToolTipMenuTest, enableMenuItemReachesTheToolBarTable)
{
    auto toolBar = std::make_shared<CXrefToolBar>();
    auto withToolBar = Make(300, 500, false, toolBar);
    // The tool bar's own menu knows the command by its button command id, 1176.
    withToolBar->EnableMenuItem(Trove::RemovePath, CZuUiMenu::Grayed);
    toolBar->OnUpdateCmdUI();
    EXPECT_TRUE(greyed(toolBar->Menu(), 1176));
    withToolBar->EnableMenuItem(Trove::RemovePath, CZuUiMenu::Enabled);
    toolBar->OnUpdateCmdUI();
    EXPECT_FALSE(greyed(toolBar->Menu(), 1176));
}

// --- Where a right click opens what
// ---------------------------------------------------------------

TEST_F(ToolTipMenuTest, rightReleaseOutsideTheViewsOpensTheToolTipMenu)
{
    panel->show();
    MenuTracker tracker;
    const auto rightClick = [](QWidget* widget, QPoint at) {
        QTest::mouseClick(widget, Qt::RightButton, {}, at);
    };
    const QPoint corner(4, 4);

    rightClick(panel->GetListCtrl()->viewport(), corner);
    rightClick(panel->GetListCtrl()->header(), corner);
    panel->SetReferenceViewType(CXrefPanelCtrl::FileReferenceViewType::TreeView);
    rightClick(panel->GetTreeCtrl()->viewport(), corner);
    QTest::mouseClick(panel->GetMessageBox().get(), Qt::LeftButton);
    EXPECT_EQ(tracker.Count(), 0) << "the views open menus of their own";

    rightClick(panel->GetMessageBox().get(), corner);
    ASSERT_EQ(tracker.Count(), 1) << "once, although the click travels up to the panel";
    EXPECT_EQ(tracker.ShownMenus()[0].owner, panel.get());
    EXPECT_EQ(tracker.ShownMenus()[0].point, panel->GetMessageBox()->mapToGlobal(QPoint(4, 4)));

    // The group header is not inside a view, nor is the details page.
    rightClick(panel->GetUpperGroupCtrl(), panel->GetUpperGroupCtrl()->HeaderRect().center());
    rightClick(panel->GetDetailsCtrl()->viewport(), corner);
    EXPECT_EQ(tracker.Count(), 3);
}

// --- The views' context menus
// ---------------------------------------------------------------------

// Collects the commands that come back to the view that asked for its menu.
class CommandSink : public QWidget
{
public:
    std::vector<unsigned> commands;

protected:
    bool event(QEvent* event) override
    {
        if (event->type() == CZuUiCommandEvent::EventType()) {
            commands.push_back(static_cast<CZuUiCommandEvent*>(event)->CommandId());
            return true;
        }
        return QWidget::event(event);
    }
};

TEST_F(ToolTipMenuTest, emptyHostMenuIsNeverShown)
{
    MenuTracker tracker;
    CommandSink view;
    std::vector<CXrefPanelCtrlItem*> items;
    EXPECT_CALL(*panel, FillContextMenu(_, _, true));
    panel->OnContextMenu_(view, QPoint(3, 3), items, true);
    EXPECT_EQ(tracker.Count(), 0);
}

TEST_F(ToolTipMenuTest, hostFilledMenuSendsTheChoiceBackToTheViewAfterItCloses)
{
    MenuTracker tracker;
    tracker.ChooseCommand(Trove::HostCommand9);
    CommandSink view;
    view.move(100, 200);
    const std::vector<CXrefPanelCtrlItem*> items{reinterpret_cast<CXrefPanelCtrlItem*>(16)};
    EXPECT_CALL(*panel, FillContextMenu(_, items, false))
        .WillOnce([](QMenu& menu, const std::vector<CXrefPanelCtrlItem*>&, bool) {
            CXrefPanelCtrl::InsertMenuW(menu, Trove::HostCommand9, 0, nullptr);
            CXrefPanelCtrl::InsertMenuW(menu, Trove::Separator, 0, nullptr);
        });
    panel->OnContextMenu_(view, QPoint(5, 6), items, false);
    ASSERT_EQ(tracker.Count(), 1);
    const MenuTracker::Shown& shown = tracker.ShownMenus()[0];
    EXPECT_EQ(shown.owner, &view);
    EXPECT_EQ(shown.flags, 0u);
    EXPECT_EQ(shown.point, view.mapToGlobal(QPoint(5, 6)));
    EXPECT_EQ(shown.ids, (QList<unsigned>{Trove::HostCommand9, 0}));
    EXPECT_TRUE(view.commands.empty()) << "not while the view is still inside its own event";
    QCoreApplication::sendPostedEvents(&view);
    EXPECT_EQ(view.commands, std::vector<unsigned>{Trove::HostCommand9});

    // A dismissed menu sends nothing.
    tracker.Dismiss();
    EXPECT_CALL(*panel, FillContextMenu(_, _, _))
        .WillOnce([](QMenu& menu, const std::vector<CXrefPanelCtrlItem*>&, bool) {
            CXrefPanelCtrl::InsertMenuW(menu, Trove::HostCommand3, 0, nullptr);
        });
    panel->OnContextMenu_(view, QPoint(), items, false);
    QCoreApplication::sendPostedEvents(&view);
    EXPECT_EQ(view.commands.size(), 1u);
}

// --- Tool bar events ----------------------------------------------------------------------------

TEST_F(ToolTipMenuTest, toolBarEventsReachTheHostOnceAndStopWithThePanel)
{
    auto toolBar = std::make_shared<CXrefToolBar>();
    auto withToolBar = Make(300, 500, false, toolBar);
    EXPECT_CALL(*withToolBar, OnMenuSelection(Trove::Refresh, _)).Times(1);
    EXPECT_CALL(*withToolBar, OnDisplayHelp()).Times(1);
    emit toolBar->MenuSelection(Trove::Refresh, {});
    emit toolBar->DisplayHelp();
    testing::Mock::VerifyAndClearExpectations(withToolBar.get());

    withToolBar.reset();
    emit toolBar->MenuSelection(Trove::Refresh, {});
    emit toolBar->DisplayHelp();
}

} // namespace
