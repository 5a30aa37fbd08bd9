// The tool-tip control: its own delays, which tool the pointer is over, and when a tip goes away
// and may come back.

#include "framework/ZuToolTipCtrl.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QCursor>
#include <QElapsedTimer>
#include <QMouseEvent>
#include <QTest>
#include <QToolTip>

#include <memory>

namespace {

class ToolTipCtrl : public testing::Test
{
protected:
    ToolTipCtrl()
    {
        // The pointer rests away from the window, so that only the events sent here move it.
        QCursor::setPos(790, 590);
        window.setGeometry(0, 0, 200, 100);
        left = new QWidget(&window);
        left->setGeometry(0, 0, 100, 100);
        right = new QWidget(&window);
        right->setGeometry(100, 0, 100, 100);
        window.show();
        tip.Create(&window);
        tip.SetDelayTime(CZuToolTipCtrl::Initial, 30);
        tip.SetDelayTime(CZuToolTipCtrl::ReShow, 5);
        tip.SetDelayTime(CZuToolTipCtrl::AutoPop, 30000);
    }
    ~ToolTipCtrl() override { QToolTip::hideText(); }

    // The pointer entering a whole-widget tool.
    void enter(QWidget* widget, QPoint pos)
    {
        QEnterEvent event(pos, widget->mapTo(widget->window(), pos), widget->mapToGlobal(pos));
        QApplication::sendEvent(widget, &event);
    }
    // A move over a rectangle tool's widget (which tracks the mouse).
    void move(QWidget* widget, QPoint pos)
    {
        QMouseEvent event(QEvent::MouseMove, pos, widget->mapToGlobal(pos), Qt::NoButton,
                          Qt::NoButton, Qt::NoModifier);
        QApplication::sendEvent(widget, &event);
    }
    void send(QWidget* widget, QEvent::Type type)
    {
        QEvent event(type);
        QApplication::sendEvent(widget, &event);
    }
    // Waits until the control shows @p text, or until @p patience is over (well past every
    // delay set here).
    bool shows(const QString& text, int patience = 2000)
    {
        QElapsedTimer timer;
        timer.start();
        while (timer.elapsed() < patience) {
            if (tip.ShownText() == text)
                return true;
            QTest::qWait(5);
        }
        return false;
    }

    QWidget window;
    QWidget* left = nullptr;
    QWidget* right = nullptr;
    CZuToolTipCtrl tip;
};

} // namespace

TEST_F(ToolTipCtrl, showsAfterTheInitialDelayOnly)
{
    tip.SetDelayTime(CZuToolTipCtrl::Initial, 300);
    ASSERT_TRUE(tip.AddTool(left, QStringLiteral("Left")));
    enter(left, {10, 10});
    QTest::qWait(100);
    EXPECT_FALSE(tip.IsTipShowing());
    EXPECT_TRUE(shows(QStringLiteral("Left")));
}

TEST_F(ToolTipCtrl, rectangleToolWinsOverWholeWidgetTool)
{
    tip.AddTool(left, QStringLiteral("Whole"));
    tip.AddTool(left, QStringLiteral("Corner"), QRect(0, 0, 20, 20), 7);
    EXPECT_TRUE(left->hasMouseTracking());
    EXPECT_EQ(tip.GetToolCount(), 2);
    move(left, {5, 5});
    EXPECT_TRUE(shows(QStringLiteral("Corner")));
    move(left, {50, 50});
    EXPECT_TRUE(shows(QStringLiteral("Whole")));
}

TEST_F(ToolTipCtrl, movingToAnotherToolSwitchesTheTip)
{
    tip.AddTool(left, QStringLiteral("Left"));
    tip.AddTool(right, QStringLiteral("Right"));
    enter(left, {10, 10});
    ASSERT_TRUE(shows(QStringLiteral("Left")));
    send(left, QEvent::Leave);
    EXPECT_FALSE(tip.IsTipShowing());
    enter(right, {10, 10});
    EXPECT_TRUE(shows(QStringLiteral("Right")));
}

TEST_F(ToolTipCtrl, pressHidesTheTipUntilThePointerLeavesTheTool)
{
    tip.AddTool(left, QStringLiteral("Left"));
    enter(left, {10, 10});
    ASSERT_TRUE(shows(QStringLiteral("Left")));
    QTest::mousePress(left, Qt::LeftButton, {}, QPoint(10, 10));
    EXPECT_FALSE(tip.IsTipShowing());
    enter(left, {12, 12});
    EXPECT_FALSE(shows(QStringLiteral("Left"), 200));
    QTest::mouseRelease(left, Qt::LeftButton, {}, QPoint(12, 12));
    send(left, QEvent::Leave);
    enter(left, {10, 10});
    EXPECT_TRUE(shows(QStringLiteral("Left")));
}

TEST_F(ToolTipCtrl, inactiveControlShowsNothing)
{
    tip.AddTool(left, QStringLiteral("Left"));
    tip.Activate(false);
    enter(left, {10, 10});
    EXPECT_FALSE(shows(QStringLiteral("Left"), 200));
    tip.Activate(true);
    send(left, QEvent::Leave);
    enter(left, {10, 10});
    EXPECT_TRUE(shows(QStringLiteral("Left")));
    tip.Activate(false);
    EXPECT_FALSE(tip.IsTipShowing());
}

TEST_F(ToolTipCtrl, newTextReplacesAShowingTip)
{
    tip.AddTool(left, QStringLiteral("Old"));
    enter(left, {10, 10});
    ASSERT_TRUE(shows(QStringLiteral("Old")));
    tip.UpdateTipText(QStringLiteral("New"), left);
    EXPECT_EQ(tip.ShownText(), QStringLiteral("New"));
    EXPECT_EQ(QToolTip::text(), QStringLiteral("New"));
    tip.UpdateTipText(QString(), left);
    EXPECT_FALSE(tip.IsTipShowing());
}

TEST_F(ToolTipCtrl, widgetsOwnToolTipDoesNotCompete)
{
    left->setToolTip(QStringLiteral("Qt's own"));
    tip.AddTool(left, QStringLiteral("Ours"));
    QHelpEvent help(QEvent::ToolTip, QPoint(10, 10), left->mapToGlobal(QPoint(10, 10)));
    QApplication::sendEvent(left, &help);
    EXPECT_NE(QToolTip::text(), QStringLiteral("Qt's own"));
}

TEST_F(ToolTipCtrl, forgetsToolsOfDestroyedWidgets)
{
    auto* doomed = new QWidget(&window);
    doomed->setGeometry(0, 0, 50, 50);
    doomed->show();
    tip.AddTool(doomed, QStringLiteral("Doomed"));
    tip.AddTool(left, QStringLiteral("Left"));
    enter(doomed, {10, 10});
    delete doomed;
    EXPECT_EQ(tip.GetToolCount(), 1);
    QTest::qWait(60);
    EXPECT_FALSE(tip.IsTipShowing());
}

TEST_F(ToolTipCtrl, toolsNeedACreatedControl)
{
    CZuToolTipCtrl fresh;
    EXPECT_FALSE(fresh.AddTool(left, QStringLiteral("x")));
    EXPECT_FALSE(fresh.Create(nullptr));
    EXPECT_TRUE(fresh.Create(&window));
    EXPECT_FALSE(fresh.Create(&window));
    EXPECT_TRUE(fresh.AddTool(left, QStringLiteral("x")));
    fresh.DestroyWindow();
    EXPECT_EQ(fresh.GetToolCount(), 0);
    EXPECT_FALSE(fresh.IsWindow());
}
