// The list view's columns (widths in and out at any scale, the repository-state column that
// hides and comes back, the stretched last column) and its tool tips.

#include "ListViewFixture.h"

#include "framework/ZuToolTipCtrl.h"
#include "host/KvToolTipService.h"
#include "resources/TroveResources.h"

#include <QHeaderView>

namespace {

using testing::_;
using testing::Return;

class ListColumnsTest : public ListViewFixture
{
protected:
    void SetUp() override
    {
        ListViewFixture::SetUp();
        if (HasFatalFailure())
            return;
        items = Fill({L"a", L"b", L"c"});
    }
    /// Draws the list, which opens or closes the repository-state column.
    void draw()
    {
        list().viewport()->repaint();
        settle();
    }
    int width(int column) const { return list().header()->sectionSize(column); }

    std::vector<TestXrefItem*> items;
};

TEST_F(ListColumnsTest, widthsGoInAndOutInDevicePixelsAtEveryScale)
{
    root->SetTroveStateIconIndexListView(1);
    for (const double scale : {1.0, 1.5, 2.0}) {
        SCOPED_TRACE(scale);
        ScopedDpiScale dpi(scale);
        list().SetColumnDipWidths({30, 20, 101, -1, 80});
        draw();
        const std::vector<int> expected = {30, 20, 101, 72, 80, 72, 108};
        for (int column = 0; column < 7; ++column)
            EXPECT_EQ(width(column), int(std::lround(expected[std::size_t(column)] * scale)))
                << column;
        std::vector<int> out = list().GetColumnDipWidths();
        ASSERT_EQ(out.size(), 8u);
        EXPECT_EQ(out[7], int(std::lround(width(7) / scale)));
        out.pop_back();
        EXPECT_EQ(out, expected);
    }
}

TEST_F(ListColumnsTest, stateColumnHidesWithoutStateImagesAndComesBackAtItsWidth)
{
    list().SetColumnDipWidths({30});
    draw();
    EXPECT_EQ(width(Column::TroveState), 0) << "the first row has no state image";
    EXPECT_FALSE(list().IsTroveStateColumnInUse());
    EXPECT_EQ(list().GetColumnDipWidths()[0], 30) << "the saved width is reported";

    root->SetTroveStateIconIndexListView(2);
    draw();
    EXPECT_EQ(width(Column::TroveState), 30);

    // Only the first row counts.
    root->SetTroveStateIconIndexListView(0);
    items[1]->SetTroveStateIconIndexListView(3);
    draw();
    EXPECT_EQ(width(Column::TroveState), 0);

    // An empty list shows it.
    panel->DeleteAllItems();
    root = nullptr;
    draw();
    EXPECT_EQ(width(Column::TroveState), 30);
}

TEST_F(ListColumnsTest, stateColumnDragIsRefusedWhileUnusedAndSavedAfterwards)
{
    QHeaderView* header = list().header();
    const auto drag = [&](int fromX, int toX) {
        const int y = header->height() / 2;
        QTest::mousePress(header->viewport(), Qt::LeftButton, Qt::NoModifier, QPoint(fromX, y));
        QTest::mouseMove(header->viewport(), QPoint((fromX + toX) / 2, y));
        QTest::mouseMove(header->viewport(), QPoint(toX, y));
        QTest::mouseRelease(header->viewport(), Qt::LeftButton, Qt::NoModifier, QPoint(toX, y));
        settle();
    };
    draw();
    ASSERT_EQ(width(Column::TroveState), 0);
    drag(1, 40);
    draw();
    EXPECT_EQ(width(Column::TroveState), 0);

    root->SetTroveStateIconIndexListView(1);
    draw();
    ASSERT_EQ(width(Column::TroveState), 25);
    drag(25, 45);
    draw();
    EXPECT_EQ(width(Column::TroveState), 45);
    EXPECT_EQ(list().GetColumnDipWidths()[0], 45);
}

TEST_F(ListColumnsTest, lastColumnFillsTheRestButKeepsItsHeaderText)
{
    settle();
    EXPECT_EQ(list().header()->length(), list().viewport()->width());

    list().resize(150, 300);
    settle();
    QHeaderView* header = list().header();
    EXPECT_EQ(width(Column::SavedPath), header->sectionSizeHint(Column::SavedPath));
    EXPECT_GE(width(Column::SavedPath),
              header->fontMetrics().horizontalAdvance(TroveUI::ResString(1034)));

    list().resize(900, 300);
    settle();
    EXPECT_EQ(header->length(), list().viewport()->width());
}

class ListToolTipTest : public ListColumnsTest
{
protected:
    void SetUp() override
    {
        ListColumnsTest::SetUp();
        KvToolTipService::Instance()->Hide();
    }
    void TearDown() override
    {
        KvToolTipService::Instance()->Hide();
        ListColumnsTest::TearDown();
    }
    void hover(int row, int column) { QTest::mouseMove(list().viewport(), at(row, column)); }
    QString simpleTip() const
    {
        const auto* tips = list().findChild<CZuToolTipCtrl*>();
        return tips ? tips->GetText(list().viewport(), 1) : QString();
    }
    static bool richTipShowing() { return KvToolTipService::Instance()->IsShowing(); }
};

TEST_F(ListToolTipTest, statusTipsKeyOnTheCodeThenOnTheIcon)
{
    struct Case
    {
        int code;
        RefStatus::RefIcon icon;
        unsigned text; ///< 0: the rich tip instead
    };
    const Case cases[] = {
        {3, RefStatus::Blank, 1210},      {3, RefStatus::InCompare, 1210},
        {1, RefStatus::Comparable, 1211}, {1, RefStatus::InCompare, 1212},
        {1, RefStatus::Unloaded, 0},
    };
    int row = 0;
    for (const Case& c : cases) {
        SCOPED_TRACE(c.text);
        CXrefPanelCtrlItem* item = list().ItemOfRow(row);
        item->SetReferenceStatus(c.icon, Trove::FileDataStatus::Value(c.code));
        settle();
        hover(row, Column::Status);
        if (c.text) {
            EXPECT_EQ(simpleTip(), TroveUI::ResString(c.text));
            EXPECT_FALSE(richTipShowing());
        } else {
            EXPECT_TRUE(simpleTip().isEmpty()) << "the rich tip takes over";
            EXPECT_TRUE(richTipShowing());
        }
        row = (row + 1) % 4;
    }
}

TEST_F(ListToolTipTest, stateCellAsksThePanelWhileTheColumnIsInUse)
{
    EXPECT_CALL(*panel, GetTroveStateToolTipText(_)).WillRepeatedly(Return(L"Checked out by Ann"));
    root->SetTroveStateIconIndexListView(1);
    list().viewport()->repaint();
    settle();
    hover(1, Column::TroveState);
    EXPECT_EQ(simpleTip(), QStringLiteral("Checked out by Ann"));
    EXPECT_EQ(list().GetInfoTip(1, Column::TroveState, 8), QStringLiteral("Checked"));
    EXPECT_TRUE(list().GetInfoTip(1, Column::ReferenceName, 100).isEmpty());
    EXPECT_TRUE(list().GetInfoTip(1, Column::TroveState, 0).isEmpty());

    root->SetTroveStateIconIndexListView(0);
    EXPECT_TRUE(list().GetInfoTip(1, Column::TroveState, 100).isEmpty()) << "column not in use";
}

TEST_F(ListToolTipTest, otherCellsShowTheRichTipUntilAPress)
{
    hover(2, Column::SavedPath);
    EXPECT_TRUE(richTipShowing());
    QTest::mousePress(list().viewport(), Qt::LeftButton, Qt::NoModifier, at(2));
    EXPECT_FALSE(richTipShowing());
    QTest::mouseRelease(list().viewport(), Qt::LeftButton, Qt::NoModifier, at(2));

    ScopedSystemVariable off(QStringLiteral("TOOLTIPS"), 0);
    hover(3, Column::SavedPath);
    EXPECT_FALSE(richTipShowing()) << "tool tips are off";
    items[2]->SetReferenceStatus(RefStatus::Blank, Trove::FileDataStatus::Value(3));
    hover(3, Column::Status);
    EXPECT_NE(simpleTip(), TroveUI::ResString(1210));
}

} // namespace
