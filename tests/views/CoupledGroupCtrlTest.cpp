// The splitter that stacks the panel's two groups: layout arithmetic at any DPI scale,
// collapsed panes, the ready flag, and dragging the bar.

#include "support/ScopedOverrides.h"
#include "views/XrefCoupledGroupCtrl.h"
#include "views/XrefGroupCtrl.h"

#include <gtest/gtest.h>

#include <QSignalSpy>
#include <QTest>

#include <memory>

namespace {

struct Geometry
{
    QRect upper;
    QRect lower;
    QRect splitter;
};

class CoupledLayout : public testing::Test
{
protected:
    std::unique_ptr<CXrefCoupledGroupCtrl> coupled = std::make_unique<CXrefCoupledGroupCtrl>();
    CXrefGroupCtrl* upper = new CXrefGroupCtrl;
    CXrefGroupCtrl* lower = new CXrefGroupCtrl;

    void SetUp() override
    {
        coupled->SetUpperGroup(upper);
        coupled->SetLowerGroup(lower);
        coupled->SetReady(true);
    }

    Geometry layout(int cx, int cy, double ratio)
    {
        coupled->resize(cx, cy);
        coupled->SetSplitRatio(ratio);
        return {coupled->GetUpperPane()->geometry(), coupled->GetLowerPane()->geometry(),
                coupled->GetSplitterRect()};
    }
};

} // namespace

TEST_F(CoupledLayout, ratioPlacesTheBarAndClampsKeepTheHeaders)
{
    struct Case
    {
        double scale;
        int cy;
        double ratio;
        int split;    // top of the bar
        int lowerTop; // split + bar
        int lowerHeight;
    };
    // Headers round(22 t), bar round(8 t): 22/8 at 1.0, 28/10 at 1.25, 33/12 at 1.5, 44/16 at 2.0.
    const Case cases[] = {
        {1.0, 400, 0.5, 196, 204, 196},
        {1.0, 400, 0.0, 22, 30, 370},    // right under the upper header
        {1.0, 400, 1.0, 370, 378, 22},   // the lower header plus the bar above the bottom
        {1.0, 400, 0.3, 117, 125, 275},  // (400 - 8) * 0.3 = 117.6, truncated
        {1.0, 40, 0.1, 22, 30, 10},      // at least the upper header, though the lower is cut
        {1.0, 40, 0.9, 10, 18, 22},      // at most cy - hl - bar, though below the upper header
        {1.25, 400, 0.5, 195, 205, 195}, // (400 - 10) / 2
        {1.25, 400, 0.0, 28, 38, 362},
        {1.5, 300, 1.0, 255, 267, 33},
        {2.0, 400, 0.5, 192, 208, 192},
        {2.0, 400, 0.0, 44, 60, 340},
        {2.0, 400, 1.0, 340, 356, 44},
    };
    for (const Case& c : cases) {
        ScopedDpiScale dpi(1.0, c.scale);
        const Geometry g = layout(300, c.cy, c.ratio);
        const std::string where = "scale " + std::to_string(c.scale) + " cy " +
                                  std::to_string(c.cy) + " ratio " + std::to_string(c.ratio);
        EXPECT_EQ(g.upper, QRect(0, 0, 300, c.split)) << where;
        EXPECT_EQ(g.lower, QRect(0, c.lowerTop, 300, c.lowerHeight)) << where;
        EXPECT_EQ(g.splitter, QRect(0, c.split, 300, c.lowerTop - c.split)) << where;
    }
}

TEST_F(CoupledLayout, collapsedPaneKeepsItsHeaderAndTheOtherTakesTheRest)
{
    upper->SetCollapsed(true); // the group's own signal re-lays out
    Geometry g = layout(250, 400, 0.5);
    EXPECT_EQ(g.upper, QRect(0, 0, 250, 22));
    EXPECT_EQ(g.lower, QRect(0, 30, 250, 370));
    EXPECT_EQ(g.splitter, QRect(0, 22, 250, 8));

    upper->SetCollapsed(false);
    lower->SetCollapsed(true);
    g = {upper->geometry(), lower->geometry(), coupled->GetSplitterRect()};
    EXPECT_EQ(g.upper, QRect(0, 0, 250, 370));
    EXPECT_EQ(g.lower, QRect(0, 378, 250, 22));
    EXPECT_EQ(g.splitter, QRect(0, 370, 250, 8));

    // Both collapsed: the upper pane is looked at first.
    upper->SetCollapsed(true);
    EXPECT_EQ(upper->geometry(), QRect(0, 0, 250, 22));
    EXPECT_EQ(lower->geometry(), QRect(0, 30, 250, 370));
}

TEST_F(CoupledLayout, ownHeaderHeightsCountForGroups)
{
    upper->SetHeaderHeight(30);
    lower->SetHeaderHeight(40);
    Geometry g = layout(200, 300, 0.0);
    EXPECT_EQ(g.upper.height(), 30);
    g = layout(200, 300, 1.0);
    EXPECT_EQ(g.lower, QRect(0, 260, 200, 40));
}

