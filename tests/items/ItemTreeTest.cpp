// Inserting and removing items: tree nodes, shared list rows and what the host is told.

#include "ItemFixture.h"

#include "support/ScopedOverrides.h"

#include <QHeaderView>
#include <QSignalSpy>

using testing::_;
using testing::Ref;

namespace {

class ItemTreeTest : public ItemFixture
{};

TEST_F(ItemTreeTest, threeSharersMakeOneRowUntilTheLastGoes)
{
    TestXrefItem* first = Add(L"Detail");
    EXPECT_CALL(*panel, OnSharedRowItemInserted(Ref(*first))).Times(1);
    TestXrefItem* second = Add(L"Detail", nullptr, first);
    EXPECT_CALL(*panel, OnSharedRowItemInserted(Ref(*second))).Times(1);
    TestXrefItem* third = Add(L"Detail", nullptr, second);
    EXPECT_EQ(List().RowCount(), 2);
    EXPECT_EQ(panel->GetUniqueXrefCount(), 1);

    CXrefPanelCtrlItem* lowest = std::min({first, second, third}, std::less<>());
    for (TestXrefItem* item : {first, second, third}) {
        EXPECT_EQ(item->GetReferenceCount(), 3);
        EXPECT_EQ(item->GetListViewItem(), lowest);
        EXPECT_EQ(item->LVItemIndex(), 1);
        EXPECT_EQ(item->GetLVItemReferences().size(), 3u);
    }

    // Each departure hands the row to the remaining sharer with the lowest address.
    EXPECT_CALL(*panel,
                OnSharedRowOwnerChanged(Ref(*std::min<CXrefPanelCtrlItem*>(second, third))));
    panel->DeleteTreeItem(*first);
    delete first;
    EXPECT_EQ(List().RowCount(), 2);
    EXPECT_EQ(third->GetReferenceCount(), 2);

    EXPECT_CALL(*panel, OnSharedRowOwnerChanged(Ref(*third)));
    panel->DeleteTreeItem(*second);
    delete second;
    EXPECT_EQ(third->GetReferenceCount(), 1);
    EXPECT_EQ(third->GetListViewItem(), third);
    testing::Mock::VerifyAndClearExpectations(panel.get());

    EXPECT_CALL(*panel, OnSharedRowOwnerChanged(_)).Times(0);
    EXPECT_CALL(*panel, OnItemRemoved(Ref(*third)));
    panel->DeleteTreeItem(*third);
    EXPECT_EQ(List().RowCount(), 1);
    EXPECT_EQ(third->LVItemIndex(), -1);
    EXPECT_EQ(panel->GetUniqueXrefCount(), 0);
    delete third;
}

TEST_F(ItemTreeTest, rowSharedWithinOneSubtreeGoesWithItsLastHolder)
{
    TestXrefItem* parent = Add(L"Detail");
    TestXrefItem* child = Add(L"Detail", parent, parent);
    // The parent is reported first, while the child still shares the row; the child then leaves
    // a row that only the parent still holds.
    EXPECT_CALL(*panel, OnSharedRowOwnerChanged(Ref(*child)));
    EXPECT_CALL(*panel, OnItemRemoved(_)).Times(0);
    panel->DeleteTreeItem(*parent);
    EXPECT_EQ(parent->GetReferenceCount(), 1);
    EXPECT_EQ(List().RowCount(), 2);
    delete parent;
    EXPECT_EQ(List().RowCount(), 1);
}

TEST_F(ItemTreeTest, lastSharerLeavingRemovesTheRowAndTellsTheHost)
{
    TestXrefItem* ref = Add(L"Detail");
    EXPECT_CALL(*panel, OnItemRemoved(Ref(*ref)));
    EXPECT_CALL(*panel, OnSharedRowOwnerChanged(_)).Times(0);
    panel->DeleteTreeItem(*ref);
    EXPECT_EQ(List().RowCount(), 1);
    EXPECT_EQ(ref->GetReferenceCount(), 0);
    EXPECT_EQ(ref->GetTreeItem(), nullptr);
    delete ref;
}

TEST_F(ItemTreeTest, rowIndexesFollowRemovalsBeforeThem)
{
    std::vector<TestXrefItem*> refs;
    for (int i = 0; i < 6; ++i)
        refs.push_back(Add(L"Ref" + std::to_wstring(i)));
    panel->DeleteTreeItem(*refs[1]);
    delete refs[1];
    panel->DeleteTreeItem(*refs[3]);
    delete refs[3];
    for (TestXrefItem* ref : {refs[0], refs[2], refs[4], refs[5]})
        EXPECT_EQ(Cell(*ref, Column::ReferenceName).toStdWString(), ref->GetText());
    EXPECT_EQ(refs[5]->LVItemIndex(), 4);
}

TEST_F(ItemTreeTest, sortingRenumbersRecords)
{
    TestXrefItem* b = Add(L"B");
    TestXrefItem* c = Add(L"C");
    TestXrefItem* a = Add(L"A");
    List().SortRows([](const CTroveListRow& x, const CTroveListRow& y) { return x.name < y.name; });
    EXPECT_EQ(a->LVItemIndex(), 0);
    EXPECT_EQ(b->LVItemIndex(), 1);
    EXPECT_EQ(c->LVItemIndex(), 2);
    EXPECT_EQ(root->LVItemIndex(), 3);
    EXPECT_EQ(panel->GetListCtrl()->SpecialRow(), 3);
}

TEST_F(ItemTreeTest, rootOpensWithItsFirstChildOnlyDeeperParentsAlways)
{
    CXrefTreeCtrl& tree = *panel->GetTreeCtrl();
    TestXrefItem* first = Add(L"First");
    EXPECT_TRUE(tree.IsExpanded(root->GetTreeItem()));
    tree.collapse(tree.Model().IndexOf(root->GetTreeItem()));
    Add(L"Second");
    EXPECT_FALSE(tree.IsExpanded(root->GetTreeItem())) << "the user's collapse is kept";

    TestXrefItem* child = Add(L"Child", first);
    EXPECT_TRUE(tree.IsExpanded(first->GetTreeItem()));
    tree.collapse(tree.Model().IndexOf(first->GetTreeItem()));
    Add(L"Child 2", first);
    EXPECT_TRUE(tree.IsExpanded(first->GetTreeItem()));
    EXPECT_EQ(panel->GetParentItem(*child), first);
}

TEST_F(ItemTreeTest, childrenAndParents)
{
    TestXrefItem* a = Add(L"A");
    TestXrefItem* b = Add(L"B");
    TestXrefItem* a1 = Add(L"A1", a);
    EXPECT_EQ(panel->GetRootItem(), root);
    EXPECT_EQ(panel->GetChildren(*root), (std::vector<CXrefPanelCtrlItem*>{a, b}));
    EXPECT_EQ(panel->GetChildren(*a), (std::vector<CXrefPanelCtrlItem*>{a1}));
    EXPECT_TRUE(panel->GetChildren(*b).empty());
    EXPECT_EQ(panel->GetParentItem(*root), nullptr);

    // Through the items' narrow view of the panel, the root is its own parent.
    const Trove::ICXrefPanelCtrl& narrow = *panel;
    EXPECT_EQ(&narrow.GetParentItem(static_cast<const Trove::ICXrefPanelCtrlItem&>(*a1)),
              static_cast<Trove::ICXrefPanelCtrlItem*>(a));
    EXPECT_EQ(&narrow.GetParentItem(static_cast<const Trove::ICXrefPanelCtrlItem&>(*root)),
              static_cast<Trove::ICXrefPanelCtrlItem*>(root));
}

TEST_F(ItemTreeTest, subtreeIsReportedDeepestFirstAndDestroyed)
{
    TestXrefItem* a = Add(L"A");
    TestXrefItem* a1 = Add(L"A1", a);
    TestXrefItem* a1x = Add(L"A1x", a1);
    TestXrefItem* a2 = Add(L"A2", a);
    std::vector<CXrefPanelCtrlItem*> order;
    QObject::connect(panel->GetTreeCtrl(), &CXrefTreeCtrl::ItemToBeDeleted,
                     [&](CXrefPanelCtrlItem* item) { order.push_back(item); });
    panel->DeleteTreeItem(*a);
    EXPECT_EQ(order, (std::vector<CXrefPanelCtrlItem*>{a1x, a1, a2}));
    EXPECT_EQ(panel->GetTreeCtrl()->GetCount(), 1);
    EXPECT_EQ(List().RowCount(), 1) << "every descendant's row went with it";
    EXPECT_EQ(a->GetTreeItem(), nullptr);
    delete a; // the named item stays the caller's; ASan reports if the descendants leaked
}

TEST_F(ItemTreeTest, deepChainLeavesDeepestFirstInOneRemoval)
{
    // Nested references can form chains far deeper than the call stack allows one frame per
    // level; removing or destroying such a chain must not recurse.
    constexpr int kDepth = 100000;
    panel->BeginUpdate();
    TestXrefItem* top = Add(L"Level 0");
    std::vector<CXrefPanelCtrlItem*> chain;
    TestXrefItem* parent = top;
    for (int level = 1; level < kDepth; ++level) {
        parent = Add(L"Level " + std::to_wstring(level), parent);
        chain.push_back(parent);
    }
    panel->EndUpdate();
    ASSERT_EQ(panel->GetTreeCtrl()->GetCount(), kDepth + 1);
    // Laid out and painted, the open part of the chain is as deep as the view can take.
    panel->GetTreeCtrl()->resize(300, 400);
    EXPECT_FALSE(panel->GetTreeCtrl()->grab().isNull());

    std::vector<CXrefPanelCtrlItem*> order;
    QObject::connect(panel->GetTreeCtrl(), &CXrefTreeCtrl::ItemToBeDeleted,
                     [&](CXrefPanelCtrlItem* item) { order.push_back(item); });
    QSignalSpy removed(&panel->GetTreeCtrl()->Model(), &QAbstractItemModel::rowsRemoved);
    panel->DeleteTreeItem(*top);
    EXPECT_TRUE(std::equal(order.begin(), order.end(), chain.rbegin(), chain.rend()))
        << "deepest first";
    EXPECT_EQ(removed.count(), 2) << "the descendants in one removal, then the node itself";
    EXPECT_EQ(panel->GetTreeCtrl()->GetCount(), 1);
    EXPECT_EQ(List().RowCount(), 1);
    delete top;
}

TEST_F(ItemTreeTest, subtreeRowsLeaveTheListTogether)
{
    TestXrefItem* drawing = Add(L"Drawing");
    for (int i = 0; i < 300; ++i)
        Add(L"Part " + std::to_wstring(i), drawing);
    TestXrefItem* after = Add(L"After");
    QSignalSpy removed(&List(), &QAbstractItemModel::rowsRemoved);
    std::vector<int> countsSeenByHost;
    EXPECT_CALL(*panel, OnItemRemoved(_)).Times(301).WillRepeatedly([&](CXrefPanelCtrlItem&) {
        countsSeenByHost.push_back(panel->GetUniqueXrefCount());
    });
    panel->DeleteTreeItem(*drawing);
    delete drawing;
    EXPECT_EQ(removed.count(), 1) << "one subtree's rows are one removal for the views";
    EXPECT_EQ(countsSeenByHost.front(), 301) << "each report already counts its row as gone";
    EXPECT_EQ(countsSeenByHost.back(), 1);
    EXPECT_EQ(List().RowCount(), 2);
    EXPECT_EQ(after->LVItemIndex(), 1);
    EXPECT_EQ(Cell(*after, Column::ReferenceName), QStringLiteral("After"));
}

TEST_F(ItemTreeTest, scatteredSubtreeRowsLeaveTheOthersInOrder)
{
    TestXrefItem* drawing = Add(L"Drawing");
    std::vector<TestXrefItem*> others;
    for (int i = 0; i < 40; ++i) {
        Add(L"Part " + std::to_wstring(i), drawing);
        others.push_back(Add(L"Other " + std::to_wstring(i)));
    }
    // Sorted by name the parts and the others alternate with each other.
    List().SortRows([](const CTroveListRow& x, const CTroveListRow& y) {
        return x.name.section(QLatin1Char(' '), 1).toInt() <
               y.name.section(QLatin1Char(' '), 1).toInt();
    });
    CTroveListCtrl& list = *panel->GetListCtrl();
    const int nameWidth = list.header()->sectionSize(Column::ReferenceName);
    panel->DeleteTreeItem(*drawing);
    delete drawing;
    ASSERT_EQ(List().RowCount(), 41);
    for (int row = 0; row < List().RowCount(); ++row) {
        const CTroveListCtrlItem* record = List().Row(row)->data;
        ASSERT_NE(record, nullptr) << row;
        EXPECT_EQ(record->Row(), row);
    }
    for (std::size_t i = 1; i < others.size(); ++i)
        EXPECT_LT(others[i - 1]->LVItemIndex(), others[i]->LVItemIndex()) << i;
    EXPECT_EQ(Cell(*others[7], Column::ReferenceName), QStringLiteral("Other 7"));
    EXPECT_EQ(list.header()->sectionSize(Column::ReferenceName), nameWidth);
    EXPECT_EQ(list.model()->rowCount(), 41);
}

TEST_F(ItemTreeTest, deleteAllEmptiesBothViewsAndDestroysEveryItem)
{
    TestXrefItem* a = Add(L"A");
    Add(L"A shared", a, a);
    Add(L"B");
    panel->DeleteAllItems();
    EXPECT_EQ(panel->GetTreeCtrl()->GetCount(), 0);
    EXPECT_EQ(List().RowCount(), 0);
    EXPECT_EQ(panel->GetRootItem(), nullptr);
    EXPECT_TRUE(panel->GetSelectedItems().empty());

    // The panel is ready for a reload.
    root = new TestXrefItem(*panel, true);
    panel->InsertRootItem(*root);
    EXPECT_EQ(List().RowCount(), 1);
}

TEST_F(ItemTreeTest, itemDestroyedWithoutRemovalLeavesNoDanglingRow)
{
    TestXrefItem* shared = Add(L"Shared");
    auto* other = new TestXrefItem(*panel);
    panel->InsertItem(*other, *root, shared);
    delete other; // skipped DeleteTreeItem
    EXPECT_EQ(shared->GetReferenceCount(), 1);
    EXPECT_EQ(shared->GetListViewItem(), shared);
    EXPECT_EQ(List().RowCount(), 2);

    auto* alone = new TestXrefItem(*panel);
    panel->InsertItem(*alone, *root, nullptr);
    EXPECT_EQ(List().RowCount(), 3);
    delete alone;
    EXPECT_EQ(List().RowCount(), 2) << "the last share took its row along";
    EXPECT_EQ(panel->GetChildren(*root), std::vector<CXrefPanelCtrlItem*>({shared}))
        << "a deleted item's node goes with it";
}

TEST_F(ItemTreeTest, panelDestroyedBeforeItsItems)
{
    auto other = MockXrefPanel::Created();
    auto hostItem = std::make_unique<TestXrefItem>(*other, true);
    other->InsertRootItem(*hostItem);
    auto ref = std::make_unique<TestXrefItem>(*other);
    other->InsertItem(*ref, *hostItem, nullptr);
    other.reset();
    EXPECT_EQ(ref->GetTreeItem(), nullptr);
    EXPECT_EQ(ref->LVItemIndex(), -1);
    EXPECT_EQ(ref->GetReferenceCount(), 1) << "the record lives on with its last holder";
}

TEST_F(ItemTreeTest, selectedItemsAreForgottenWhenRemoved)
{
    TestXrefItem* ref = Add(L"Detail");
    panel->OnItemsSelected({ref}, true);
    ASSERT_EQ(panel->GetSelectedItems().size(), 1u);
    panel->DeleteTreeItem(*ref);
    EXPECT_TRUE(panel->GetSelectedItems().empty());
    delete ref;
}

} // namespace

TEST(TreeView, levelsStepFurtherAtHigherDpiScales)
{
    const auto indentationAt = [](double scale) {
        ScopedDpiScale dpi(scale);
        return CXrefTreeCtrl(false).indentation();
    };
    const int normal = indentationAt(1.0);
    EXPECT_GT(normal, 0);
    EXPECT_EQ(indentationAt(2.0), 2 * normal);
}
