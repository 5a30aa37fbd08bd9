// The filter: which references the views show, what happens to the selection and to keyboard
// and mouse gestures around hidden rows, and that rows changed, inserted, sorted or removed
// while a filter is on land where they should.

#include "PanelFixture.h"
#include "support/QtPrinters.h"
#include "support/TestXrefItem.h"

#include "items/FileDataStatus.h"
#include "views/TroveListModel_p.h"
#include "views/XrefTreeModel_p.h"

#include <QCoreApplication>
#include <QHeaderView>
#include <QLineEdit>
#include <QTest>
#include <QToolButton>

namespace {

using Items = std::vector<CXrefPanelCtrlItem*>;
using ViewType = CXrefPanelCtrl::FileReferenceViewType;
using DetailsType = CXrefPanelCtrl::DetailsViewType;

class FilterTest : public PanelFixture
{
protected:
    void SetUp() override { open(ViewType::ListView); }

    void open(ViewType view)
    {
        panel = Make(420, 700, view, DetailsType::Details, std::make_shared<CXrefToolBar>());
        root = new TestXrefItem(*panel, true);
        root->sortItem = false;
        panel->BeginUpdate();
        panel->InsertRootItem(*root);
        root->SetText(L"Host");
        grid = add(L"Grid", *root, L"C:\\site\\Grid.dwg");
        building = add(L"Building", *root, L"C:\\site\\Building.dwg");
        level = add(L"Level 1", *building, L"C:\\site\\levels\\Level 1.dwg");
        furniture = add(L"Furniture", *level, L"C:\\fit-out\\Furniture.dwg");
        photo = add(L"Photo", *root, L"C:\\images\\quay.png");
        missing = add(L"Title block", *root, L"C:\\missing\\Title.dwg");
        missing->SetReferenceStatus(RefStatus::Blank, Trove::FileDataStatus::Code3);
        panel->EndUpdate();
        panel->show();
        panel->GetTreeCtrl()->expandAll();
        QCoreApplication::processEvents();
    }

    void TearDown() override
    {
        if (panel)
            panel->DeleteAllItems();
        panel.reset();
    }

    TestXrefItem* add(const std::wstring& name, const TestXrefItem& parent,
                      const std::wstring& path)
    {
        auto* item = new TestXrefItem(*panel);
        panel->InsertItem(*item, parent, nullptr);
        item->SetText(name);
        item->SetSavedPath(path);
        item->SetReferenceStatus(RefStatus::Blank, Trove::FileDataStatus::Code1);
        return item;
    }

    CTroveListCtrl& list() const { return *panel->GetListCtrl(); }
    CXrefTreeCtrl& tree() const { return *panel->GetTreeCtrl(); }

    /// The names the list shows, top to bottom, read through the view's model indexes.
    QStringList shownInList() const
    {
        QStringList names;
        const auto& model = list().Model();
        for (int view = 0; view < model.rowCount(); ++view) {
            const QModelIndex index = model.index(view, Trove::ListViewColumn::ReferenceName);
            names << index.data().toString();
            // Both ways across the mapping agree.
            EXPECT_EQ(model.IndexOfRow(model.RowOf(index), index.column()), index);
        }
        return names;
    }

    bool shownInTree(const CXrefPanelCtrlItem& item) const
    {
        const QModelIndex index = tree().IndexFromItem(item);
        if (!index.isValid())
            return false;
        for (QModelIndex up = index; up.isValid(); up = up.parent()) {
            if (tree().isRowHidden(up.row(), up.parent()))
                return false;
        }
        return tree().IsNodeShown(CXrefTreeModel::NodeOf(index));
    }

    void clickInList(const CXrefPanelCtrlItem& item, Qt::KeyboardModifiers modifiers = {})
    {
        list().Model().FlushChanges();
        const QRect cell =
            list().visualRect(list().IndexFromItem(item, Trove::ListViewColumn::ReferenceName));
        ASSERT_TRUE(cell.isValid());
        QTest::mouseClick(list().viewport(), Qt::LeftButton, modifiers, cell.center());
    }

