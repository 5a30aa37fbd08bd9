// Where the panel puts its tool bar, groups and message strip, the lower pane on and off, the
// details column widths across DPI scales, and which page of each group counts as in front.

#include "PanelFixture.h"

#include "framework/ZuUiTheme.h"
#include "panel/detail/PanelLayout.h"
#include "resources/TroveResources.h"
#include "views/XrefPropListCtrl.h"

#include <QApplication>
#include <QCursor>
#include <QEvent>
#include <QTest>
#include <QTreeView>

#include <algorithm>

using testing::_;
using testing::DoAll;
using testing::SetArgReferee;

namespace {

// --- The arithmetic ------------------------------------------------------------------------------

struct ArrangeCase
{
    const char* name;
    int cx, cy;
    int buttonHeight; // -1: no tool bar window
    double xs, ys;
    QRect toolBar, strip, groups;
};

// Worked by hand from the rules: side margin round(8xs), top margin round(10ys), line unit
// round(ys), band max(button height, round(14xs) + round(16xs)), strip y cy - 22u - round(10ys),
// strip width cx - 2u - x - round(10ys), groups from round(6ys) + round(10ys) + band down to the
// strip less round(8xs).
const ArrangeCase kArrangeCases[] = {
    {"noToolBarAt96Dpi", 300, 400, -1, 1.0, 1.0, QRect(), QRect(10, 368, 278, 32),
     QRect(8, 46, 284, 314)},
    {"lowButtonsGetTheMinimumBand", 300, 400, 24, 1.0, 1.0, QRect(8, 10, 284, 30),
     QRect(10, 368, 278, 32), QRect(8, 46, 284, 314)},
    {"tallButtonsSetTheBand", 300, 400, 41, 1.0, 1.0, QRect(8, 10, 284, 41),
     QRect(10, 368, 278, 32), QRect(8, 57, 284, 303)},
    {"doubleScale", 600, 800, -1, 2.0, 2.0, QRect(), QRect(20, 736, 556, 64),
     QRect(16, 92, 568, 628)},
    // 1.25 horizontally: 17.5 rounds away from zero to 18, so the band is 18 + 20 = 38.
    // 1.5 vertically: the line unit is 2, the top margin 15, the gap 9.
    {"horizontalScaleSetsBandAndGapAboveStrip", 400, 500, -1, 1.25, 1.5, QRect(),
     QRect(14, 441, 367, 59), QRect(10, 62, 380, 369)},
    // The strip's right margin follows the vertical scale: 10 at ys 1.0 although xs is 2.
    {"stripRightMarginFollowsVerticalScale", 400, 500, 24, 2.0, 1.0, QRect(16, 10, 368, 60),
     QRect(18, 468, 370, 32), QRect(16, 76, 368, 376)},
    // Too small for anything: the rectangles go negative and the caller clamps them.
    {"tinyClient", 10, 20, -1, 1.0, 1.0, QRect(), QRect(10, -12, -12, 32), QRect(8, 46, -6, -66)},
};

class ArrangeTest : public testing::TestWithParam<ArrangeCase>
{};

TEST_P(ArrangeTest, placesBandStripAndGroups)
{
    const ArrangeCase& c = GetParam();
    const PanelGeometry geometry = PanelLayout::Arrange(c.cx, c.cy, c.buttonHeight, c.xs, c.ys);
    EXPECT_EQ(geometry.toolBar, c.toolBar);
    EXPECT_EQ(geometry.strip, c.strip);
    EXPECT_EQ(geometry.groups, c.groups);
}

INSTANTIATE_TEST_SUITE_P(Rules, ArrangeTest, testing::ValuesIn(kArrangeCases),
                         [](const testing::TestParamInfo<ArrangeCase>& info) {
                             return std::string(info.param.name);
                         });

TEST(PanelLayoutRules, minimumBandAddsTwoHorizontalTerms)
{
    EXPECT_EQ(PanelLayout::MinimumToolBarHeight(1.0), 30);
    EXPECT_EQ(PanelLayout::MinimumToolBarHeight(1.25), 38);
    EXPECT_EQ(PanelLayout::MinimumToolBarHeight(1.5), 45);
    EXPECT_EQ(PanelLayout::MinimumToolBarHeight(2.0), 60);
}

// --- The panel's own children --------------------------------------------------------------------

class PanelLayoutTest : public PanelFixture
{};

TEST_F(PanelLayoutTest, childrenLandWhereTheRulesSayAtEverySize)
{
    auto panel = Make(300, 400);
    EXPECT_EQ(panel->GetCoupledGroupCtrl()->geometry(), QRect(8, 46, 284, 314));
    EXPECT_EQ(panel->GetMessageBox()->geometry(), QRect(10, 368, 278, 32));
    EXPECT_EQ(panel->GetMessageBox()->parentWidget(), panel.get());

    panel->show();
    panel->resize(500, 300);
    EXPECT_EQ(panel->GetCoupledGroupCtrl()->geometry(), QRect(8, 46, 484, 214));
    EXPECT_EQ(panel->GetMessageBox()->geometry(), QRect(10, 268, 478, 32));
    // The groups fill the splitter between them.
    const QRect upper = panel->GetUpperGroupCtrl()->geometry();
    const QRect lower = panel->GetLowerGroupCtrl()->geometry();
    EXPECT_EQ(upper.topLeft(), QPoint(0, 0));
    EXPECT_EQ(upper.width(), 484);
    EXPECT_EQ(lower.bottom(), 213);
    EXPECT_EQ(lower.top() - upper.bottom() - 1, panel->GetCoupledGroupCtrl()->GetSplitterHeight());
}

TEST_F(PanelLayoutTest, panelMakesTheToolBarWindowAndGivesItTheMinimumBand)
{
    auto toolBar = std::make_shared<CXrefToolBar>();
    auto panel = Make(300, 400, false, toolBar);
    ASSERT_TRUE(toolBar->IsCreated());
    EXPECT_EQ(toolBar->parentWidget(), panel.get());
    ASSERT_LT(toolBar->GetButtonSize().height(), 30);
    EXPECT_EQ(toolBar->geometry(), QRect(8, 10, 284, 30));
    EXPECT_EQ(panel->GetCoupledGroupCtrl()->geometry(), QRect(8, 46, 284, 314));
}

TEST_F(PanelLayoutTest, toolBarMadeByTheHostIsKeptAndPlaced)
{
    QWidget frame;
    auto toolBar = std::make_shared<CXrefToolBar>();
    ASSERT_TRUE(toolBar->Create(&frame));
    auto panel = Make(300, 400, false, toolBar);
    EXPECT_EQ(toolBar->parentWidget(), &frame) << "the panel makes no second window";
    EXPECT_EQ(toolBar->geometry(), QRect(8, 10, 284, 30));
}

TEST_F(PanelLayoutTest, groupsAndPagesCarryTheirIdsTitlesAndKeys)
{
    for (bool trove : {false, true}) {
        auto panel = Make(300, 400, trove);
        CXrefGroupCtrl* upper = panel->GetUpperGroupCtrl();
        CXrefGroupCtrl* lower = panel->GetLowerGroupCtrl();
        ASSERT_TRUE(upper && lower);
        EXPECT_EQ(ControlId::Get(upper), 30100);
        EXPECT_EQ(ControlId::Get(lower), 30200);
        EXPECT_EQ(upper->GetPage(0), panel->GetListCtrl());
        EXPECT_EQ(upper->GetPage(1), panel->GetTreeCtrl());
        EXPECT_EQ(lower->GetPage(0), panel->GetDetailsCtrl());
        EXPECT_EQ(lower->GetPage(1), panel->GetPreviewCtrl());
        EXPECT_EQ(ControlId::Get(panel->GetListCtrl()), 30102);
        EXPECT_EQ(ControlId::Get(panel->GetTreeCtrl()), 30101);
        EXPECT_EQ(ControlId::Get(panel->GetDetailsCtrl()), 30201);
        EXPECT_EQ(ControlId::Get(panel->GetPreviewCtrl()), 30202);
        EXPECT_EQ(upper->GetPageTitle(0), TroveUI::ResString(trove ? 1042 : 1039)) << trove;
        EXPECT_EQ(upper->GetPageTitle(1), TroveUI::ResString(1038));
        EXPECT_EQ(lower->GetPageTitle(0), TroveUI::ResString(1043));
        EXPECT_EQ(lower->GetPageTitle(1), TroveUI::ResString(1057));
        EXPECT_EQ(upper->GetPageKey(0), "GRPCTRL_LISTVIEW");
        EXPECT_EQ(upper->GetPageKey(1), "GRPCTRL_TREEVIEW");
        EXPECT_EQ(lower->GetPageKey(0), "GRPCTRL_DETAILS");
        EXPECT_EQ(lower->GetPageKey(1), "GRPCTRL_THUMBBTN");
    }
}

// --- The lower pane ------------------------------------------------------------------------------

TEST_F(PanelLayoutTest, hidingAndShowingTheLowerPaneTwiceRestoresTheLayout)
{
    auto panel = Make(300, 500);
    QWidget* upper = panel->GetUpperGroupCtrl();
    QWidget* lower = panel->GetLowerGroupCtrl();
    const QRect upperBefore = upper->geometry();
    const QRect lowerBefore = lower->geometry();
    const QRect area = panel->GetCoupledGroupCtrl()->rect();

    for (int round = 0; round < 2; ++round) {
        panel->OnPreviewDetailsPane();
        EXPECT_FALSE(panel->IsLowerPaneShown());
        EXPECT_EQ(upper->geometry(), area) << "the file references take the whole area";
        EXPECT_EQ(lower->pos(), QPoint(0, area.height() / 2));
        EXPECT_EQ(lower->size(), lowerBefore.size()) << "moved, not resized";
        EXPECT_TRUE(panel->GetCoupledGroupCtrl()->GetSplitterRect().isEmpty());

        panel->OnPreviewDetailsPane();
        EXPECT_TRUE(panel->IsLowerPaneShown());
        EXPECT_EQ(upper->geometry(), upperBefore) << round;
        EXPECT_EQ(lower->geometry(), lowerBefore) << round;
    }
}

TEST_F(PanelLayoutTest, storedLowerGroupIsAskedOnceAndRestored)
{
    auto panel = std::make_unique<TestPanel>();
    EXPECT_CALL(*panel, GetStoredLowerGroup(_, _))
        .WillOnce(DoAll(SetArgReferee<0>(0.25), SetArgReferee<1>(false)));
    panel->Create(L"References", QRect(0, 0, 300, 500), nullptr, 1);
    double ratio = 0;
    bool shown = true;
    panel->GetLowerGroup(ratio, shown);
    EXPECT_DOUBLE_EQ(ratio, 0.25);
    EXPECT_FALSE(shown);
    EXPECT_DOUBLE_EQ(panel->GetTopToWholeRatio(), 0.25);
    EXPECT_EQ(panel->GetUpperGroupCtrl()->geometry(), panel->GetCoupledGroupCtrl()->rect());

    panel->OnPreviewDetailsPane();
    const int bar = panel->GetCoupledGroupCtrl()->GetSplitterHeight();
    const int area = panel->GetCoupledGroupCtrl()->height();
    EXPECT_EQ(panel->GetUpperGroupCtrl()->height(), int((area - bar) * 0.25));
}

// --- Column widths -------------------------------------------------------------------------------

TEST_F(PanelLayoutTest, columnWidthsReadAtDoubleScaleHalveWhenWrittenAtSingleScale)
{
    std::vector<int> stored;
    {
        ScopedDpiScale doubled(2.0);
        auto panel = Make(600, 800);
        std::vector<int> widths{120, 90};
        panel->SetDetailColumnDipWidths(widths);
        auto* details = panel->GetDetailsCtrl();
        ASSERT_NE(details, nullptr);
        EXPECT_EQ(details->columnWidth(0), 240);
        EXPECT_EQ(details->columnWidth(1), 180);
        stored = panel->GetColumnDipWidths();
        EXPECT_EQ(stored, (std::vector<int>{120, 90}));
    }
    auto panel = Make(300, 400);
    panel->SetDetailColumnDipWidths(stored);
    auto* details = panel->GetDetailsCtrl();
    EXPECT_EQ(details->columnWidth(0), 120);
    EXPECT_EQ(details->columnWidth(1), 90);
}

TEST_F(PanelLayoutTest, columnWidthsRoundAndSkipWhatTheyCannotUse)
{
    ScopedDpiScale scale(1.5);
    auto panel = Make(450, 600);
    auto* details = panel->GetDetailsCtrl();
    std::vector<int> widths{51, 70001};
    panel->SetDetailColumnDipWidths(widths);
    EXPECT_EQ(details->columnWidth(0), 77) << "76.5 rounds away from zero";
    EXPECT_EQ(details->columnWidth(1), 105002 & 0xFFFF) << "only the low 16 bits count";
    EXPECT_EQ(panel->GetColumnDipWidths()[0], 51);

    std::vector<int> partial{-1};
    panel->SetDetailColumnDipWidths(partial);
    EXPECT_EQ(details->columnWidth(0), 77) << "a negative width leaves the column";
    std::vector<int> longer{40, 60, 30};
    panel->SetDetailColumnDipWidths(longer);
    EXPECT_EQ(details->columnWidth(0), 60);
    EXPECT_EQ(details->columnWidth(1), 90);

    TestPanel uncreated;
    EXPECT_TRUE(uncreated.GetColumnDipWidths().empty());
    uncreated.SetDetailColumnDipWidths(longer);
}

// --- Pages in front ------------------------------------------------------------------------------

TEST_F(PanelLayoutTest, constructorViewTypesSurviveCreation)
{
    auto panel = Make(300, 500, CXrefPanelCtrl::FileReferenceViewType::TreeView,
                      CXrefPanelCtrl::DetailsViewType::Preview);
    EXPECT_EQ(panel->GetReferenceViewType(), CXrefPanelCtrl::FileReferenceViewType::TreeView);
    EXPECT_EQ(panel->GetDetailsViewType(), CXrefPanelCtrl::DetailsViewType::Preview);
    EXPECT_EQ(panel->GetUpperGroupCtrl()->GetSelIndex(), 1);
    EXPECT_EQ(panel->GetLowerGroupCtrl()->GetSelIndex(), 1);
    EXPECT_EQ(panel->selectionRuns, 1) << "the preview coming to front is filled";

    auto odd = Make(300, 500, CXrefPanelCtrl::FileReferenceViewType(5),
                    CXrefPanelCtrl::DetailsViewType(-3));
    EXPECT_EQ(odd->GetReferenceViewType(), CXrefPanelCtrl::FileReferenceViewType::ListView);
    EXPECT_EQ(odd->GetDetailsViewType(), CXrefPanelCtrl::DetailsViewType::Details);
}

TEST_F(PanelLayoutTest, storedViewTypesFollowThePageInFront)
{
    auto panel = Make(300, 500);
    TestPanel uncreated;
    uncreated.SetReferenceViewType(CXrefPanelCtrl::FileReferenceViewType::TreeView);
    EXPECT_EQ(uncreated.GetReferenceViewType(), CXrefPanelCtrl::FileReferenceViewType::ListView)
        << "nothing to bring to front yet";

    panel->SetReferenceViewType(CXrefPanelCtrl::FileReferenceViewType::TreeView);
    EXPECT_EQ(panel->GetReferenceViewType(), CXrefPanelCtrl::FileReferenceViewType::TreeView);
    EXPECT_TRUE(panel->GetTreeCtrl()->isVisibleTo(panel.get()));
    EXPECT_FALSE(panel->GetListCtrl()->isVisibleTo(panel.get()));

    // The user's click on a page button does the same.
    CXrefGroupCtrl* upper = panel->GetUpperGroupCtrl();
    QTest::mouseClick(upper, Qt::LeftButton, {}, upper->PageButtonRect(0).center());
    EXPECT_EQ(panel->GetReferenceViewType(), CXrefPanelCtrl::FileReferenceViewType::ListView);

    panel->SetDetailsViewType(CXrefPanelCtrl::DetailsViewType::Preview);
    EXPECT_EQ(panel->GetActiveDetailViewType(), CXrefPanelCtrl::DetailsViewType::Preview);
    EXPECT_EQ(panel->selectionRuns, 1);
    panel->SetDetailsViewType(CXrefPanelCtrl::DetailsViewType::Details);
    EXPECT_EQ(panel->GetDetailsViewType(), CXrefPanelCtrl::DetailsViewType::Details);
    EXPECT_EQ(panel->selectionRuns, 1) << "only the preview needs filling";
}

TEST_F(PanelLayoutTest, onlyPagesComingIntoViewCount)
{
    auto panel = Make(300, 500);
    panel->OnPaneVisibilityChanging(panel->GetTreeCtrl(), CZuUiGroupCtrl::PaneHidden);
    EXPECT_EQ(panel->GetReferenceViewType(), CXrefPanelCtrl::FileReferenceViewType::ListView);
    panel->OnPaneVisibilityChanging(panel->GetTreeCtrl(), CZuUiGroupCtrl::PaneRevealed);
    EXPECT_EQ(panel->GetReferenceViewType(), CXrefPanelCtrl::FileReferenceViewType::TreeView);
    panel->OnPaneVisibilityChanging(panel->GetMessageBox().get(), CZuUiGroupCtrl::PaneShown);
    EXPECT_EQ(panel->GetReferenceViewType(), CXrefPanelCtrl::FileReferenceViewType::TreeView);

    // Expanding the lower group with the preview in front reveals it: it is filled again, while
    // collapsing says nothing.
    panel->SetDetailsViewType(CXrefPanelCtrl::DetailsViewType::Preview);
    const int runs = panel->selectionRuns;
    panel->GetLowerGroupCtrl()->SetCollapsed(true);
    EXPECT_EQ(panel->selectionRuns, runs);
    panel->GetLowerGroupCtrl()->SetCollapsed(false);
    EXPECT_EQ(panel->selectionRuns, runs + 1);
}

TEST_F(PanelLayoutTest, paletteThemeReachesTheChildren)
{
    auto panel = Make(300, 500);
    ScopedTheme dark(true);
    QFont font = panel->font();
    font.setPointSize(font.pointSize() + 5);
    panel->InitPaletteTheme(CZuUiTheme::Instance(), font);
    EXPECT_EQ(panel->GetMessageBox()->font(), font);
    EXPECT_EQ(panel->GetUpperGroupCtrl()->font(), font);
    EXPECT_EQ(panel->palette().color(QPalette::Window),
              CZuUiTheme::Instance().GetColor(CZuUiTheme::Background));
    EXPECT_EQ(panel->GetMessageBox()->palette().color(QPalette::WindowText),
              CZuUiTheme::Instance().GetColor(CZuUiTheme::Text));
}

// --- Activation and enabling ---------------------------------------------------------------------

TEST_F(PanelLayoutTest, pressDrawsTheGroupUnderThePointerActive)
{
    auto panel = Make(300, 500);
    panel->show();
    CXrefGroupCtrl* upper = panel->GetUpperGroupCtrl();
    CXrefGroupCtrl* lower = panel->GetLowerGroupCtrl();

    QTest::mousePress(panel->GetListCtrl()->viewport(), Qt::LeftButton);
    EXPECT_TRUE(upper->IsActive());
    EXPECT_FALSE(lower->IsActive());
    QTest::mouseRelease(panel->GetListCtrl()->viewport(), Qt::LeftButton);

    QWidget* details = panel->GetDetailsCtrl()->viewport();
    QTest::mousePress(details, Qt::LeftButton);
    EXPECT_FALSE(upper->IsActive());
    EXPECT_TRUE(lower->IsActive());
    QTest::mouseRelease(details, Qt::LeftButton);

    QTest::mousePress(panel->GetMessageBox().get(), Qt::LeftButton);
    EXPECT_FALSE(upper->IsActive());
    EXPECT_FALSE(lower->IsActive());
}

TEST_F(PanelLayoutTest, mouseActivateActsOnlyForTheClientAndFrameworkAreas)
{
    auto panel = Make(300, 500);
    panel->show();
    CXrefGroupCtrl* upper = panel->GetUpperGroupCtrl();
    CXrefGroupCtrl* lower = panel->GetLowerGroupCtrl();
    QCursor::setPos(upper->mapToGlobal(upper->rect().center()));
    ASSERT_TRUE(upper->isAncestorOf(QApplication::widgetAt(QCursor::pos())));

    for (unsigned hitTest : {0u, 2u, 220u}) {
        EXPECT_EQ(panel->OnMouseActivate(nullptr, hitTest, 0), 1);
        EXPECT_FALSE(upper->IsActive()) << hitTest;
    }
    EXPECT_EQ(panel->OnMouseActivate(nullptr, 1, 0), 1);
    EXPECT_TRUE(upper->IsActive());

    QCursor::setPos(lower->mapToGlobal(lower->rect().center()));
    panel->OnMouseActivate(nullptr, 221, 0);
    EXPECT_FALSE(upper->IsActive());
    EXPECT_TRUE(lower->IsActive());
}

// Records the order in which widgets change their enabled state.
class EnableOrder : public QObject
{
public:
    explicit EnableOrder(const std::vector<QWidget*>& widgets)
    {
        for (QWidget* widget : widgets)
            widget->installEventFilter(this);
    }
    std::vector<QObject*> changed;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override
    {
        if (event->type() == QEvent::EnabledChange &&
            std::find(changed.begin(), changed.end(), watched) == changed.end())
            changed.push_back(watched);
        return false;
    }
};

TEST_F(PanelLayoutTest, enableWindowWalksTheChildrenInItsOrderAndReportsThePanel)
{
    auto toolBar = std::make_shared<CXrefToolBar>();
    auto panel = Make(300, 500, false, toolBar);
    const std::vector<QWidget*> expected{panel->GetCoupledGroupCtrl(), panel->GetUpperGroupCtrl(),
                                         panel->GetLowerGroupCtrl(),   panel->GetTreeCtrl(),
                                         panel->GetListCtrl(),         toolBar.get(),
                                         panel->GetDetailsCtrl(),      panel->GetPreviewCtrl()};

    EXPECT_FALSE(panel->EnableWindow(false)) << "it was enabled";
    for (QWidget* widget : expected)
        EXPECT_FALSE(widget->isEnabled());

    // Each child was disabled by itself, so enabling the panel leaves it disabled until its own
    // turn comes.
    EnableOrder order(expected);
    EXPECT_TRUE(panel->EnableWindow(true)) << "it was disabled";
    std::vector<QObject*> want(expected.begin(), expected.end());
    EXPECT_EQ(order.changed, want);
    EXPECT_TRUE(panel->GetPreviewCtrl()->isEnabled());
}

} // namespace
