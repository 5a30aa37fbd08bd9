// The list view's double click and in-place edits: which cells open what, and the events an
// edit raises from its start to its end.

#include "ListViewFixture.h"

#include "resources/TroveResources.h"
#include "views/editors/InPlaceEditCtrl.h"

#include <QScrollBar>

namespace {

using Edit = ListSignals::Edit;

class ListEditTest : public ListViewFixture
{
protected:
    void SetUp() override
    {
        ListViewFixture::SetUp();
        if (HasFatalFailure())
            return;
        items = Fill({L"alpha", L"beta", L"gamma"});
        for (TestXrefItem* item : items)
            item->editable = [this](Props property, int column) {
                asked.emplace_back(property, column);
                return true;
            };
        raised.Clear();
    }

    CInPlaceEditCtrl* editor() const
    {
        return list().viewport()->findChild<CInPlaceEditCtrl*>(QString(),
                                                               Qt::FindDirectChildrenOnly);
    }
    /// Runs the editors' own deletion.
    static void flushDeletes()
    {
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }

    static void expectEdit(const Edit& edit, const char* what, Props property,
                           const std::wstring& before = {}, const std::wstring& after = {})
    {
        EXPECT_EQ(edit.what, what);
        EXPECT_EQ(edit.property, property);
        EXPECT_EQ(edit.before, before);
        EXPECT_EQ(edit.after, after);
    }

