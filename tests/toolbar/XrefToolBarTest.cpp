// The reference tool bar: what creation builds from the menu resource and the flags, how the
// split buttons turn presses and menu choices into commands, the remembered menu states, the
// events, the keyboard, and creation failing cleanly on bad menu resources.

#include "ToolBarFixture.h"

#include "support/NullXrefPanel.h"
#include "support/ScopedOverrides.h"
#include "support/ScopedResourceModule.h"

#include "framework/ControlId.h"
#include "framework/ZuUiMenu.h"
#include "items/XrefPanelCtrlItem.h"
#include "panel/XrefPanelCtrl.h"
#include "resources/TemporaryResourceOverride.h"
#include "resources/TroveResources.h"
#include "services/XrefMessageBox.h"

#include <QMenu>

#include <array>
#include <map>
#include <string>

namespace {

QList<unsigned> menuIds(const QMenu* menu)
{
    QList<unsigned> ids;
    for (int position = 0; position < CZuUiMenu::GetMenuItemCount(menu); ++position)
        ids << CZuUiMenu::GetMenuItemID(menu, position);
    return ids;
}

QMenu* dropDown(const CXrefToolBar* bar, int index)
{
    return CZuUiMenu::GetSubMenu(bar->Menu(), index);
}

int state(const CXrefToolBar* bar, unsigned id)
{
    return CZuUiMenu::GetMenuState(bar->Menu(), id, CZuUiMenu::ByCommand);
}

// A menu resource with the given attach drop-down and the usual refresh and path drop-downs.
QByteArray menuWithAttach(const char* attachItems)
{
    return QByteArray(R"({"items": [
        {"text": "Refresh", "items": [{"id": 1081}, {"id": 1082}]},
        {"text": "Attach", "items": )") +
           attachItems + R"(},
        {"text": "Path", "items": [{"id": 1176}, {"id": 1177}, {"id": 1178}, {"separator": true},
                                   {"id": 1180}, {"id": 1181}]}]})";
}

} // namespace

// ---------------------------------------------------------------------------------------------
// Creation

TEST_F(ToolBarFixture, buildsFourButtonsWithTheirIdsTextsAndToolTips)
{
    ScopedDpiScale scale(1.0);
    CXrefToolBar* b = Make<CXrefToolBar>();
    ASSERT_TRUE(b);
    EXPECT_TRUE(b->IsCreated());
    EXPECT_EQ(b->parentWidget(), &host);

    struct Expected
    {
        int id;
        CZuUiBitmapButton* button;
        const char* windowText;
        const char* label;
        unsigned toolTip;
    };
    const Expected expected[] = {
        {30203, b->RefreshButton(), "REFRESH_BTN|Refresh", "Refresh", 1036},
        {30204, b->AttachButton(), "ATTACHDWG_BTN|Attach", "Attach", 1076},
        {30205, b->ChangePathButton(), "CHANGE_PATH_BTN|Path", "Path", 1175},
        {30206, b->HelpButton(), "RMX_HELP_BTN|Help", "Help", 1058},
    };
    for (const Expected& e : expected) {
        SCOPED_TRACE(e.windowText);
        ASSERT_TRUE(e.button);
        EXPECT_EQ(ControlId::FindChild(b, e.id), e.button);
        EXPECT_EQ(e.button->GetWindowText(), QString::fromLatin1(e.windowText));
        EXPECT_EQ(e.button->Label(), QString::fromLatin1(e.label));
        EXPECT_TRUE(e.button->HasBitmap());
        EXPECT_TRUE(e.button->isVisibleTo(b));
        EXPECT_EQ(e.button->focusPolicy(), Qt::TabFocus);
        EXPECT_EQ(b->ToolTip()->GetText(e.button), TroveUI::ResString(e.toolTip));
        EXPECT_FALSE(TroveUI::ResString(e.toolTip).isEmpty());
    }

    const CXrefBmpComboButton* splits[] = {b->RefreshButton(), b->AttachButton(),
                                           b->ChangePathButton()};
    for (int index = 0; index < 3; ++index) {
        EXPECT_EQ(splits[index]->DropDownMenu(), b->Menu());
        EXPECT_EQ(splits[index]->DropDownIndex(), index);
        EXPECT_EQ(splits[index]->IsMenuOnly(), index == 2);
        EXPECT_EQ(splits[index]->GetArrowWidth(), 15);
        EXPECT_EQ(splits[index]->SplitButtonCommand(), -1);
        EXPECT_EQ(splits[index]->PreviousCommand(), -1);
    }

    // Tab walks the buttons in the order they stand.
    EXPECT_EQ(b->AttachButton()->nextInFocusChain(), b->RefreshButton());
    EXPECT_EQ(b->RefreshButton()->nextInFocusChain(), b->ChangePathButton());
    EXPECT_EQ(b->ChangePathButton()->nextInFocusChain(), b->HelpButton());

    CZuToolTipCtrl* tip = b->ToolTip();
    EXPECT_TRUE(tip->IsActive());
    EXPECT_EQ(tip->GetDelayTime(CZuToolTipCtrl::Initial), 200);
    EXPECT_EQ(tip->GetDelayTime(CZuToolTipCtrl::ReShow), 200);
    EXPECT_EQ(tip->GetDelayTime(CZuToolTipCtrl::AutoPop), 32767);

    // A second creation is refused and changes nothing.
    QWidget other;
    EXPECT_FALSE(b->Create(&other));
    EXPECT_EQ(b->parentWidget(), &host);
}

