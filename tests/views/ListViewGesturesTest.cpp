// The list view's selection gestures and the ItemsSelected, ContextMenu and command events they
// raise, clicked and typed at the rows' visual rectangles.

#include "ListViewFixture.h"

#include <QCursor>
#include <QHeaderView>
#include <QScrollBar>

namespace {

using Names = std::vector<std::wstring>;

class ListViewGesturesTest : public ListViewFixture
{
protected:
    void SetUp() override
    {
        ListViewFixture::SetUp();
        if (HasFatalFailure())
            return;
        FillNumbered(9); // rows 0 (Host) to 9 (R9)
        raised.Clear();
    }

    // Rows selected by clicks: the first plainly, the others with Ctrl; then Ctrl is let go.
    void selectByClicks(const std::vector<int>& rows)
    {
        for (std::size_t i = 0; i < rows.size(); ++i)
            click(rows[i], Column::ReferenceName, i ? Qt::ControlModifier : Qt::NoModifier);
        QTest::keyRelease(&list(), Qt::Key_Control);
        raised.Clear();
    }
};

TEST_F(ListViewGesturesTest, plainClickSelectsTheRowAndReportsOnceAsTheUsers)
{
    click(3);
    EXPECT_EQ(selectedRows(), std::vector<int>({3}));
    ASSERT_EQ(raised.selected.size(), 1u);
    EXPECT_EQ(raised.selected[0].names, Names({L"R3"}));
    EXPECT_FALSE(raised.selected[0].flag);

    // Only the name cell may show the selection, but any cell of the row takes the click.
    click(5, Column::SavedPath);
    EXPECT_EQ(selectedRows(), std::vector<int>({5}));
}

TEST_F(ListViewGesturesTest, pressThatChangesNothingIsReportedBeforeTheClick)
{
    click(3);
    raised.Clear();
    click(3);
    ASSERT_EQ(raised.selected.size(), 2u);
    for (const auto& event : raised.selected) {
        EXPECT_EQ(event.names, Names({L"R3"}));
        EXPECT_FALSE(event.flag);
    }
}

TEST_F(ListViewGesturesTest, clickOnEmptySpaceClearsAndReportsNothingSelected)
{
    click(3);
    raised.Clear();
    clickAt(emptySpace());
    EXPECT_TRUE(selectedRows().empty());
    ASSERT_EQ(raised.selected.size(), 1u);
    EXPECT_TRUE(raised.selected[0].names.empty());
}

TEST_F(ListViewGesturesTest, ctrlClicksToggleRowsAndReportWhenCtrlIsReleased)
{
    click(2);
    raised.Clear();
    click(4, Column::ReferenceName, Qt::ControlModifier);
    click(6, Column::Size, Qt::ControlModifier);
    click(2, Column::ReferenceName, Qt::ControlModifier);
    EXPECT_EQ(selectedRows(), std::vector<int>({4, 6}));
    EXPECT_TRUE(raised.selected.empty()) << "held back while Ctrl is down";

    QTest::keyRelease(&list(), Qt::Key_Control);
    ASSERT_EQ(raised.selected.size(), 1u);
    EXPECT_EQ(raised.selected[0].names, Names({L"R4", L"R6"}));
    EXPECT_FALSE(raised.selected[0].flag);
    EXPECT_TRUE(list().GetSelectionOrigin()) << "a key release makes the origin the program's";

    QTest::keyRelease(&list(), Qt::Key_Control);
    EXPECT_EQ(raised.selected.size(), 1u) << "nothing was pending any more";
}

TEST_F(ListViewGesturesTest, shiftClickRanges)
{
    struct Case
    {
        const char* what;
        std::vector<int> before; ///< selected by clicks, the first plainly
        int hitRow;
        int hitColumn;
        std::vector<int> after;
    };
    const auto range = [](int first, int last) {
        std::vector<int> rows;
        for (int row = first; row <= last; ++row)
            rows.push_back(row);
        return rows;
    };
    const Case cases[] = {
        {"nothing selected: the hit row alone", {}, 4, Column::ReferenceName, {4}},
        {"beyond the last: from the last, not from the anchor",
         {5, 2},
         8,
         Column::ReferenceName,
         range(5, 8)},
        {"above the first: to the first", {5, 2}, 1, Column::ReferenceName, range(1, 2)},
        {"inside: from the first to the hit row", {2, 6}, 4, Column::ReferenceName, range(2, 4)},
        {"inside on the first row: bounds kept", {2, 6}, 2, Column::ReferenceName, range(2, 6)},
        {"inside, clicked column equal to the last row: bounds kept",
         {2, 5},
         3,
         Column::Type,
         range(2, 5)},
        {"inside, clicked column not equal to the last row", {2, 5}, 3, Column::Size, range(2, 3)},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.what);
        list().ClearSelection();
        if (!c.before.empty())
            selectByClicks(c.before);
        click(c.hitRow, c.hitColumn, Qt::ShiftModifier);
        EXPECT_EQ(selectedRows(), c.after);
        EXPECT_TRUE(raised.selected.empty()) << "held back while Shift is down";
        QTest::keyRelease(&list(), Qt::Key_Shift);
        ASSERT_EQ(raised.selected.size(), 1u);
        EXPECT_EQ(raised.selected[0].names.size(), c.after.size());
        raised.Clear();
    }
}

