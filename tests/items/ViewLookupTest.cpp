// Finding items from the views' indexes and points, and the way back, after sorting and removal.

#include "ItemFixture.h"

#include <QHeaderView>

namespace {

class ViewLookupTest : public ItemFixture
{
protected:
    void SetUp() override
    {
        ItemFixture::SetUp();
        a = Add(L"A");
        b = Add(L"B", a);
        c = Add(L"C");
        shared = Add(L"A again", c, a);
    }

    // Shows the view so that visual rectangles and points mean something.
    template <typename View> void Show(View& view)
    {
        view.resize(400, 300);
        view.show();
        QCoreApplication::processEvents();
    }

    TestXrefItem* a = nullptr;
    TestXrefItem* b = nullptr;
    TestXrefItem* c = nullptr;
    TestXrefItem* shared = nullptr;
};

TEST_F(ViewLookupTest, listIndexAndItemRoundTripSurvivesSorting)
{
    CTroveListCtrl& list = *panel->GetListCtrl();
    List().SortRows([](const CTroveListRow& x, const CTroveListRow& y) { return x.name > y.name; });
    for (TestXrefItem* item : {root, a, b, c}) {
        const QModelIndex index = list.IndexFromItem(*item, Column::Size);
        ASSERT_TRUE(index.isValid());
        EXPECT_EQ(index.row(), item->LVItemIndex());
        EXPECT_EQ(index.column(), int(Column::Size));
        EXPECT_EQ(list.ItemFromIndex(index), item->GetListViewItem());
    }
    // A shared row stands for its lowest-address sharer, whichever of them asks.
    EXPECT_EQ(list.IndexFromItem(*shared), list.IndexFromItem(*a));
    EXPECT_EQ(list.ItemFromIndex(list.IndexFromItem(*shared)),
              std::min<CXrefPanelCtrlItem*>(a, shared));
    EXPECT_EQ(list.ItemFromIndex(list.IndexFromItem(*b)), b);
}

TEST_F(ViewLookupTest, listLookupsRefuseForeignAndStaleIndexes)
{
    CTroveListCtrl& list = *panel->GetListCtrl();
    EXPECT_EQ(list.ItemFromIndex(QModelIndex()), nullptr);
    EXPECT_EQ(list.ItemFromIndex(panel->GetTreeCtrl()->Model().index(0, 0)), nullptr)
        << "an index of another model";
    TestXrefItem loose(*panel);
    EXPECT_FALSE(list.IndexFromItem(loose).isValid()) << "an item never inserted has no row";

    const int rows = list.GetItemCount();
    panel->DeleteTreeItem(*c); // c's subtree goes, c itself stays ours
    EXPECT_EQ(list.GetItemCount(), rows - 1) << "only c's own row goes; A's row keeps a";
    EXPECT_FALSE(list.IndexFromItem(*c).isValid());
    delete c;
}

TEST_F(ViewLookupTest, treeIndexAndItemRoundTrip)
{
    CXrefTreeCtrl& tree = *panel->GetTreeCtrl();
    for (TestXrefItem* item : {root, a, b, c, shared}) {
        const QModelIndex index = tree.IndexFromItem(*item);
        ASSERT_TRUE(index.isValid());
        EXPECT_EQ(tree.ItemFromIndex(index), item);
    }
    EXPECT_EQ(tree.IndexFromItem(*b).parent(), tree.IndexFromItem(*a));
    EXPECT_EQ(tree.ItemFromIndex(QModelIndex()), nullptr);
    EXPECT_EQ(tree.ItemFromIndex(List().index(0, 0)), nullptr) << "an index of another model";

    // A node handle from another panel's tree is not this tree's.
    auto other = MockXrefPanel::Created();
    auto* stranger = new TestXrefItem(*other, true);
    other->InsertRootItem(*stranger);
    EXPECT_FALSE(tree.IndexFromItem(*stranger).isValid());
    other->DeleteAllItems();
}

TEST_F(ViewLookupTest, itemAtFindsTheRowOrNodeUnderThePoint)
{
    CTroveListCtrl& list = *panel->GetListCtrl();
    Show(list);
    for (TestXrefItem* item : {a, b, c}) {
        const QRect cell = list.visualRect(list.IndexFromItem(*item, Column::Date));
        EXPECT_EQ(list.ItemAt(cell.center()), item->GetListViewItem());
    }
    EXPECT_EQ(list.ItemAt(QPoint(5, list.viewport()->height() - 2)), nullptr) << "empty space";

    CXrefTreeCtrl& tree = *panel->GetTreeCtrl();
    tree.expandAll();
    Show(tree);
    const QRect node = tree.visualRect(tree.IndexFromItem(*b));
    EXPECT_EQ(tree.ItemAt(node.center()), b);
    EXPECT_EQ(tree.ItemAt(QPoint(5, tree.viewport()->height() - 2)), nullptr);
}

} // namespace
