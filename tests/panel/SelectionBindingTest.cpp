// What follows a selection in the panel: the other view, the details pane, the preview, the
// path operations and the message strip; the edit round trip to the host; and removals that
// leave no pointer to a departed item behind.

#include "PanelFixture.h"
#include "support/TestXrefItem.h"

#include "framework/ZuUiCommandEvent.h"
#include "framework/ZuUiMenu.h"
#include "resources/TroveResources.h"
#include "services/XrefMessageBox.h"
#include "toolbar/XrefBmpComboButton.h"
#include "views/TroveListModel_p.h"
#include "views/XrefPropListCtrl.h"

#include <QCoreApplication>
#include <QTest>

namespace {

using testing::_;
using testing::Invoke;
using testing::Return;
using Props = Trove::XrefProperties;
using Items = std::vector<CXrefPanelCtrlItem*>;
using ViewType = CXrefPanelCtrl::FileReferenceViewType;
using DetailsType = CXrefPanelCtrl::DetailsViewType;

constexpr unsigned kGrayed = CZuUiMenu::Grayed;

class SelectionBindingTest : public PanelFixture
{
protected:
    void SetUp() override { open(ViewType::ListView); }

    /// A panel with @p view in front; with a @p sortColumn the list sorts by it.
    void open(ViewType view, int sortColumn = -1)
    {
        if (panel)
            panel->DeleteAllItems();
        panel.reset();
        toolBar = std::make_shared<CXrefToolBar>();
        panel = sortColumn < 0 ? Make(420, 700, view, DetailsType::Details, toolBar)
                               : Make(420, 700, false, toolBar, sortColumn, true);
        root = new TestXrefItem(*panel, true);
        root->sortItem = false; // the host drawing stays on top
        panel->BeginUpdate();
        panel->InsertRootItem(*root);
        root->SetText(L"Host");
        a = add(L"A", L"Attach");
        b = add(L"B", L"Overlay");
        c = add(L"C", L"Attach");
        panel->EndUpdate();
        panel->show();
        QCoreApplication::processEvents();
    }

    void TearDown() override
    {
        if (panel)
            panel->DeleteAllItems();
        panel.reset();
    }

    TestXrefItem* add(const std::wstring& name, const std::wstring& type)
    {
        auto* item = new TestXrefItem(*panel);
        panel->InsertItem(*item, *root, nullptr);
        item->SetText(name);
        item->SetType(type);
        item->SetSavedPath(L"C:\\p\\" + name + L".dwg");
        item->fileType = 1;
        return item;
    }

    CXrefPropListCtrl& details() const { return *panel->GetDetailsCtrl(); }
    QString value(Props property) const
    {
        const int row = details().RowOf(property);
        return row < 0 ? QStringLiteral("<no row>") : details().GetItemText(row, 1);
    }
    bool editable(Props property) const
    {
        const CXrefProperty* row = details().PropertyAt(details().RowOf(property));
        return row && details().IsEditable(*row);
    }
    QString strip() const { return panel->GetMessageBox()->Message(); }
    std::optional<unsigned> state(unsigned command) const
    {
        return toolBar->MenuCommandState(command);
    }
    bool pathButton() const { return toolBar->ChangePathButton()->isEnabled(); }

    /// A real click on @p item's name cell in the list.
    void clickInList(const CXrefPanelCtrlItem& item, Qt::KeyboardModifiers modifiers = {})
    {
        CTroveListCtrl& list = *panel->GetListCtrl();
        list.Model().FlushChanges();
        const QRect cell =
            list.visualRect(list.IndexFromItem(item, Trove::ListViewColumn::ReferenceName));
        ASSERT_TRUE(cell.isValid());
        QTest::mouseClick(list.viewport(), Qt::LeftButton, modifiers, cell.center());
        if (modifiers & Qt::ControlModifier)
            QTest::keyRelease(&list, Qt::Key_Control);
    }