TEST_F(ListViewGesturesTest, loggedOutTheHostRowNeverJoinsSeveralRows)
{
    ScopedLogin login(false);
    click(0);
    EXPECT_EQ(selectedRows(), std::vector<int>({0})) << "alone it may be selected";

    click(2, Column::ReferenceName, Qt::ControlModifier);
    EXPECT_EQ(selectedRows(), std::vector<int>({2}));
    QTest::keyRelease(&list(), Qt::Key_Control);

    click(3);
    click(0, Column::ReferenceName, Qt::ShiftModifier);
    EXPECT_EQ(selectedRows(), std::vector<int>({1, 2, 3}));
    QTest::keyRelease(&list(), Qt::Key_Shift);

    // A Shift range over every row is a select-all, which leaves the host row out as well.
    click(0);
    click(9, Column::ReferenceName, Qt::ShiftModifier);
    EXPECT_EQ(selectedRows().size(), 9u);
    EXPECT_FALSE(list().IsRowSelected(0));
    QTest::keyRelease(&list(), Qt::Key_Shift);

    keyWhileHeld(Qt::Key_A, Qt::ControlModifier);
    EXPECT_EQ(list().GetSelectedCount(), 9);
    EXPECT_FALSE(list().IsRowSelected(0));
}

TEST_F(ListViewGesturesTest, loggedInTheHostRowIsARowLikeAnyOther)
{
    ScopedLogin login(true);
    click(0);
    click(2, Column::ReferenceName, Qt::ControlModifier);
    EXPECT_EQ(selectedRows(), std::vector<int>({0, 2}));
    QTest::keyRelease(&list(), Qt::Key_Control);
    keyWhileHeld(Qt::Key_A, Qt::ControlModifier);
    EXPECT_EQ(list().GetSelectedCount(), 10);
}

TEST_F(ListViewGesturesTest, selectAllReportsOnceWithTheUsersOrigin)
{
    ScopedLogin login(false);
    // The context command: at once.
    EXPECT_TRUE(list().OnContextMenuCommand(Trove::HostCommand18));
    ASSERT_EQ(raised.selected.size(), 1u);
    EXPECT_EQ(raised.selected[0].names.size(), 9u);
    EXPECT_FALSE(raised.selected[0].flag);
    EXPECT_TRUE(raised.commands.empty()) << "select all is the list's own command";

    // Ctrl+A: once Ctrl is let go.
    list().ClearSelection();
    raised.Clear();
    QTest::keyPress(&list(), Qt::Key_Control);
    keyWhileHeld(Qt::Key_A, Qt::ControlModifier);
    EXPECT_TRUE(raised.selected.empty());
    QTest::keyRelease(&list(), Qt::Key_Control);
    ASSERT_EQ(raised.selected.size(), 1u);
    EXPECT_EQ(raised.selected[0].names.size(), 9u);
}