    std::unique_ptr<TestPanel> panel;
    TestXrefItem* root = nullptr;
    TestXrefItem* grid = nullptr;
    TestXrefItem* building = nullptr;
    TestXrefItem* level = nullptr;
    TestXrefItem* furniture = nullptr;
    TestXrefItem* photo = nullptr;
    TestXrefItem* missing = nullptr;
};

TEST_F(FilterTest, textMatchesNamePathAndStatusIgnoringCase)
{
    const int all = list().GetItemCount();
    panel->SetFilter(QStringLiteral("  grid "), false);
    EXPECT_EQ(shownInList(), QStringList({"Grid"}));
    EXPECT_EQ(panel->GetFilterText(), QStringLiteral("grid"));

    panel->SetFilter(QStringLiteral("SITE\\LEVELS"), false);
    EXPECT_EQ(shownInList(), QStringList({"Level 1"})) << "the saved path counts";

    panel->SetFilter(QStringLiteral("not found"), false);
    EXPECT_EQ(shownInList(), QStringList({"Title block"})) << "the status text counts";

    panel->SetFilter(QStringLiteral("no such thing"), false);
    EXPECT_TRUE(shownInList().isEmpty());
    EXPECT_EQ(list().GetItemCount(), all) << "hidden rows stay in the list";

    panel->SetFilter(QString(), false);
    EXPECT_EQ(shownInList().size(), all);
    EXPECT_FALSE(list().IsItemFilterOn());
}

TEST_F(FilterTest, problemsOnlyKeepsMissingUnresolvedAndOutOfDateFiles)
{
    photo->SetReferenceStatus(RefStatus::NeedsReloading, Trove::FileDataStatus::Code6);
    grid->SetReferenceStatus(RefStatus::Unresolved, Trove::FileDataStatus::Code4);
    panel->SetFilter(QString(), true);
    QStringList shown = shownInList();
    shown.sort();
    EXPECT_EQ(shown, QStringList({"Grid", "Photo", "Title block"}));
    panel->SetFilter(QStringLiteral("photo"), true);
    EXPECT_EQ(shownInList(), QStringList({"Photo"})) << "text and problems both apply";
}

TEST_F(FilterTest, treeKeepsTheBranchesThatLeadToAMatch)
{
    panel->SetFilter(QStringLiteral("furniture"), false);
    QCoreApplication::processEvents();
    // The tree is out of sight in list mode; it is filtered when it comes into view.
    panel->SetReferenceViewType(ViewType::TreeView);
    QCoreApplication::processEvents();
    EXPECT_TRUE(shownInTree(*root));
    EXPECT_TRUE(shownInTree(*building));
    EXPECT_TRUE(shownInTree(*level));
    EXPECT_TRUE(shownInTree(*furniture));
    EXPECT_FALSE(shownInTree(*grid));
    EXPECT_FALSE(shownInTree(*photo));
    EXPECT_FALSE(shownInTree(*missing));

    panel->SetFilter(QStringLiteral("photo"), false);
    EXPECT_FALSE(shownInTree(*building));
    EXPECT_FALSE(shownInTree(*furniture)) << "below a hidden branch";
    EXPECT_TRUE(shownInTree(*photo));

    panel->SetFilter(QString(), false);
    for (const CXrefPanelCtrlItem* item : {root, grid, building, level, furniture, photo, missing})
        EXPECT_TRUE(shownInTree(*item));
}

TEST_F(FilterTest, hiddenReferencesLeaveTheSelectionAndThePanelFollows)
{
    clickInList(*grid);
    clickInList(*photo, Qt::ControlModifier);
    QTest::keyRelease(&list(), Qt::Key_Control);
    ASSERT_EQ(panel->GetSelectedItems().size(), 2u);

    panel->SetFilter(QStringLiteral("photo"), false);
    EXPECT_EQ(list().GetSelectedItems(), Items({photo}));
    EXPECT_EQ(panel->GetSelectedItems(), Items({photo})) << "the panel hears of the change";

    panel->SetFilter(QStringLiteral("grid"), false);
    EXPECT_TRUE(list().GetSelectedItems().empty());
    EXPECT_TRUE(panel->GetSelectedItems().empty());
}

TEST_F(FilterTest, gesturesNeverReachHiddenRows)
{
    panel->SetFilter(QStringLiteral("C:\\site"), false);
    QStringList shown = shownInList();
    ASSERT_EQ(shown.size(), 3) << shown.join(QLatin1Char(',')).toStdString();

    // Select all takes only what is shown.
    list().setFocus();
    QTest::keySequence(&list(), QKeySequence::SelectAll);
    EXPECT_EQ(list().GetSelectedCount(), 3);
    for (const CXrefPanelCtrlItem* item : list().GetSelectedItems())
        EXPECT_TRUE(list().IsRowShown(item->LVItemIndex()));

    // Arrow keys walk the shown rows; a Shift range between two of them takes no hidden row.
    clickInList(*list().ItemOfRow(list().Model().StorageRow(0)));
    QTest::keyClick(&list(), Qt::Key_Down);
    EXPECT_EQ(list().Model().ViewRow(list().GetSelectedItems().front()->LVItemIndex()), 1);
    QTest::keyClick(&list(), Qt::Key_End, Qt::ShiftModifier);
    QTest::keyRelease(&list(), Qt::Key_Shift);
    EXPECT_EQ(list().GetSelectedCount(), 2);

    // The program cannot select a hidden row either.
    EXPECT_FALSE(list().SetItemSelected(photo->LVItemIndex(), true, true));
    EXPECT_FALSE(list().IsRowSelected(photo->LVItemIndex()));
}

TEST_F(FilterTest, rowsChangedOrInsertedWhileFilteredAreTestedAgain)
{
    panel->SetFilter(QStringLiteral("quay"), false);
    EXPECT_EQ(shownInList(), QStringList({"Photo"}));

    // A new reference shows until the event loop comes round, then the filter judges it.
    auto* dock = add(L"Dock", *root, L"C:\\quay\\Dock.dwg");
    auto* shed = add(L"Shed", *root, L"C:\\yard\\Shed.dwg");
    QCoreApplication::processEvents();
    QStringList shown = shownInList();
    shown.sort();
    EXPECT_EQ(shown, QStringList({"Dock", "Photo"}));
    EXPECT_FALSE(list().IsRowShown(shed->LVItemIndex()));

    // A rename out of the filter's reach hides the row; a path into it shows another.
    dock->SetSavedPath(L"C:\\yard\\Dock.dwg");
    grid->SetSavedPath(L"C:\\quay\\Grid.dwg");
    QCoreApplication::processEvents();
    shown = shownInList();
    shown.sort();
    EXPECT_EQ(shown, QStringList({"Grid", "Photo"}));
}

TEST_F(FilterTest, sortingAndRemovingWhileFilteredKeepRowsAndIndexesTogether)
{
    panel->SetFilter(QStringLiteral("dwg"), false);
    clickInList(*level);
    // By name, descending.
    for (int click = 0;
         click < 2 && !(list().GetSortColumn() == Trove::ListViewColumn::ReferenceName &&
                        !list().IsSortAscending());
         ++click)
        emit list().header()->sectionClicked(Trove::ListViewColumn::ReferenceName);
    QStringList shown = shownInList();
    EXPECT_EQ(shown, QStringList({"Title block", "Level 1", "Grid", "Furniture", "Building"}));
    EXPECT_EQ(list().GetSelectedItems(), Items({level})) << "the selection went with its row";
    EXPECT_EQ(list().Model().RowOf(list().currentIndex()), level->LVItemIndex())
        << "so did the focus";

    // Removing a shown and a hidden reference leaves the mapping whole.
    panel->DeleteTreeItem(*grid);
    delete grid;
    grid = nullptr;
    panel->DeleteTreeItem(*photo);
    delete photo;
    photo = nullptr;
    EXPECT_EQ(shownInList(), QStringList({"Title block", "Level 1", "Furniture", "Building"}));

    panel->SetFilter(QString(), false);
    EXPECT_EQ(shownInList().size(), list().GetItemCount());
}

TEST_F(FilterTest, theBarAppliesTypingAfterAPauseEnterAtOnceAndEscapeClears)
{
    EXPECT_FALSE(panel->IsFilterBarShown()) << "hosts ask for the bar";
    panel->ShowFilterBar(true);
    QCoreApplication::processEvents();
    auto* field = panel->GetFilterBar()->findChild<QLineEdit*>(QStringLiteral("filterField"));
    auto* problems = panel->GetFilterBar()->findChild<QToolButton*>(QStringLiteral("problemsOnly"));
    ASSERT_TRUE(field && problems);
    EXPECT_TRUE(panel->GetFilterBar()->isVisible());
    EXPECT_GE(panel->GetCoupledGroupCtrl()->geometry().top(),
              panel->GetFilterBar()->geometry().bottom())
        << "the bar sits above the views";

    QTest::keyClicks(field, QStringLiteral("grid"));
    EXPECT_TRUE(QTest::qWaitFor([&] { return panel->GetFilterText() == "grid"; }, 2000));
    EXPECT_EQ(shownInList(), QStringList({"Grid"}));

    field->setText(QStringLiteral("photo"));
    QTest::keyClick(field, Qt::Key_Return);
    EXPECT_EQ(panel->GetFilterText(), QStringLiteral("photo"));

    QTest::keyClick(field, Qt::Key_Escape);
    EXPECT_TRUE(field->text().isEmpty());
    EXPECT_TRUE(panel->GetFilterText().isEmpty());

    problems->click();
    EXPECT_TRUE(panel->IsProblemsOnlyFilter());
    EXPECT_EQ(shownInList(), QStringList({"Title block"}));

    // A filter set by the host shows in the bar.
    panel->SetFilter(QStringLiteral("level"), false);
    EXPECT_EQ(field->text(), QStringLiteral("level"));
    EXPECT_FALSE(problems->isChecked());
}

} // namespace