namespace {

struct DefaultAttachCase
{
    const char* name;
    bool trove;
    const char* flags; // '1' keeps the command of that flag
    int defaultCommand;
    const char* bitmapKey;
};

class DefaultAttach : public ToolBarFixture, public testing::WithParamInterface<DefaultAttachCase>
{};

// The attach command of each construction flag, in flag order.
constexpr unsigned kFlagCommands[7] = {1083, 1107, 1084, 1087, 1088, 1090, 32784};

} // namespace

TEST_P(DefaultAttach, followsTheFlagsAndTheMenuOrder)
{
    const DefaultAttachCase& c = GetParam();
    bool f[7];
    for (int i = 0; i < 7; ++i)
        f[i] = c.flags[i] == '1';
    CXrefToolBar* b = c.trove ? Make<CTroveToolBar>(f[0], f[1], f[2], f[3], f[4], f[5], f[6])
                              : Make<CXrefToolBar>(f[0], f[1], f[2], f[3], f[4], f[5], f[6]);
    ASSERT_TRUE(b);
    EXPECT_EQ(b->DefaultAttachCommand(), c.defaultCommand);
    ASSERT_TRUE(b->AttachButton());
    EXPECT_EQ(b->AttachButton()->GetWindowText(), QString::fromLatin1(c.bitmapKey) + "|Attach");
    for (int i = 0; i < 7; ++i)
        EXPECT_EQ(state(b, kFlagCommands[i]) == -1, !f[i]) << kFlagCommands[i];
    // Never removed by a flag.
    EXPECT_NE(state(b, 1085), -1);
    EXPECT_EQ(state(b, 1086) != -1, c.trove);

    // The attach button starts with the default command.
    ClickMain(b->AttachButton());
    ASSERT_EQ(raised.size(), 1u);
    EXPECT_EQ(b->AttachButton()->SplitButtonCommand(), c.defaultCommand);
}

INSTANTIATE_TEST_SUITE_P(
    Flags, DefaultAttach,
    testing::Values(
        DefaultAttachCase{"allKept", false, "1111111", 1083, "ATTACHDWG_BTN"},
        DefaultAttachCase{"drawingOffShifts", false, "0111111", 1107, "ATTACHIMAGE_BTN"},
        DefaultAttachCase{"firstThreeOff", false, "0001111", 1087, "ATTACHDGN_BTN"},
        DefaultAttachCase{"modelOnly", false, "0000001", 32784, "ATTACHORBISKMODEL_BTN"},
        DefaultAttachCase{"allOff", false, "0000000", 1085, "ATTACH_BTN"},
        DefaultAttachCase{"repository", true, "1111111", 1086, "ATTACHTROVE_BTN"},
        DefaultAttachCase{"repositoryDrawingOff", true, "0111111", 1086, "ATTACHTROVE_BTN"},
        DefaultAttachCase{"repositoryAllOff", true, "0000000", 1086, "ATTACHTROVE_BTN"}),
    [](const testing::TestParamInfo<DefaultAttachCase>& info) { return info.param.name; });

TEST_F(ToolBarFixture, removalFindsCommandsAnywhereAndOnlyTheFirstThreeCount)
{
    ScopedResourceModule module;
    // 1083 first, then two separators: without it the first command is 1084 at position 2.
    module.Write(QStringLiteral("menus/2080.json"),
                 menuWithAttach(R"([{"id": 1083}, {"separator": true}, {"separator": true},
                                    {"id": 1084}, {"text": "More", "items": [{"id": 1083}]},
                                    {"id": 1085}])"));
    CXrefToolBar* b = Make<CXrefToolBar>(false, true, true, true, true, true, true);
    ASSERT_TRUE(b);
    EXPECT_EQ(state(b, 1083), -1); // also the one in the sub-menu
    EXPECT_EQ(menuIds(dropDown(b, 1)), (QList<unsigned>{0, 0, 1084, CZuUiMenu::kPopupId, 1085}));
    EXPECT_EQ(b->DefaultAttachCommand(), 1084);
    ASSERT_TRUE(b->AttachButton());
    EXPECT_EQ(b->AttachButton()->BitmapKey(), QStringLiteral("ATTACHDWF_BTN"));
}

