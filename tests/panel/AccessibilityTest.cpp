// What assistive technology sees of the panel: a name and a role for every view, pane, button
// and editor, and the list as a table whose rows report their cells and their selected state
// (which the list keeps in its rows, not in a selection model).

#include "PanelFixture.h"
#include "support/QtPrinters.h"
#include "support/TestXrefItem.h"

#include "services/XrefMessageBox.h"
#include "toolbar/XrefBmpComboButton.h"
#include "views/TroveListModel_p.h"
#include "views/XrefPreview.h"
#include "views/XrefPropListCtrl.h"

#include <QAccessible>
#include <QCoreApplication>
#include <QLineEdit>
#include <QTest>
#include <QToolButton>

namespace {

using Items = std::vector<CXrefPanelCtrlItem*>;
using ViewType = CXrefPanelCtrl::FileReferenceViewType;
using DetailsType = CXrefPanelCtrl::DetailsViewType;
using Col = Trove::ListViewColumn;

class AccessibilityTest : public PanelFixture
{
protected:
    void SetUp() override
    {
        toolBar = std::make_shared<CXrefToolBar>();
        panel = Make(420, 700, ViewType::ListView, DetailsType::Details, toolBar);
        root = new TestXrefItem(*panel, true);
        root->sortItem = false;
        panel->BeginUpdate();
        panel->InsertRootItem(*root);
        root->SetText(L"Host");
        for (const wchar_t* name : {L"Grid", L"Columns", L"Survey"}) {
            auto* item = new TestXrefItem(*panel);
            panel->InsertItem(*item, *root, nullptr);
            item->SetText(name);
            item->SetReferenceStatus(RefStatus::Blank, Trove::FileDataStatus::Code1);
            item->editable = [](Trove::XrefProperties, int) { return true; };
            items.push_back(item);
        }
        panel->EndUpdate();
        panel->ShowFilterBar(true);
        panel->show();
        QCoreApplication::processEvents();
    }

    void TearDown() override
    {
        panel->DeleteAllItems();
        panel.reset();
    }

    static QAccessibleInterface* of(QObject* object)
    {
        return QAccessible::queryAccessibleInterface(object);
    }
    static QString name(QObject* object)
    {
        QAccessibleInterface* face = of(object);
        return face ? face->text(QAccessible::Name) : QString();
    }
    QAccessibleTableInterface* table() const { return of(panel->GetListCtrl())->tableInterface(); }
    /// The name cells of the list as the table reports them.
    QStringList namesInTable() const
    {
        QStringList names;
        for (int row = 0; row < table()->rowCount(); ++row)
            names << table()->cellAt(row, Col::ReferenceName)->text(QAccessible::Name);
        return names;
    }
    void click(const CXrefPanelCtrlItem& item, Qt::KeyboardModifiers modifiers = {})
    {
        CTroveListCtrl& list = *panel->GetListCtrl();
        list.Model().FlushChanges();
        const QRect cell = list.visualRect(list.IndexFromItem(item, Col::ReferenceName));
        QTest::mouseClick(list.viewport(), Qt::LeftButton, modifiers, cell.center());
        if (modifiers)
            QTest::keyRelease(&list, Qt::Key_Control);
    }