TEST_F(ListViewGesturesTest, upAndDownReportOnReleaseOtherKeysMoveSilently)
{
    click(2);
    raised.Clear();

    QTest::keyPress(&list(), Qt::Key_Down);
    EXPECT_EQ(selectedRows(), std::vector<int>({3}));
    EXPECT_TRUE(raised.selected.empty()) << "not on the press";
    QTest::keyRelease(&list(), Qt::Key_Down);
    ASSERT_EQ(raised.selected.size(), 1u);
    EXPECT_EQ(raised.selected[0].names, Names({L"R3"}));
    EXPECT_FALSE(raised.selected[0].flag);

    key(Qt::Key_End);
    EXPECT_EQ(selectedRows(), std::vector<int>({9}));
    key(Qt::Key_Home);
    EXPECT_EQ(selectedRows(), std::vector<int>({0}));
    EXPECT_EQ(raised.selected.size(), 1u) << "Home, End and the page keys do not report";

    // Shift+Down grows the range from where it started and waits for Shift.
    keyWhileHeld(Qt::Key_Down, Qt::ShiftModifier);
    keyWhileHeld(Qt::Key_Down, Qt::ShiftModifier);
    EXPECT_EQ(selectedRows(), std::vector<int>({0, 1, 2}));
    EXPECT_EQ(raised.selected.size(), 1u);
    QTest::keyRelease(&list(), Qt::Key_Shift);
    ASSERT_EQ(raised.selected.size(), 2u);
    EXPECT_EQ(raised.selected[1].names, Names({L"Host", L"R1", L"R2"}));

    // Ctrl moves the focus alone; Ctrl+Space takes the focused row.
    keyWhileHeld(Qt::Key_Down, Qt::ControlModifier);
    keyWhileHeld(Qt::Key_Down, Qt::ControlModifier);
    EXPECT_EQ(selectedRows(), std::vector<int>({0, 1, 2}));
    keyWhileHeld(Qt::Key_Space, Qt::ControlModifier);
    EXPECT_EQ(selectedRows(), std::vector<int>({0, 1, 2, 4}));
}

TEST_F(ListViewGesturesTest, rightClickKeepsOrClearsTheSelectionByColumn)
{
    // The repository-state column is only there while the first row has a state image.
    root->SetTroveStateIconIndexListView(1);
    list().viewport()->repaint();
    settle();
    ASSERT_GT(cell(4, Column::TroveState).width(), 0);

    struct Case
    {
        int column;
        bool keeps;
    };
    const Case cases[] = {
        {Column::TroveState, false}, {Column::TypeIcon, true},   {Column::ReferenceName, true},
        {Column::Status, true},      {Column::Size, false},      {Column::Type, true},
        {Column::Date, false},       {Column::SavedPath, false},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.column);
        selectByClicks({2, 4});
        const QPoint point = at(4, c.column);
        rightClick(point);
        const Names expected = c.keeps ? Names({L"R2", L"R4"}) : Names();
        EXPECT_EQ(selectedNames(), expected);
        ASSERT_EQ(raised.selected.size(), 1u);
        EXPECT_EQ(raised.selected[0].names, expected);
        EXPECT_TRUE(raised.selected[0].flag) << "the right click reports as the program's";
        ASSERT_EQ(raised.menus.size(), 1u);
        EXPECT_EQ(raised.menus[0].names, expected);
        EXPECT_TRUE(raised.menus[0].flag);
        // In the list's own coordinates, header included, not the viewport's.
        EXPECT_EQ(raised.menus[0].point, list().viewport()->mapTo(&list(), point));
    }

    selectByClicks({2, 4});
    rightClick(emptySpace());
    EXPECT_TRUE(selectedNames().empty()) << "empty space clears";
    ASSERT_EQ(raised.menus.size(), 1u);
    EXPECT_TRUE(raised.menus[0].names.empty());

    raised.Clear();
    rightClick(at(6, Column::ReferenceName));
    EXPECT_EQ(selectedNames(), Names({L"R6"})) << "an unselected row is taken alone";
}