TEST_F(ToolBarFixture, noAttachButtonWhenTheFirstThreeAttachEntriesHoldNoCommand)
{
    ScopedDpiScale scale(1.0);
    ScopedResourceModule module;
    module.Write(QStringLiteral("menus/2080.json"),
                 menuWithAttach(R"([{"separator": true}, {"text": "More", "items": [{"id": 1083}]},
                                    {"separator": true}, {"id": 1085}])"));
    CXrefToolBar* b = Make<CXrefToolBar>();
    ASSERT_TRUE(b);
    EXPECT_EQ(b->DefaultAttachCommand(), -1);
    EXPECT_EQ(b->AttachButton(), nullptr);
    EXPECT_EQ(ControlId::FindChild(b, 30204), nullptr);
    // The missing button takes no room.
    EXPECT_EQ(b->RefreshButton()->geometry(), QRect(0, 0, 39, 24));
    EXPECT_EQ(b->ChangePathButton()->geometry(), QRect(39, 0, 39, 24));
    EXPECT_EQ(b->HelpButton()->geometry(), QRect(78, 0, 24, 24));
    EXPECT_EQ(b->sizeHint(), QSize(102, 24));

    EXPECT_TRUE(b->OnCommand(30204));
    b->OnRmxAttachButtonClick();
    EXPECT_TRUE(raised.empty());
}

namespace {

struct SizeCase
{
    double xScale;
    double yScale;
    int split;
    int image;
};

class LayoutSizes : public ToolBarFixture, public testing::WithParamInterface<SizeCase>
{};

} // namespace

TEST_P(LayoutSizes, followTheHorizontalScaleRoundedHalfAwayFromZero)
{
    const SizeCase& c = GetParam();
    ScopedDpiScale scale(c.xScale, c.yScale);
    CXrefToolBar* b = Make<CXrefToolBar>();
    ASSERT_TRUE(b);
    EXPECT_EQ(b->AttachButton()->geometry(), QRect(0, 0, c.split, c.image));
    EXPECT_EQ(b->RefreshButton()->geometry(), QRect(c.split, 0, c.split, c.image));
    EXPECT_EQ(b->ChangePathButton()->geometry(), QRect(2 * c.split, 0, c.split, c.image));
    EXPECT_EQ(b->HelpButton()->geometry(), QRect(3 * c.split, 0, c.image, c.image));
    EXPECT_EQ(b->RefreshButton()->GetArrowWidth(), c.split - c.image);
    EXPECT_EQ(b->GetButtonSize(), QSize(c.split, c.image));
    EXPECT_EQ(b->sizeHint(), QSize(3 * c.split + c.image, c.image));
}

INSTANTIATE_TEST_SUITE_P(Scales, LayoutSizes,
                         testing::Values(SizeCase{1.0, 1.0, 39, 24}, SizeCase{1.25, 1.25, 49, 30},
                                         SizeCase{1.5, 1.5, 59, 36}, SizeCase{1.5, 1.0, 59, 36},
                                         SizeCase{1.0, 2.0, 39, 24}, SizeCase{1.75, 1.75, 68, 42},
                                         SizeCase{2.0, 2.0, 78, 48}));

namespace {

struct BadMenuCase
{
    const char* name;
    const char* json; // null: the module holds no menu at all
};

class BadMenu : public ToolBarFixture, public testing::WithParamInterface<BadMenuCase>
{};

} // namespace

TEST_P(BadMenu, failsCreationCleanly)
{
    const BadMenuCase& c = GetParam();
    {
        ScopedResourceModule module(c.json != nullptr);
        if (c.json)
            module.Write(QStringLiteral("menus/2080.json"), QByteArray(c.json));
        EXPECT_EQ(Make<CXrefToolBar>(), nullptr);
    }
    CXrefToolBar& b = *bar;
    EXPECT_FALSE(b.IsCreated());
    EXPECT_EQ(b.parentWidget(), nullptr);
    EXPECT_EQ(b.Menu(), nullptr);
    EXPECT_TRUE(b.findChildren<QWidget*>().isEmpty());
    EXPECT_EQ(b.RefreshButton(), nullptr);

    // Everything the panel may call on it still does nothing harmful.
    b.EnableMenuItem(Trove::RemovePath, 1);
    b.OnUpdateCmdUI();
    b.EnableRefresh(false);
    b.EnablePathOperations(false);
    b.OnRmxRefreshButtonClick();
    b.OnRmxAttachButtonClick();
    b.OnRmxChangePathButtonClick();
    EXPECT_TRUE(b.OnCommand(30203));
    EXPECT_TRUE(b.OnCommand(30205));
    EXPECT_TRUE(raised.empty());

    // With the right resources back, the same tool bar can be created.
    EXPECT_TRUE(b.Create(&host));
    EXPECT_TRUE(b.AttachButton());
}