    std::shared_ptr<CXrefToolBar> toolBar;
    std::unique_ptr<TestPanel> panel;
    TestXrefItem* root = nullptr;
    TestXrefItem* a = nullptr;
    TestXrefItem* b = nullptr;
    TestXrefItem* c = nullptr;
};

TEST_F(SelectionBindingTest, clickInTheListFillsTheDetailsAndMovesTheTreeCaret)
{
    a->editable = [](Props property, int) { return property == Props::SavedPath; };
    clickInList(*a);
    EXPECT_EQ(panel->GetSelectedItems(), Items({a}));
    EXPECT_EQ(details().GetItemCount(), 8) << "name to file version, one row each";
    EXPECT_EQ(details().RowOf(Props::FileVersion), 7) << "rows in property order";
    EXPECT_EQ(value(Props::Name), QStringLiteral("A"));
    EXPECT_EQ(value(Props::Type), QStringLiteral("Attach"));
    EXPECT_EQ(value(Props::SavedPath), QStringLiteral("C:\\p\\A.dwg"));
    EXPECT_TRUE(editable(Props::SavedPath));
    EXPECT_FALSE(editable(Props::Name)) << "the item refused the rename";
    EXPECT_EQ(panel->GetTreeCtrl()->GetSelectedItems(), Items({a}));

    // A value that changes while the item is selected reaches its row; another item's does not.
    a->SetSavedPath(L"D:\\moved.dwg");
    b->SetSavedPath(L"D:\\other.dwg");
    EXPECT_EQ(value(Props::SavedPath), QStringLiteral("D:\\moved.dwg"));
    EXPECT_TRUE(panel->NeedToSetDetailFor(*a));
    EXPECT_FALSE(panel->NeedToSetDetailFor(*b));
}

TEST_F(SelectionBindingTest, severalItemsShowWhatTheyShareAndWhereTheyDiffer)
{
    const QString varies = TroveUI::ResString(1133);
    panel->OnItemsSelected({a, c}, false);
    EXPECT_EQ(value(Props::Name), varies);
    EXPECT_EQ(value(Props::Type), QStringLiteral("Attach"));
    EXPECT_EQ(value(Props::SavedPath), QString()) << "other values are left empty";
    EXPECT_TRUE(editable(Props::Type)) << "drawings alone may change their type together";
    EXPECT_FALSE(editable(Props::SavedPath));

    panel->OnItemsSelected({a, b}, false);
    EXPECT_EQ(value(Props::Type), varies);

    c->SetType(L"attach");
    panel->OnItemsSelected({a, c}, false);
    EXPECT_EQ(value(Props::Type), varies) << "type texts compare case by case";

    // Only the second and later items are put to the exclusion test.
    a->excluded = true;
    panel->OnItemsSelected({a, c}, false);
    EXPECT_TRUE(editable(Props::Type));
    panel->OnItemsSelected({c, a}, false);
    EXPECT_FALSE(editable(Props::Type));
    a->excluded = false;
    c->fileType = 2;
    panel->OnItemsSelected({a, c}, false);
    EXPECT_FALSE(editable(Props::Type)) << "not every item is a drawing";

    panel->OnItemsSelected({}, false);
    EXPECT_EQ(details().GetItemCount(), 0) << "nothing selected, no rows";
}

TEST_F(SelectionBindingTest, treeInFrontSelectsTheListRowsWithoutASecondReport)
{
    open(ViewType::TreeView);
    int listReports = 0;
    QObject::connect(panel->GetListCtrl(), &CTroveListCtrl::ItemsSelected,
                     [&listReports] { ++listReports; });
    panel->GetTreeCtrl()->SelectItem(b->GetTreeItem());
    EXPECT_EQ(panel->GetSelectedItems(), Items({b}));
    EXPECT_EQ(panel->GetListCtrl()->GetSelectedItems(), Items({b}));
    EXPECT_EQ(listReports, 0);
    EXPECT_EQ(value(Props::Name), QStringLiteral("B"));

    // Several items reach the tree only by program; its caret then goes.
    panel->OnItemsSelected({a, b}, true);
    EXPECT_TRUE(panel->GetTreeCtrl()->GetSelectedItems().empty());
    EXPECT_EQ(panel->GetSelectedItems(), Items({a, b})) << "clearing the caret keeps the record";
}

TEST_F(SelectionBindingTest, pathOperationsFollowTheSelectionAndCompareMode)
{
    a->pathTypes = std::array<bool, 3>{true, false, true};
    panel->OnItemsSelected({a}, false);
    EXPECT_TRUE(pathButton());
    EXPECT_EQ(state(1178), 0u) << "first flag: make absolute";
    EXPECT_EQ(state(1177), kGrayed) << "second flag: make relative";
    EXPECT_EQ(state(1176), 0u) << "third flag: remove path";
    EXPECT_EQ(state(1180), 0u);
    EXPECT_EQ(state(1181), 0u);

    panel->OnItemsSelected({a, b}, false);
    EXPECT_EQ(state(1180), kGrayed) << "one new path cannot serve several references";
    for (unsigned command : {1176u, 1177u, 1178u, 1181u})
        EXPECT_EQ(state(command), 0u) << command;

    panel->OnItemsSelected({root}, false);
    EXPECT_FALSE(pathButton()) << "the host drawing has no path to change";
    b->excluded = true;
    panel->OnItemsSelected({root, b}, false);
    EXPECT_FALSE(pathButton());
    panel->OnItemsSelected({root, b, c}, false);
    EXPECT_TRUE(pathButton());

    ScopedSystemVariable compare(QStringLiteral("DWGCOMPAREMODE"), 3);
    panel->OnItemsSelected({c}, false);
    EXPECT_FALSE(pathButton());
    panel->BeginUpdate();
    panel->EndUpdate();
    EXPECT_EQ(state(1082), kGrayed) << "no reloading all while comparing";
}

TEST_F(SelectionBindingTest, reloadAllNeedsSomethingToReload)
{
    EXPECT_EQ(state(1082), 0u);
    panel->DeleteAllItems();
    root = new TestXrefItem(*panel, true);
    panel->BeginUpdate();
    panel->InsertRootItem(*root);
    panel->EndUpdate();
    EXPECT_EQ(state(1082), kGrayed) << "the host drawing alone";
}

TEST_F(SelectionBindingTest, endUpdateSortsTheListInFront)
{
    open(ViewType::ListView, Trove::ListViewColumn::ReferenceName);
    CTroveListCtrl& list = *panel->GetListCtrl();
    panel->BeginUpdate();
    TestXrefItem* first = add(L"0first", L"Attach");
    panel->EndUpdate();
    EXPECT_EQ(list.ItemOfRow(1), first) << "sorted by name, after the host drawing";
}

TEST_F(SelectionBindingTest, stripTellsTheNoteOrTheTypeOfTheSelection)
{
    const auto text = [](unsigned id) { return TroveUI::ResString(id); };
    a->fileType = 5;
    panel->OnItemsSelected({a}, false);
    EXPECT_EQ(strip(), text(1069));
    a->fileType = 6;
    panel->OnItemsSelected({a}, false);
    EXPECT_EQ(strip(), text(1017));
    a->needsNote = true;
    panel->OnItemsSelected({a}, false);
    EXPECT_EQ(strip(), text(1064)) << "the note comes before the type";
    a->noteSuppressed = true;
    panel->OnItemsSelected({a}, false);
    EXPECT_EQ(strip(), text(1017));

    b->fileType = 6;
    panel->OnItemsSelected({a, b}, false);
    EXPECT_EQ(strip(), text(1018));
    a->fileType = 5;
    b->fileType = 5;
    panel->OnItemsSelected({a, b}, false);
    EXPECT_EQ(strip(), text(1070));
    b->needsNote = true;
    panel->OnItemsSelected({a, b}, false);
    EXPECT_EQ(strip(), text(1065));
    root->needsNote = true;
    panel->OnItemsSelected({root}, false);
    EXPECT_EQ(strip(), QString()) << "the host drawing never carries the note";

    panel->GetMessageBox()->SetMessage(QStringLiteral("kept"));
    panel->OnItemsSelected({}, false);
    EXPECT_EQ(strip(), QStringLiteral("kept")) << "an empty selection leaves the strip";
}

TEST_F(SelectionBindingTest, acceptedRenameRoundTripsNewTextFirst)
{
    panel->OnItemsSelected({a}, false);
    CTroveListCtrl& list = *panel->GetListCtrl();
    emit list.PropertyEditStarting(Props::Name, L"A");
    EXPECT_EQ(strip(), TroveUI::ResString(1066));
    EXPECT_FALSE(panel->GetEnableSelect());

    // While the edit runs, a selection is only recorded.
    panel->OnItemsSelected({b}, false);
    EXPECT_EQ(value(Props::Name), QStringLiteral("A"));
    panel->OnItemsSelected({a}, false);

    EXPECT_CALL(*panel, OnApplyPropertyEdit(Items({a}), Props::Name, std::wstring(L"A2"),
                                            std::wstring(L"A")))
        .WillOnce(
            Invoke([](const Items& items, Props, const std::wstring& value, const std::wstring&) {
                static_cast<TestXrefItem*>(items.front())->SetText(value);
                return true;
            }));
    emit list.PropertyEdited(Props::Name, L"A", L"A2"); // the view gives the old text first
    EXPECT_TRUE(panel->GetEnableSelect());
    EXPECT_EQ(value(Props::Name), QStringLiteral("A2"));
    EXPECT_EQ(strip(), QString());
}

TEST_F(SelectionBindingTest, refusedEditRollsBackAndAbortEmptiesTheStrip)
{
    panel->OnItemsSelected({a}, false);
    CXrefPropListCtrl& list = details();
    emit list.PropertyEditStarting(Props::SavedPath, L"C:\\p\\A.dwg");
    EXPECT_CALL(*panel, OnApplyPropertyEdit(_, Props::SavedPath, _, _)).WillOnce(Return(false));
    emit list.PropertyEdited(Props::SavedPath, L"C:\\p\\A.dwg", L"bad");
    EXPECT_EQ(value(Props::SavedPath), QStringLiteral("C:\\p\\A.dwg"));

    // An empty previous value is taken without asking.
    emit list.PropertyEditStarting(Props::SavedPath, L"");
    EXPECT_CALL(*panel, OnApplyPropertyEdit(_, _, _, _)).Times(0);
    emit list.PropertyEdited(Props::SavedPath, L"", L"new");

    panel->GetMessageBox()->SetMessage(QStringLiteral("note"));
    emit panel->GetTreeCtrl()->PropertyEditStarting(Props::Status, L"x");
    emit panel->GetTreeCtrl()->PropertyEditAborted(Props::Status);
    EXPECT_EQ(strip(), QString()) << "an abort empties the strip for any property";
    EXPECT_TRUE(panel->GetEnableSelect());
}

TEST_F(SelectionBindingTest, typeEditOfSeveralItemsAppliesToAll)
{
    panel->OnItemsSelected({a, c}, false);
    emit details().PropertyEditStarting(Props::Type, L"Attach");
    EXPECT_CALL(*panel, OnApplyPropertyEdit(Items({a, c}), Props::Type, std::wstring(L"Overlay"),
                                            std::wstring(L"Attach")))
        .WillOnce(Return(true));
    emit details().PropertyEdited(Props::Type, L"Attach", L"Overlay");

    // With a selection whose type may not change, an edit has no target and reaches nobody.
    panel->OnItemsSelected({a, b, root}, false);
    emit details().PropertyEditStarting(Props::Type, L"x");
    EXPECT_CALL(*panel, OnApplyPropertyEdit(_, _, _, _)).Times(0);
    emit details().PropertyEdited(Props::Type, L"x", L"y");
    EXPECT_TRUE(panel->GetEnableSelect()) << "selecting works again whatever the edit was";
}

TEST_F(SelectionBindingTest, selectItemAndSelectMissingXref)
{
    panel->SelectItem(b);
    EXPECT_EQ(panel->GetSelectedItems(), Items({b}));
    EXPECT_EQ(panel->GetListCtrl()->GetSelectedItems(), Items({b}));
    EXPECT_EQ(value(Props::Name), QStringLiteral("B"));
    panel->SelectItem(nullptr);
    EXPECT_TRUE(panel->GetSelectedItems().empty());
    EXPECT_TRUE(panel->GetListCtrl()->GetSelectedItems().empty());

    panel->SelectMissingXref();
    EXPECT_TRUE(panel->GetSelectedItems().empty()) << "nothing is missing";
    c->SetReferenceStatus(RefStatus::Unresolved, Trove::FileDataStatus::Value());
    b->SetReferenceStatus(RefStatus::Unresolved, Trove::FileDataStatus::Value());
    panel->SelectMissingXref();
    const CXrefPanelCtrlItem* first =
        panel->GetListCtrl()->ItemOfRow(std::min(b->LVItemIndex(), c->LVItemIndex()));
    EXPECT_EQ(panel->GetSelectedItems(), Items({const_cast<CXrefPanelCtrlItem*>(first)}));
    EXPECT_EQ(details().currentIndex().row(), details().RowOf(Props::SavedPath));
}

TEST_F(SelectionBindingTest, contextMenuCommandOfTheListReachesTheHostWithTheSelection)
{
    clickInList(*b);
    EXPECT_CALL(*panel, OnMenuSelection(Trove::MenuItems(31), Items({b})));
    CZuUiCommandEvent::Post(panel->GetListCtrl(), 31);
    QCoreApplication::sendPostedEvents(panel->GetListCtrl(), CZuUiCommandEvent::EventType());
}

// --- Ownership ----------------------------------------------------------------------------------

TEST_F(SelectionBindingTest, hostDeletingASelectedItemLeavesNoPointerBehind)
{
    panel->OnItemsSelected({a, b}, false);
    delete a;
    EXPECT_EQ(panel->GetSelectedItems(), Items({b}));
    EXPECT_EQ(panel->GetUniqueXrefCount(), 2) << "its row went";
    EXPECT_EQ(panel->GetChildren(*root), Items({b, c}));
    delete b;
    EXPECT_TRUE(panel->GetSelectedItems().empty());
    EXPECT_EQ(details().GetItemCount(), 0);
    panel->UpdateCurrentSelection();

    // An edit whose item went is applied to nobody.
    panel->OnItemsSelected({c}, false);
    emit details().PropertyEditStarting(Props::SavedPath, L"x");
    delete c;
    EXPECT_CALL(*panel, OnApplyPropertyEdit(_, _, _, _)).Times(0);
    emit details().PropertyEdited(Props::SavedPath, L"x", L"y");
}

TEST_F(SelectionBindingTest, hostMayDeleteItemsWhenToldTheyWereRemoved)
{
    auto* nested = new TestXrefItem(*panel);
    panel->InsertItem(*nested, *a, nullptr);
    EXPECT_CALL(*panel, OnItemRemoved(_)).WillRepeatedly(Invoke([this](CXrefPanelCtrlItem& item) {
        if (&item == a)
            delete &item;
    }));
    panel->DeleteTreeItem(*a);
    EXPECT_EQ(panel->GetChildren(*root), Items({b, c}));
    // The item below stays the host's: out of the tree, in the list until the host deletes it.
    EXPECT_EQ(nested->GetTreeItem(), nullptr);
    EXPECT_EQ(panel->GetUniqueXrefCount(), 3);
    delete nested;
    EXPECT_EQ(panel->GetUniqueXrefCount(), 2);

    // The root too: the panel then does not delete it a second time.
    EXPECT_CALL(*panel, OnItemRemoved(_)).WillRepeatedly(Invoke([this](CXrefPanelCtrlItem& item) {
        if (&item == root)
            delete &item;
    }));
    panel->DeleteAllItems();
    EXPECT_EQ(panel->GetRootItem(), nullptr);
}

TEST_F(SelectionBindingTest, hostMayEmptyThePanelFromAMenuCommand)
{
    clickInList(*b);
    EXPECT_CALL(*panel, OnMenuSelection(_, _))
        .WillOnce(Invoke([this](Trove::MenuItems, const Items&) { panel->DeleteAllItems(); }));
    CZuUiCommandEvent::Post(panel->GetListCtrl(), 31);
    QCoreApplication::sendPostedEvents(panel->GetListCtrl(), CZuUiCommandEvent::EventType());
    EXPECT_EQ(panel->GetListCtrl()->GetItemCount(), 0);
    EXPECT_TRUE(panel->GetSelectedItems().empty());
}

TEST_F(SelectionBindingTest, itemsOutlivingThePanelTouchNothing)
{
    auto other = Make(300, 400);
    auto host = std::make_unique<TestXrefItem>(*other, true);
    other->InsertRootItem(*host);
    auto kept = std::make_unique<TestXrefItem>(*other);
    other->InsertItem(*kept, *host, nullptr);
    other->OnItemsSelected({kept.get()}, false);
    other.reset();
    kept->SetSavedPath(L"x");
    kept->SetSize(10);
    kept->SetText(L"after");
    EXPECT_EQ(kept->GetTreeItem(), nullptr);
}

} // namespace