TEST_F(ListViewGesturesTest, keyboardContextMenuOpensWhereThePointerIs)
{
    click(3);
    raised.Clear();
    const QPoint inList(120, 90);
    QCursor::setPos(list().mapToGlobal(inList));
    QContextMenuEvent menu(QContextMenuEvent::Keyboard, QPoint(-1, -1), QCursor::pos());
    QApplication::sendEvent(list().viewport(), &menu);
    ASSERT_EQ(raised.menus.size(), 1u);
    EXPECT_EQ(raised.menus[0].point, list().mapFromGlobal(QCursor::pos()));
    EXPECT_EQ(raised.menus[0].names, Names({L"R3"}));
}

TEST_F(ListViewGesturesTest, contextCommandsRoutedAreExactlyTheListsOwn)
{
    click(2);
    raised.Clear();
    std::vector<int> routed;
    for (int command = 0; command <= 1045; ++command) {
        if (command == Trove::HostCommand18)
            continue;
        if (list().OnContextMenuCommand(command))
            routed.push_back(command);
    }
    std::vector<int> expected = {3,  4,  5,  6,  7,  8,  9,  10, 11, 12, 13, 14, 15,
                                 16, 17, 19, 20, 21, 22, 23, 24, 25, 26, 27, 29, 31,
                                 32, 33, 34, 36, 37, 38, 39, 43, 44, 46, 47};
    for (int command = 1000; command <= 1040; ++command)
        expected.push_back(command);
    EXPECT_EQ(routed, expected);
    ASSERT_EQ(raised.commands.size(), expected.size());
    EXPECT_EQ(raised.commands.front().second, Names({L"R2"}));
}

TEST_F(ListViewGesturesTest, programSelectionReportsOnlyWhenVisibleAndNotIgnored)
{
    TestXrefItem* r5 = static_cast<TestXrefItem*>(list().ItemOfRow(5));
    list().SelectItem(*r5);
    EXPECT_EQ(selectedNames(), Names({L"R5"}));
    ASSERT_EQ(raised.selected.size(), 1u);
    EXPECT_EQ(list().currentIndex().row(), 5);

    raised.Clear();
    list().SetIgnoreSelectionNotifications(true);
    list().SelectItem(*static_cast<TestXrefItem*>(list().ItemOfRow(6)));
    list().SelectAll();
    EXPECT_TRUE(raised.selected.empty());
    // The user's own gesture is reported again.
    click(2);
    EXPECT_FALSE(list().GetIgnoreSelectionNotifications());
    EXPECT_EQ(raised.selected.size(), 1u);

    raised.Clear();
    list().hide();
    list().SelectItem(*r5);
    EXPECT_EQ(selectedNames(), Names({L"R5"}));
    EXPECT_TRUE(raised.selected.empty());

    EXPECT_TRUE(list().SetItemSelected(7, true, false));
    EXPECT_FALSE(list().SetItemSelected(7, true, false)) << "already selected";
    EXPECT_TRUE(list().GetSelectionOrigin());
    EXPECT_FALSE(list().SetItemSelected(99, true, true));
    EXPECT_TRUE(raised.selected.empty());
}

TEST_F(ListViewGesturesTest, rubberBandSelectsTheRowsItCrosses)
{
    QTest::mousePress(list().viewport(), Qt::LeftButton, Qt::NoModifier, at(2));
    dragMove(at(3, Column::Size));
    dragMove(at(5, Column::Status));
    EXPECT_EQ(selectedRows(), std::vector<int>({2, 3, 4, 5}));
    dragMove(at(4, Column::Status));
    EXPECT_EQ(selectedRows(), std::vector<int>({2, 3, 4}));
    QTest::mouseRelease(list().viewport(), Qt::LeftButton, Qt::NoModifier, at(4, Column::Status));
    ASSERT_EQ(raised.selected.size(), 1u);
    EXPECT_EQ(raised.selected[0].names, Names({L"R2", L"R3", L"R4"}));

    // Dragging upwards works the same.
    raised.Clear();
    QTest::mousePress(list().viewport(), Qt::LeftButton, Qt::NoModifier, at(7));
    dragMove(at(6));
    QTest::mouseRelease(list().viewport(), Qt::LeftButton, Qt::NoModifier, at(6));
    EXPECT_EQ(selectedRows(), std::vector<int>({6, 7}));
}