INSTANTIATE_TEST_SUITE_P(
    Resources, BadMenu,
    testing::Values(BadMenuCase{"missing", nullptr}, BadMenuCase{"truncatedJson", R"({"items": [)"},
                    BadMenuCase{"notAMenu", "[1, 2, 3]"},
                    BadMenuCase{"twoDropDowns",
                                R"({"items": [{"text": "A", "items": [{"id": 1081}]},
                                                  {"text": "B", "items": [{"id": 1085}]}]})"},
                    BadMenuCase{"fourDropDowns",
                                R"({"items": [{"text": "A", "items": [{"id": 1081}]},
                                  {"text": "B", "items": [{"id": 1085}]},
                                  {"text": "C", "items": [{"id": 1176}]},
                                  {"text": "D", "items": [{"id": 1177}]}]})"},
                    BadMenuCase{"attachIsACommand",
                                R"({"items": [{"text": "A", "items": [{"id": 1081}]},
                                  {"id": 1085}, {"text": "C", "items": [{"id": 1176}]}]})"},
                    BadMenuCase{"defaultAttachWithoutPicture",
                                R"({"items": [{"text": "A", "items": [{"id": 1081}]},
                                  {"text": "B", "items": [{"id": 1176}, {"id": 1085}]},
                                  {"text": "C", "items": [{"id": 1176}]}]})"},
                    BadMenuCase{"defaultAttachUnknown",
                                R"({"items": [{"text": "A", "items": [{"id": 1081}]},
                                  {"text": "B", "items": [{"id": 5000}, {"id": 1085}]},
                                  {"text": "C", "items": [{"id": 1176}]}]})"}),
    [](const testing::TestParamInfo<BadMenuCase>& info) { return info.param.name; });

TEST_F(ToolBarFixture, refreshOrPathEntryThatIsNoDropDownLeavesThatButtonWithoutMenu)
{
    ScopedResourceModule module;
    module.Write(QStringLiteral("menus/2080.json"), QByteArray(R"({"items": [{"separator": true},
                                          {"text": "B", "items": [{"id": 1107}, {"id": 1085}]},
                                          {"id": 1176}]})"));
    CXrefToolBar* b = Make<CXrefToolBar>();
    ASSERT_TRUE(b);
    ASSERT_TRUE(b->RefreshButton());
    ASSERT_TRUE(b->ChangePathButton());
    EXPECT_EQ(b->DefaultAttachCommand(), 1107);

    menus.ChooseCommand(1082);
    ClickArrow(b->RefreshButton());
    ClickMain(b->ChangePathButton());
    EXPECT_EQ(menus.Count(), 0);
    EXPECT_EQ(b->RefreshButton()->SplitButtonCommand(), -1);
    ClickMain(b->RefreshButton());
    ClickMain(b->AttachButton());
    EXPECT_EQ(RaisedItems(), (std::vector<Trove::MenuItems>{Trove::Refresh, Trove::AttachImage}));
}

TEST(ToolBarConstants, areDefinedForHostsThatTakeTheirAddress)
{
    const unsigned* show = &CXrefToolBar::m_toolTipInitialShowDelayTime;
    const unsigned* reShow = &CXrefToolBar::m_toolTipInitialReShowDelayTime;
    const int* border = &CXrefToolBar::TB_IMAGE_BORDER;
    EXPECT_EQ(*show, 200u);
    EXPECT_EQ(*reShow, 200u);
    EXPECT_EQ(*border, 3);
}

TEST(ToolBarWithoutParent, cannotBeCreated)
{
    CXrefToolBar bar;
    EXPECT_FALSE(bar.Create(nullptr));
    EXPECT_FALSE(bar.IsCreated());
}

// ---------------------------------------------------------------------------------------------
// Split buttons

TEST_F(ToolBarFixture, refreshButtonRepeatsLastMenuChoice)
{
    CXrefToolBar* b = Make<CXrefToolBar>();
    ASSERT_TRUE(b);
    CXrefBmpComboButton* refresh = b->RefreshButton();

    ClickMain(refresh);
    EXPECT_EQ(RaisedItems(), (std::vector<Trove::MenuItems>{Trove::Refresh}));
    EXPECT_TRUE(raised.back().items.empty());
    EXPECT_EQ(refresh->SplitButtonCommand(), 1081);
    EXPECT_EQ(refresh->BitmapKey(), QStringLiteral("REFRESH_BTN"));
    EXPECT_EQ(menus.Count(), 0);

    // The choice runs only once the menu is gone.
    size_t raisedWhileOpen = 99;
    menus.Choose([&](QMenu&) {
        raisedWhileOpen = raised.size();
        return 1082u;
    });
    QTest::mouseClick(refresh, Qt::LeftButton, {}, QPoint(refresh->width() - 3, 5));
    EXPECT_EQ(raisedWhileOpen, 1u);
    EXPECT_EQ(raised.size(), 1u);
    QCoreApplication::processEvents();
    EXPECT_EQ(RaisedItems(),
              (std::vector<Trove::MenuItems>{Trove::Refresh, Trove::ReloadAllXRefs}));

    ASSERT_EQ(menus.Count(), 1);
    const MenuTracker::Shown& shown = menus.ShownMenus().back();
    EXPECT_EQ(shown.ids, (QList<unsigned>{1081, 1082}));
    EXPECT_EQ(shown.flags, 0x180u);
    EXPECT_EQ(shown.owner, refresh);
    EXPECT_EQ(shown.point, refresh->mapToGlobal(QPoint(0, refresh->height())));

    EXPECT_EQ(refresh->SplitButtonCommand(), 1082);
    EXPECT_EQ(refresh->PreviousCommand(), 1081);
    EXPECT_EQ(refresh->BitmapKey(), QStringLiteral("RELOAD_BTN"));
    EXPECT_EQ(b->ToolTip()->GetText(refresh), TroveUI::ResString(1037));

    ClickMain(refresh);
    EXPECT_EQ(raised.back().item, Trove::ReloadAllXRefs);
    EXPECT_EQ(menus.Count(), 1);
}