    std::vector<TestXrefItem*> items;
    std::vector<std::pair<Props, int>> asked;
};

TEST_F(ListEditTest, doubleClickOnTheStatusReportsTheRowAndEditsNothing)
{
    doubleClick(2, Column::Status);
    ASSERT_EQ(raised.statusDoubleClicks.size(), 1u);
    EXPECT_EQ(raised.statusDoubleClicks[0], L"beta");
    EXPECT_FALSE(list().IsEditing());
    EXPECT_TRUE(raised.edits.empty());
    EXPECT_TRUE(list().IsRowSelected(2));
}

TEST_F(ListEditTest, nameEditStartsOverTheCellAndReportsTheNewText)
{
    doubleClick(1, Column::ReferenceName);
    ASSERT_TRUE(list().IsEditing());
    ASSERT_EQ(asked.size(), 1u);
    EXPECT_EQ(asked[0], std::make_pair(Props::Name, int(Column::ReferenceName)));
    ASSERT_EQ(raised.edits.size(), 1u);
    expectEdit(raised.edits[0], "starting", Props::Name, L"alpha");

    CInPlaceEditCtrl* edit = editor();
    ASSERT_NE(edit, nullptr);
    const QRect cellRect = cell(1, Column::ReferenceName);
    EXPECT_EQ(edit->geometry(), QRect(cellRect.left() + 1, cellRect.top() + 1, cellRect.width() - 1,
                                      cellRect.height() - 2));
    EXPECT_EQ(edit->text(), QStringLiteral("alpha"));

    edit->selectAll();
    QTest::keyClicks(edit, QStringLiteral("renamed"));
    QTest::keyClick(edit, Qt::Key_Return);
    ASSERT_EQ(raised.edits.size(), 2u);
    expectEdit(raised.edits[1], "edited", Props::Name, L"alpha", L"renamed");
    EXPECT_FALSE(list().IsEditing());
    // The list shows what the host decides, not what was typed.
    EXPECT_EQ(model().CellText(1, Column::ReferenceName), QStringLiteral("alpha"));
    flushDeletes();
    EXPECT_EQ(editor(), nullptr);
}

TEST_F(ListEditTest, editEndingWithoutTextIsAborted)
{
    struct Case
    {
        const char* what;
        Qt::Key ending;
        bool clear;
    };
    for (const Case& c :
         {Case{"emptied", Qt::Key_Return, true}, Case{"cancelled", Qt::Key_Escape, false}}) {
        SCOPED_TRACE(c.what);
        raised.Clear();
        ASSERT_TRUE(list().EditSubItem(2, Column::ReferenceName));
        ASSERT_NE(editor(), nullptr);
        if (c.clear)
            editor()->clear();
        QTest::keyClick(editor(), c.ending);
        ASSERT_EQ(raised.edits.size(), 2u);
        expectEdit(raised.edits[1], "aborted", Props::Name);
        flushDeletes();
    }
}

TEST_F(ListEditTest, f2EditsTheNameOfTheOneSelectedRow)
{
    click(3);
    raised.Clear();
    key(Qt::Key_F2);
    ASSERT_TRUE(list().IsEditing());
    expectEdit(raised.edits.at(0), "starting", Props::Name, L"gamma");

    // Enter or Escape in the list takes the focus back, which ends the edit with its text.
    QTest::keyClick(&list(), Qt::Key_Escape);
    EXPECT_FALSE(list().IsEditing());
    ASSERT_EQ(raised.edits.size(), 2u);
    expectEdit(raised.edits[1], "edited", Props::Name, L"gamma", L"gamma");
    flushDeletes();

    click(1);
    click(2, Column::ReferenceName, Qt::ControlModifier);
    QTest::keyRelease(&list(), Qt::Key_Control);
    raised.Clear();
    key(Qt::Key_F2);
    EXPECT_FALSE(list().IsEditing()) << "two rows selected";
    EXPECT_TRUE(raised.edits.empty());
}

TEST_F(ListEditTest, typeEditTogglesBetweenItsTwoTextsWithoutAnEditor)
{
    const std::wstring attach = TroveUI::ResStringW(1072);
    const std::wstring overlay = TroveUI::ResStringW(1074);
    ASSERT_FALSE(attach.empty());
    ASSERT_NE(attach, overlay);
    items[0]->SetType(attach);
    items[1]->SetType(overlay);
    items[2]->SetType(L"Something else");

    const std::pair<int, std::wstring> cases[] = {{1, overlay}, {2, attach}, {3, attach}};
    for (const auto& [row, toggled] : cases) {
        SCOPED_TRACE(row);
        raised.Clear();
        asked.clear();
        doubleClick(row, Column::Type);
        EXPECT_FALSE(list().IsEditing()) << "the edit ends at once";
        ASSERT_EQ(asked.size(), 1u);
        EXPECT_EQ(asked[0], std::make_pair(Props::Type, int(Column::Type)));
        ASSERT_EQ(raised.edits.size(), 2u);
        const std::wstring before = model().CellText(row, Column::Type).toStdWString();
        expectEdit(raised.edits[0], "starting", Props::Type, before);
        expectEdit(raised.edits[1], "edited", Props::Type, before, toggled);
        flushDeletes();
        EXPECT_EQ(editor(), nullptr);
    }
}

TEST_F(ListEditTest, onlyNameAndTypeAreEditedAndOnlyWhenTheItemAllows)
{
    for (int column : {int(Column::TroveState), int(Column::TypeIcon), int(Column::Size),
                       int(Column::Date), int(Column::SavedPath)}) {
        doubleClick(1, column);
        EXPECT_FALSE(list().IsEditing()) << column;
    }
    EXPECT_TRUE(asked.empty()) << "the item is not even asked";

    items[0]->editable = [](Props, int) { return false; };
    doubleClick(1, Column::ReferenceName);
    doubleClick(1, Column::Type);
    EXPECT_FALSE(list().IsEditing());
    EXPECT_TRUE(raised.edits.empty());
    EXPECT_FALSE(list().EditSubItem(42, Column::ReferenceName));
}

TEST_F(ListEditTest, editScrollsItsCellIntoViewAndFollowsTheListsSize)
{
    list().resize(120, 300);
    settle();
    QScrollBar* horizontal = list().horizontalScrollBar();
    ASSERT_GT(horizontal->maximum(), 0);
    horizontal->setValue(horizontal->maximum());
    ASSERT_LT(cell(1, Column::ReferenceName).right(), 0) << "the name column is out of sight";

    ASSERT_TRUE(list().EditSubItem(1, Column::ReferenceName));
    ASSERT_NE(editor(), nullptr);
    const QRect shown = editor()->geometry();
    EXPECT_GE(shown.left(), 0);
    EXPECT_TRUE(list().viewport()->rect().contains(shown)) << "clipped to the list";

    list().resize(400, 300);
    settle();
    const QRect cellRect = cell(1, Column::ReferenceName);
    EXPECT_EQ(editor()->geometry().left(), cellRect.left() + 1);
    EXPECT_EQ(editor()->geometry().width(), cellRect.width() - 1);
    QTest::keyClick(editor(), Qt::Key_Escape);
}

} // namespace