TEST_F(ListViewGesturesTest, rubberBandWithCtrlInvertsWhatWasSelected)
{
    selectByClicks({1, 3});
    QTest::mousePress(list().viewport(), Qt::LeftButton, Qt::ControlModifier, at(3));
    dragMove(at(5), Qt::ControlModifier);
    EXPECT_EQ(selectedRows(), std::vector<int>({1, 4, 5}));
    QTest::mouseRelease(list().viewport(), Qt::LeftButton, Qt::ControlModifier, at(5));
    EXPECT_TRUE(raised.selected.empty());
    QTest::keyRelease(&list(), Qt::Key_Control);
    ASSERT_EQ(raised.selected.size(), 1u);
    EXPECT_EQ(raised.selected[0].names, Names({L"R1", L"R4", L"R5"}));
}

TEST_F(ListViewGesturesTest, rubberBandScrollsWhenThePointerLeavesTheList)
{
    for (int i = 10; i <= 80; ++i)
        Add(L"R" + std::to_wstring(i));
    settle();
    QScrollBar* vertical = list().verticalScrollBar();
    ASSERT_GT(vertical->maximum(), 5);
    ASSERT_EQ(vertical->value(), 0);

    QTest::mousePress(list().viewport(), Qt::LeftButton, Qt::NoModifier, at(2));
    const QPoint below(at(2).x(), list().viewport()->height() + 30);
    for (int move = 0; move < 4; ++move)
        dragMove(below);
    const int scrolled = vertical->value();
    EXPECT_GT(scrolled, 0);
    // The band runs from the pressed row to the pointer, just below the rows in sight.
    const int bottomRow = list().indexAt(QPoint(5, list().viewport()->height() - 1)).row();
    ASSERT_GE(bottomRow, 0);
    const std::vector<int> rows = selectedRows();
    ASSERT_FALSE(rows.empty());
    EXPECT_EQ(rows.front(), 2);
    EXPECT_EQ(int(rows.size()), rows.back() - 2 + 1) << "one block of rows";
    EXPECT_GE(rows.back(), bottomRow);
    EXPECT_LE(rows.back(), bottomRow + 2);

    // Back above the top: one row up per move.
    const QPoint above(at(2).x(), -10);
    dragMove(above);
    EXPECT_LT(vertical->value(), scrolled);
    QTest::mouseRelease(list().viewport(), Qt::LeftButton, Qt::NoModifier, above);
}

TEST_F(ListViewGesturesTest, headerClickAnnouncesTheNewOrderBeforeSorting)
{
    Names orderWhenAnnounced;
    QObject::connect(&list(), &CTroveListCtrl::SortCriteriaChanged, panel.get(),
                     [&] { orderWhenAnnounced = rowNames(); });
    // Sizes against the names, so that the size order differs from the rows' order.
    for (int row = 1; row <= 9; ++row)
        static_cast<TestXrefItem*>(list().ItemOfRow(row))->SetSize(1000 - 100 * row);
    const Names before = rowNames();
    QHeaderView* header = list().header();
    const auto clickHeader = [&](int column) {
        QTest::mouseClick(
            header->viewport(), Qt::LeftButton, Qt::NoModifier,
            QPoint(header->sectionViewportPosition(column) + header->sectionSize(column) / 2,
                   header->height() / 2));
    };

    clickHeader(Column::Size);
    ASSERT_EQ(raised.sorts.size(), 1u);
    EXPECT_EQ(raised.sorts[0], std::make_pair(int(Column::Size), true));
    EXPECT_EQ(orderWhenAnnounced, before);
    EXPECT_EQ(rowNames().back(), L"R1") << "largest last";
    EXPECT_EQ(list().GetSortColumn(), Column::Size);

    clickHeader(Column::Size);
    EXPECT_EQ(raised.sorts.back(), std::make_pair(int(Column::Size), false));
    EXPECT_EQ(rowNames().front(), L"R1");

    // Another column always starts ascending.
    clickHeader(Column::ReferenceName);
    EXPECT_EQ(raised.sorts.back(), std::make_pair(int(Column::ReferenceName), true));
    EXPECT_EQ(header->sortIndicatorSection(), Column::ReferenceName);
}

} // namespace