    std::shared_ptr<CXrefToolBar> toolBar;
    std::unique_ptr<TestPanel> panel;
    TestXrefItem* root = nullptr;
    std::vector<TestXrefItem*> items;
};

TEST_F(AccessibilityTest, everyViewPaneButtonAndFieldHasANameAndARole)
{
    struct Expected
    {
        QObject* object;
        QAccessible::Role role;
    };
    const Expected expected[] = {
        {panel->GetListCtrl(), QAccessible::Table},
        {panel->GetTreeCtrl(), QAccessible::Tree},
        {panel->GetDetailsCtrl(), QAccessible::Tree},
        {panel->GetPreviewCtrl(), QAccessible::Client},
        {toolBar->RefreshButton(), QAccessible::Button},
        {toolBar->ChangePathButton(), QAccessible::Button},
        {toolBar->HelpButton(), QAccessible::Button},
        {panel->GetFilterBar()->findChild<QLineEdit*>(), QAccessible::EditableText},
        {panel->GetFilterBar()->findChild<QToolButton*>(), QAccessible::CheckBox},
        {panel->GetMessageBox().get(), QAccessible::NoRole},
    };
    for (const Expected& e : expected) {
        ASSERT_NE(e.object, nullptr);
        EXPECT_FALSE(name(e.object).isEmpty()) << e.object->metaObject()->className();
        if (e.role != QAccessible::NoRole) {
            EXPECT_EQ(of(e.object)->role(), e.role) << e.object->metaObject()->className();
        }
    }
    EXPECT_NE(name(panel->GetListCtrl()), name(panel->GetTreeCtrl()))
        << "the two views can be told apart";
    EXPECT_EQ(name(toolBar->RefreshButton()), QStringLiteral("Refresh"));
}

TEST_F(AccessibilityTest, listTableReportsCellsAndTheRowsOwnSelection)
{
    QAccessibleTableInterface* t = table();
    ASSERT_NE(t, nullptr);
    EXPECT_EQ(t->columnCount(), Col::Count);
    EXPECT_EQ(t->rowCount(), 4);
    EXPECT_TRUE(namesInTable().contains(QStringLiteral("Grid")));
    const int gridRow = panel->GetListCtrl()->Model().ViewRow(items[0]->LVItemIndex());
    EXPECT_EQ(t->cellAt(gridRow, Col::Status)->text(QAccessible::Name), QStringLiteral("Loaded"));
    EXPECT_EQ(t->columnDescription(Col::Status), QStringLiteral("Status"));
    EXPECT_FALSE(t->columnDescription(Col::TypeIcon).isEmpty()) << "picture columns are named too";

    click(*items[0]);
    click(*items[2], Qt::ControlModifier);
    QList<int> expected = {gridRow, panel->GetListCtrl()->Model().ViewRow(items[2]->LVItemIndex())};
    std::sort(expected.begin(), expected.end());
    EXPECT_EQ(t->selectedRows(), expected);
    EXPECT_TRUE(t->isRowSelected(gridRow));
    QAccessibleInterface* cell = t->cellAt(gridRow, Col::ReferenceName);
    EXPECT_TRUE(cell->state().selected);
    EXPECT_TRUE(cell->tableCellInterface()->isSelected());
    EXPECT_EQ(cell->tableCellInterface()->rowIndex(), gridRow);
    EXPECT_FALSE(t->cellAt(panel->GetListCtrl()->Model().ViewRow(items[1]->LVItemIndex()),
                           Col::ReferenceName)
                     ->state()
                     .selected);

    // Selecting through the interface is a selection like any other: the panel follows.
    const int columnsRow = panel->GetListCtrl()->Model().ViewRow(items[1]->LVItemIndex());
    EXPECT_TRUE(t->selectRow(columnsRow));
    EXPECT_EQ(panel->GetSelectedItems(), Items({items[1]}));
    EXPECT_EQ(t->selectedRows(), QList<int>({columnsRow}));
}

TEST_F(AccessibilityTest, tableFollowsSortsAndTheFilter)
{
    panel->SetFilter(QStringLiteral("u"), false); // Columns, Survey
    QStringList names = namesInTable();
    names.sort();
    EXPECT_EQ(names, QStringList({"Columns", "Survey"}));
    panel->SetFilter(QString(), false);
    EXPECT_EQ(table()->rowCount(), 4) << "cells made before are dropped, not reused";
    EXPECT_EQ(namesInTable().size(), 4);
}

TEST_F(AccessibilityTest, editorsOpenFromTheKeyboardAndAreNamedAfterWhatTheyEdit)
{
    CTroveListCtrl& list = *panel->GetListCtrl();
    ASSERT_TRUE(list.EditSubItem(items[0]->LVItemIndex(), Col::ReferenceName));
    auto* editor = list.viewport()->findChild<QLineEdit*>();
    ASSERT_NE(editor, nullptr);
    EXPECT_EQ(name(editor), list.Model().headerData(Col::ReferenceName, Qt::Horizontal).toString());
    QTest::keyClick(editor, Qt::Key_Escape);

    // The details pane edits from the keyboard too, and names its editor after the property.
    click(*items[0]);
    CXrefPropListCtrl& details = *panel->GetDetailsCtrl();
    details.setFocus();
    details.setCurrentIndex(details.model()->index(0, 0));
    QTest::keyClick(&details, Qt::Key_F2);
    ASSERT_TRUE(details.IsEditorOpen());
    auto* detailsEditor = details.viewport()->findChild<QLineEdit*>();
    ASSERT_NE(detailsEditor, nullptr);
    EXPECT_EQ(name(detailsEditor), details.GetItemText(0, 0));
    QTest::keyClick(detailsEditor, Qt::Key_Escape);
    EXPECT_FALSE(details.IsEditorOpen());

    panel->SetReferenceViewType(ViewType::TreeView);
    QCoreApplication::processEvents();
    CXrefTreeCtrl& tree = *panel->GetTreeCtrl();
    ASSERT_TRUE(tree.EditLabel(items[1]->GetTreeItem()));
    auto* treeEditor = tree.viewport()->findChild<QLineEdit*>();
    ASSERT_NE(treeEditor, nullptr);
    EXPECT_FALSE(name(treeEditor).isEmpty());
    QTest::keyClick(treeEditor, Qt::Key_Escape);
}

} // namespace