TEST_F(CoupledLayout, twoOpenGroupsWaitForTheReadyFlag)
{
    coupled->SetReady(false);
    coupled->resize(300, 400);
    coupled->SetSplitRatio(0.25);
    const QRect before = upper->geometry();
    EXPECT_NE(before, QRect(0, 0, 300, 98));
    // A collapsed pane is laid out even before.
    lower->SetCollapsed(true);
    EXPECT_EQ(upper->geometry(), QRect(0, 0, 300, 370));
    lower->SetCollapsed(false);
    coupled->SetReady(true);
    EXPECT_EQ(upper->geometry(), QRect(0, 0, 300, 98));
}

TEST(CoupledLayoutWindows, plainWindowsUseTheDefaultHeaderAndCountMinimisedAsCollapsed)
{
    ScopedDpiScale dpi(2.0);
    CXrefCoupledGroupCtrl coupled;
    auto* top = new QWidget;
    auto* details = new CXrefGroupCtrl;
    coupled.SetUpperWindow(top);
    coupled.SetLowerGroup(details);
    coupled.resize(300, 400); // not ready, but one pane is a plain window: laid out anyway
    coupled.SetSplitRatio(0.0);
    EXPECT_EQ(top->geometry(), QRect(0, 0, 300, 44));
    EXPECT_FALSE(top->isHidden()); // panes are shown as they are placed

    top->setWindowState(Qt::WindowMinimized);
    EXPECT_EQ(top->geometry(), QRect(0, 0, 300, 44));
    EXPECT_EQ(details->geometry(), QRect(0, 60, 300, 340));
    top->setWindowState(Qt::WindowNoState);
    coupled.SetSplitRatio(1.0);
    EXPECT_EQ(details->geometry(), QRect(0, 356, 300, 44));
}

TEST(CoupledLayoutWindows, nothingIsLaidOutWithoutBothPanes)
{
    CXrefCoupledGroupCtrl coupled;
    auto* upper = new CXrefGroupCtrl(&coupled);
    upper->setGeometry(1, 2, 3, 4);
    coupled.SetUpperGroup(upper);
    coupled.SetReady(true);
    coupled.resize(300, 400);
    EXPECT_EQ(upper->geometry(), QRect(1, 2, 3, 4));
    EXPECT_TRUE(coupled.GetSplitterRect().isNull());
}

TEST_F(CoupledLayout, draggingTheBarChangesTheRatio)
{
    layout(300, 400, 0.5);
    coupled->show();
    QSignalSpy changed(coupled.get(), &CZuUiCoupledGroupCtrl::splitRatioChanged);
    const QPoint grip = coupled->GetSplitterRect().center();
    QTest::mousePress(coupled.get(), Qt::LeftButton, Qt::NoModifier, grip);
    QTest::mouseMove(coupled.get(), grip + QPoint(0, 50));
    QTest::mouseRelease(coupled.get(), Qt::LeftButton, Qt::NoModifier, grip + QPoint(0, 50));
    EXPECT_EQ(upper->geometry().height(), 246);
    EXPECT_EQ(lower->geometry(), QRect(0, 254, 300, 146));
    ASSERT_GE(changed.count(), 1);
    EXPECT_DOUBLE_EQ(changed.last().at(0).toDouble(), coupled->GetSplitRatio());
    // The stored ratio brings the bar back to the same place at the next layout.
    coupled->RecalcLayout();
    EXPECT_EQ(upper->geometry().height(), 246);

    // Dragged far past the bottom, the lower header still shows.
    const QPoint again = coupled->GetSplitterRect().center();
    QTest::mousePress(coupled.get(), Qt::LeftButton, Qt::NoModifier, again);
    QTest::mouseMove(coupled.get(), QPoint(again.x(), 1000));
    QTest::mouseRelease(coupled.get(), Qt::LeftButton, Qt::NoModifier, QPoint(again.x(), 1000));
    EXPECT_EQ(lower->geometry(), QRect(0, 378, 300, 22));
}

TEST_F(CoupledLayout, barOfACollapsedPaneCannotBeDragged)
{
    layout(300, 400, 0.5);
    coupled->show();
    lower->SetCollapsed(true);
    const QRect before = upper->geometry();
    const QPoint grip = coupled->GetSplitterRect().center();
    QTest::mousePress(coupled.get(), Qt::LeftButton, Qt::NoModifier, grip);
    QTest::mouseMove(coupled.get(), grip - QPoint(0, 100));
    QTest::mouseRelease(coupled.get(), Qt::LeftButton, Qt::NoModifier, grip - QPoint(0, 100));
    EXPECT_EQ(upper->geometry(), before);
    EXPECT_DOUBLE_EQ(coupled->GetSplitRatio(), 0.5);
}
