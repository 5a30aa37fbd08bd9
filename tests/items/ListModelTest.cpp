// The list rows' storage: shared, typed and free cell texts, batches and bad row numbers.

#include "ItemFixture.h"

#include "services/TroveUIFunctions.h"

#include <QSignalSpy>

namespace {

class ListModelTest : public ItemFixture
{};

TEST_F(ListModelTest, manyDistinctTypeTextsStillReadBack)
{
    std::vector<TestXrefItem*> refs;
    for (int i = 0; i < 5000; ++i) {
        TestXrefItem* ref = Add(L"R");
        ref->SetType(L"Type " + std::to_wstring(i));
        refs.push_back(ref);
    }
    for (int i : {0, 4094, 4095, 4999})
        EXPECT_EQ(refs[i]->GetType(), L"Type " + std::to_wstring(i));
    refs[4999]->SetType(L"");
    EXPECT_EQ(refs[4999]->GetType(), L"");
}

TEST_F(ListModelTest, outOfRangeRowsAndColumnsAreIgnored)
{
    CTroveListModel& model = List();
    EXPECT_FALSE(model.SetCellText(-1, 2, QStringLiteral("x")));
    EXPECT_FALSE(model.SetCellText(1, 2, QStringLiteral("x")));
    EXPECT_FALSE(model.SetCellText(0, 8, QStringLiteral("x")));
    EXPECT_FALSE(model.SetSubItemImage(0, 2, 3)) << "only columns 1 and 3 carry images";
    EXPECT_EQ(model.SubItemImage(5, 1), -2);
    EXPECT_EQ(model.CellText(0, -1), QString());
    EXPECT_EQ(model.ItemState(7, 0xFFFF), 0u);
    EXPECT_FALSE(model.RemoveRow(3));
    EXPECT_EQ(model.Row(1), nullptr);
}

TEST_F(ListModelTest, batchAnnouncesRowsOnceAndKeepsIndexesRight)
{
    CTroveListModel& model = List();
    QSignalSpy inserted(&model, &QAbstractItemModel::rowsInserted);
    panel->BeginUpdate();
    std::vector<TestXrefItem*> refs;
    for (int i = 0; i < 50; ++i)
        refs.push_back(Add(L"Ref" + std::to_wstring(i)));
    EXPECT_EQ(model.rowCount(), 1) << "the views hear of the rows at the end";
    EXPECT_EQ(refs[49]->LVItemIndex(), 50);
    EXPECT_EQ(refs[49]->GetText(), L"Ref49");
    panel->EndUpdate();
    EXPECT_EQ(inserted.count(), 1);
    EXPECT_EQ(model.rowCount(), 51);
    EXPECT_TRUE(panel->GetTreeCtrl()->IsExpanded(root->GetTreeItem()));
    EXPECT_EQ(panel->GetTreeCtrl()->Model().rowCount(
                  panel->GetTreeCtrl()->Model().IndexOf(root->GetTreeItem())),
              50);

    // A removal in the middle of a batch first tells the views about what came before it.
    panel->BeginUpdate();
    TestXrefItem* late = Add(L"Late");
    TestXrefItem* child = Add(L"Child", late);
    panel->DeleteTreeItem(*refs[0]);
    delete refs[0];
    EXPECT_EQ(late->LVItemIndex(), 50);
    panel->EndUpdate();
    EXPECT_EQ(model.rowCount(), 52);
    EXPECT_EQ(Cell(*child, Column::ReferenceName), QStringLiteral("Child"));
    EXPECT_TRUE(panel->GetTreeCtrl()->IsExpanded(late->GetTreeItem()));
}

TEST_F(ListModelTest, cellWritesAreAnnouncedTogether)
{
    TestXrefItem* a = Add(L"A");
    TestXrefItem* b = Add(L"B");
    List().FlushChanges();
    QSignalSpy changed(&List(), &QAbstractItemModel::dataChanged);
    a->SetType(L"Attach");
    b->SetSize(100);
    a->SetSavedPath(L"a.dwg");
    EXPECT_EQ(changed.count(), 0);
    List().FlushChanges();
    ASSERT_EQ(changed.count(), 1);
    EXPECT_EQ(changed[0][0].toModelIndex().row(), a->LVItemIndex());
    EXPECT_EQ(changed[0][1].toModelIndex().row(), b->LVItemIndex());
}

} // namespace

#include "support/ScopedOverrides.h"

#include <QHelpEvent>
#include <QToolTip>

namespace {

TEST_F(ListModelTest, cellsOfferNoToolTipsOfTheirOwn)
{
    // Which tip a cell shows, if any, is the list's decision (it follows the host's tool-tip
    // setting); the rows must not bring a plain tip with every cell's text.
    ScopedSystemVariable tips(QStringLiteral("TOOLTIPS"), QVariant(0));
    TestXrefItem* ref = Add(L"Detail");
    ref->SetSavedPath(L"C:\\Work\\detail.dwg");
    CTroveListCtrl& list = *panel->GetListCtrl();
    list.resize(600, 200);
    list.show();
    QToolTip::hideText();
    const QRect cell = list.visualRect(List().index(ref->LVItemIndex(), Column::SavedPath));
    QHelpEvent event(QEvent::ToolTip, cell.center(), list.viewport()->mapToGlobal(cell.center()));
    QApplication::sendEvent(list.viewport(), &event);
    EXPECT_TRUE(QToolTip::text().isEmpty()) << QToolTip::text().toStdString();
    QToolTip::hideText();
}

} // namespace