TEST_F(ToolBarFixture, dismissingTheMenuChangesNothingAndPostsNothing)
{
    CXrefToolBar* b = Make<CXrefToolBar>();
    ASSERT_TRUE(b);
    CXrefBmpComboButton* refresh = b->RefreshButton();
    ClickArrow(refresh);
    EXPECT_EQ(menus.Count(), 1);
    EXPECT_EQ(refresh->SplitButtonCommand(), -1);
    EXPECT_EQ(refresh->PreviousCommand(), -1);

    menus.ChooseCommand(1082);
    ClickArrow(refresh);
    menus.Dismiss();
    ClickArrow(refresh);
    EXPECT_EQ(refresh->SplitButtonCommand(), 1082);
    EXPECT_EQ(refresh->PreviousCommand(), -1);
    EXPECT_EQ(RaisedItems(), (std::vector<Trove::MenuItems>{Trove::ReloadAllXRefs}));
}

TEST_F(ToolBarFixture, choosingTheCurrentCommandAgainLeavesThePicture)
{
    CXrefToolBar* b = Make<CXrefToolBar>();
    ASSERT_TRUE(b);
    CXrefBmpComboButton* refresh = b->RefreshButton();
    menus.ChooseCommand(1082);
    ClickArrow(refresh);
    ASSERT_EQ(refresh->BitmapKey(), QStringLiteral("RELOAD_BTN"));
    {
        // A picture the tool bar would replace if it reloaded.
        CTemporaryResourceOverride resources;
        ASSERT_TRUE(refresh->LoadBitmap(QStringLiteral("ATTACH_BTN")));
    }
    ClickArrow(refresh);
    EXPECT_EQ(refresh->SplitButtonCommand(), 1082);
    EXPECT_EQ(refresh->PreviousCommand(), 1082);
    EXPECT_EQ(refresh->BitmapKey(), QStringLiteral("ATTACH_BTN"));
    EXPECT_EQ(RaisedItems(),
              (std::vector<Trove::MenuItems>{Trove::ReloadAllXRefs, Trove::ReloadAllXRefs}));
}

TEST_F(ToolBarFixture, attachButtonStartsWithTheDefaultAndFollowsTheChoice)
{
    CXrefToolBar* b = Make<CXrefToolBar>();
    ASSERT_TRUE(b);
    CXrefBmpComboButton* attach = b->AttachButton();
    ClickMain(attach);
    EXPECT_EQ(raised.back().item, Trove::AttachDWG);

    menus.ChooseCommand(32784);
    ClickArrow(attach);
    EXPECT_EQ(menus.ShownMenus().back().ids,
              (QList<unsigned>{1083, 1107, 1084, 1087, 1088, 1090, 32784, 0, 1085}));
    EXPECT_EQ(raised.back().item, Trove::AttachOrbiskModel);
    EXPECT_EQ(attach->BitmapKey(), QStringLiteral("ATTACHORBISKMODEL_BTN"));
    EXPECT_EQ(b->ToolTip()->GetText(attach), TroveUI::ResString(1019));

    ClickMain(attach);
    EXPECT_EQ(RaisedItems(),
              (std::vector<Trove::MenuItems>{Trove::AttachDWG, Trove::AttachOrbiskModel,
                                             Trove::AttachOrbiskModel}));
    for (const Raised& r : raised)
        EXPECT_TRUE(r.items.empty());
}

TEST_F(ToolBarFixture, changePathButtonOnlyOpensItsMenu)
{
    CXrefToolBar* b = Make<CXrefToolBar>();
    ASSERT_TRUE(b);
    CXrefBmpComboButton* path = b->ChangePathButton();
    ClickMain(path);
    ClickArrow(path);
    EXPECT_EQ(menus.Count(), 2);
    EXPECT_EQ(menus.ShownMenus().back().ids, (QList<unsigned>{1176, 1177, 1178, 0, 1180, 1181}));
    EXPECT_TRUE(raised.empty());

    menus.ChooseCommand(1180);
    ClickMain(path);
    EXPECT_EQ(RaisedItems(), (std::vector<Trove::MenuItems>{Trove::SelectNewPath}));
    EXPECT_TRUE(raised.back().items.empty()); // no panel: the empty list
    EXPECT_EQ(path->SplitButtonCommand(), 1180);
    EXPECT_EQ(path->BitmapKey(), QStringLiteral("CHANGE_PATH_BTN"));

    // Its main part never repeats the last choice by itself.
    menus.Dismiss();
    ClickMain(path);
    EXPECT_EQ(raised.size(), 1u);
    // The command the button posts does.
    EXPECT_TRUE(b->OnCommand(30205));
    EXPECT_EQ(RaisedItems(),
              (std::vector<Trove::MenuItems>{Trove::SelectNewPath, Trove::SelectNewPath}));
}

TEST_F(ToolBarFixture, commandIdsRaiseTheirValuesWithTheEmptyListWithoutPanel)
{
    CXrefToolBar* b = Make<CXrefToolBar>();
    ASSERT_TRUE(b);
    const std::pair<unsigned, Trove::MenuItems> handled[] = {
        {1081, Trove::Refresh},          {1082, Trove::ReloadAllXRefs},
        {1083, Trove::AttachDWG},        {1084, Trove::AttachDWF},
        {1085, Trove::Attach},           {1087, Trove::AttachDGN},
        {1088, Trove::AttachPDF},        {1090, Trove::AttachPointCloud},
        {1107, Trove::AttachImage},      {32784, Trove::AttachOrbiskModel},
        {1176, Trove::RemovePath},       {1177, Trove::MakePathRelative},
        {1178, Trove::MakePathAbsolute}, {1180, Trove::SelectNewPath},
        {1181, Trove::FindAndReplace},   {30203, Trove::Refresh},
        {30204, Trove::AttachDWG},
    };
    for (auto [id, item] : handled) {
        raised.clear();
        EXPECT_TRUE(b->OnCommand(id)) << id;
        ASSERT_EQ(raised.size(), 1u) << id;
        EXPECT_EQ(raised[0].item, item) << id;
        EXPECT_TRUE(raised[0].items.empty()) << id;
    }
    // Attach from the repository belongs to the repository tool bar only.
    raised.clear();
    for (unsigned id : {1086u, 0u, 1089u, 1179u, 30202u, 30207u, 0xFFFFFFFFu})
        EXPECT_FALSE(b->OnCommand(id)) << id;
    EXPECT_TRUE(raised.empty());
}

TEST_F(ToolBarFixture, menuEntriesNamingButtonsDoNotLoop)
{
    ScopedResourceModule module;
    module.Write(QStringLiteral("menus/2080.json"),
                 QByteArray(R"({"items": [{"text": "A", "items": [{"id": 30203}, {"id": 30206}]},
                                          {"text": "B", "items": [{"id": 1085}, {"id": 30204}]},
                                          {"text": "C", "items": [{"id": 30205}]}]})"));
    CXrefToolBar* b = Make<CXrefToolBar>();
    ASSERT_TRUE(b);
    for (auto [button, id] :
         {std::pair{b->RefreshButton(), 30203u}, std::pair{b->RefreshButton(), 30206u},
          std::pair{b->AttachButton(), 30204u}, std::pair{b->ChangePathButton(), 30205u}}) {
        menus.ChooseCommand(id);
        ClickArrow(button);
        EXPECT_EQ(button->SplitButtonCommand(), int(id));
        ClickMain(button);
    }
    EXPECT_TRUE(raised.empty());
    EXPECT_EQ(helps, 0);
}

// ---------------------------------------------------------------------------------------------
// Remembered menu states

TEST_F(ToolBarFixture, pathAndReloadStatesReachTheMenuWhenItOpens)
{
    CXrefToolBar* b = Make<CXrefToolBar>();
    ASSERT_TRUE(b);
    b->EnableMenuItem(Trove::RemovePath, CZuUiMenu::Grayed);
    // Only the two low bits count: not the check mark, not "by position".
    b->EnableMenuItem(Trove::SelectNewPath, 0x40Bu);
    b->EnableMenuItem(Trove::ReloadAllXRefs, CZuUiMenu::Disabled);
    EXPECT_EQ(state(b, 1176), 0); // not before a menu opens

    std::map<unsigned, int> seen;
    std::map<unsigned, bool> enabled;
    menus.Choose([&](QMenu& menu) {
        for (QAction* action : menu.actions()) {
            const unsigned id = action->data().toUInt();
            seen[id] = CZuUiMenu::GetMenuState(&menu, id, CZuUiMenu::ByCommand);
            enabled[id] = action->isEnabled();
        }
        return 0u;
    });
    ClickMain(b->ChangePathButton());
    ClickArrow(b->RefreshButton());
    EXPECT_EQ(seen[1176], 1);
    EXPECT_FALSE(enabled[1176]);
    EXPECT_EQ(seen[1180], 3);
    EXPECT_EQ(seen[1177], 0);
    EXPECT_TRUE(enabled[1177]);
    EXPECT_EQ(seen[1178], 0);
    EXPECT_EQ(seen[1181], 0);
    EXPECT_EQ(seen[1082], 2);
    EXPECT_EQ(seen[1081], 0);

    b->EnableMenuItem(Trove::RemovePath, 0);
    ClickMain(b->ChangePathButton());
    EXPECT_EQ(seen[1176], 0);
    EXPECT_TRUE(enabled[1176]);
}

TEST_F(ToolBarFixture, statesThatAreUnmappedOrNotPathCommandsChangeNothing)
{
    CXrefToolBar* b = Make<CXrefToolBar>();
    ASSERT_TRUE(b);
    for (int value :
         {int(Trove::AttachFromTrove), int(Trove::Refresh), int(Trove::AttachDWG),
          int(Trove::Attach), int(Trove::HostCommand3), int(Trove::TooltipClose), 99, -5})
        b->EnableMenuItem(Trove::MenuItems(value), CZuUiMenu::Grayed);
    b->OnUpdateCmdUI();
    for (QAction* action : b->Menu()->findChildren<QAction*>()) {
        if (!action->isSeparator() && !action->menu()) {
            EXPECT_TRUE(action->isEnabled()) << action->data().toUInt();
        }
    }
    // Refresh is remembered all the same, only not written by the update; a command nobody
    // asked about keeps its state.
    QMenu& menu = *b->Menu();
    Open().EnableMenuItem(menu, 1081);
    EXPECT_EQ(state(b, 1081), 1);
    Open().EnableMenuItem(menu, 1176);
    EXPECT_EQ(state(b, 1176), 0);
}

TEST_F(ToolBarFixture, refreshAndPathButtonsCanBeSwitchedOff)
{
    CXrefToolBar* b = Make<CXrefToolBar>();
    ASSERT_TRUE(b);
    b->EnableRefresh(false);
    b->EnablePathOperations(false);
    EXPECT_FALSE(b->RefreshButton()->isEnabled());
    EXPECT_FALSE(b->ChangePathButton()->isEnabled());
    EXPECT_TRUE(b->AttachButton()->isEnabled());
    ClickMain(b->RefreshButton());
    ClickArrow(b->RefreshButton());
    ClickMain(b->ChangePathButton());
    EXPECT_TRUE(raised.empty());
    EXPECT_EQ(menus.Count(), 0);

    b->EnableRefresh(true);
    b->EnablePathOperations(true);
    ClickMain(b->RefreshButton());
    ClickMain(b->ChangePathButton());
    EXPECT_EQ(raised.size(), 1u);
    EXPECT_EQ(menus.Count(), 1);
}

// ---------------------------------------------------------------------------------------------
// Events and the keyboard

TEST_F(ToolBarFixture, handlersRunInHookOrderAndUnhookPerReceiver)
{
    CXrefToolBar* b = Make<CXrefToolBar>();
    ASSERT_TRUE(b);
    QObject first;
    QObject second;
    std::vector<std::string> log;
    for (auto [receiver, name] : {std::pair{&first, "first"}, std::pair{&second, "second"}}) {
        const std::string n = name;
        QObject::connect(b, &CXrefToolBar::MenuSelection, receiver,
                         [&log, n](Trove::MenuItems item, const std::vector<CXrefPanelCtrlItem*>&) {
                             log.push_back(n + " " + std::to_string(int(item)));
                         });
        QObject::connect(b, &CXrefToolBar::DisplayHelp, receiver,
                         [&log, n] { log.push_back(n + " help"); });
    }
    b->OnCommand(1081);
    ClickMain(b->HelpButton());
    EXPECT_EQ(log,
              (std::vector<std::string>{"first 17", "second 17", "first help", "second help"}));
    EXPECT_EQ(helps, 1);

    log.clear();
    b->__RemoveAllEventHandlers(nullptr);
    b->__RemoveAllEventHandlers(&first);
    b->OnCommand(1082);
    b->OnCommand(30206);
    EXPECT_EQ(log, (std::vector<std::string>{"second 8", "second help"}));
    EXPECT_EQ(raised.size(), 2u);
    EXPECT_EQ(helps, 2);
}

TEST_F(ToolBarFixture, buttonsWorkFromTheKeyboard)
{
    CXrefToolBar* b = Make<CXrefToolBar>();
    ASSERT_TRUE(b);
    QTest::keyClick(b->RefreshButton(), Qt::Key_Space);
    QTest::keyClick(b->AttachButton(), Qt::Key_Return);
    QTest::keyClick(b->HelpButton(), Qt::Key_Enter, Qt::KeypadModifier);
    QCoreApplication::processEvents();
    EXPECT_EQ(RaisedItems(), (std::vector<Trove::MenuItems>{Trove::Refresh, Trove::AttachDWG}));
    EXPECT_EQ(helps, 1);

    // The drop-downs open from the keyboard; the change-path button opens on a plain press too.
    menus.ChooseCommand(1082);
    QTest::keyClick(b->RefreshButton(), Qt::Key_Down, Qt::AltModifier);
    QCoreApplication::processEvents();
    EXPECT_EQ(raised.back().item, Trove::ReloadAllXRefs);
    menus.Dismiss();
    QTest::keyClick(b->AttachButton(), Qt::Key_Menu);
    QTest::keyClick(b->ChangePathButton(), Qt::Key_Space);
    QTest::keyClick(b->ChangePathButton(), Qt::Key_Return);
    QCoreApplication::processEvents();
    ASSERT_EQ(menus.Count(), 4);
    EXPECT_EQ(menus.ShownMenus()[1].owner, b->AttachButton());
    EXPECT_EQ(menus.ShownMenus()[2].owner, b->ChangePathButton());
    EXPECT_EQ(menus.ShownMenus()[3].owner, b->ChangePathButton());
    EXPECT_EQ(raised.size(), 3u);
}

// ---------------------------------------------------------------------------------------------
// The repository tool bar

TEST_F(ToolBarFixture, repositoryToolBarAddsAttachFromTheRepository)
{
    CTroveToolBar* b = Make<CTroveToolBar>();
    ASSERT_TRUE(b);
    EXPECT_EQ(menuIds(dropDown(b, 1)).value(0), 1086u);
    EXPECT_TRUE(b->OnCommand(1086));
    ClickMain(b->AttachButton());
    EXPECT_TRUE(b->OnCommand(1082));
    EXPECT_FALSE(b->OnCommand(1089));
    EXPECT_EQ(RaisedItems(),
              (std::vector<Trove::MenuItems>{Trove::AttachFromTrove, Trove::AttachFromTrove,
                                             Trove::ReloadAllXRefs}));
    EXPECT_EQ(b->AttachButton()->BitmapKey(), QStringLiteral("ATTACHTROVE_BTN"));
    EXPECT_EQ(b->ToolTip()->GetText(b->AttachButton()), TroveUI::ResString(1041));
}

TEST_F(ToolBarFixture, repositoryToolBarWritesNoStatesIntoItsMenu)
{
    CTroveToolBar* b = Make<CTroveToolBar>();
    ASSERT_TRUE(b);
    b->EnableMenuItem(Trove::RemovePath, CZuUiMenu::Grayed);
    b->EnableMenuItem(Trove::ReloadAllXRefs, CZuUiMenu::Grayed);
    ClickMain(b->ChangePathButton());
    ClickArrow(b->RefreshButton());
    b->OnUpdateCmdUI();
    EXPECT_EQ(menus.Count(), 2);
    EXPECT_EQ(state(b, 1176), 0);
    EXPECT_EQ(state(b, 1082), 0);
}

// ---------------------------------------------------------------------------------------------
// The parent panel's selection

namespace {

// A host panel that answers every host operation with nothing.
using QuietPanel = NullXrefPanel;

class PlainItem : public CXrefPanelCtrlItem
{
public:
    using CXrefPanelCtrlItem::CXrefPanelCtrlItem;
    bool HostOperation4() const override { return false; }
    bool HostOperation6() const override { return false; }
    bool HostOperation9() const override { return false; }
    bool HostOperation10() const override { return false; }
    bool IsPropertyEditable(XrefProperties, int) const override { return false; }
};

} // namespace

TEST_F(ToolBarFixture, pathCommandsCarryTheParentPanelsSelection)
{
    CXrefToolBar* b = Make<CXrefToolBar>();
    ASSERT_TRUE(b);
    QuietPanel panel(nullptr);
    ASSERT_TRUE(panel.Create(L"panel", QRect(0, 0, 300, 400), &host, 1));
    auto* root = new PlainItem(panel);
    auto* first = new PlainItem(panel);
    auto* second = new PlainItem(panel);
    panel.InsertRootItem(*root);
    panel.InsertItem(*first, *root, nullptr);
    panel.InsertItem(*second, *root, nullptr);
    const std::vector<CXrefPanelCtrlItem*> selection{first, second};
    panel.OnItemsSelected(selection, false);
    b->SetParentPanel(&panel);

    // A handler that changes the selection does not change what later handlers see.
    std::vector<CXrefPanelCtrlItem*> seenLater;
    QObject::connect(b, &CXrefToolBar::MenuSelection,
                     [&](Trove::MenuItems, const std::vector<CXrefPanelCtrlItem*>&) {
                         panel.OnItemsSelected({}, false);
                     });
    QObject::connect(b, &CXrefToolBar::MenuSelection,
                     [&](Trove::MenuItems, const std::vector<CXrefPanelCtrlItem*>& items) {
                         seenLater = items;
                     });
    for (unsigned id : {1176u, 1177u, 1178u, 1180u, 1181u}) {
        panel.OnItemsSelected(selection, false);
        b->OnCommand(id);
        EXPECT_EQ(raised.back().items, selection) << id;
        EXPECT_EQ(seenLater, selection) << id;
    }
    // Commands that do not act on the selection carry the empty list all the same.
    panel.OnItemsSelected(selection, false);
    for (unsigned id : {1081u, 1082u, 1083u, 1085u, 1107u}) {
        b->OnCommand(id);
        EXPECT_TRUE(raised.back().items.empty()) << id;
    }
    b->SetParentPanel(nullptr);
    b->OnCommand(1176);
    EXPECT_TRUE(raised.back().items.empty());
    panel.DeleteAllItems();
}
