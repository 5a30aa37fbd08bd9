// The demo driven through the panel's own views with QTest input: a click selects, F2 and typing
// rename, a right click opens the host's menu, a double click on a status deals with it. The
// result is checked in the saved drawing.
//
// These gestures travel through the panel's selection, context-menu and edit binding; each test
// first checks that a click reaches the panel and skips while that binding is not there.

#include "DemoWindowFixture.h"

#include "panel/MenuItems.h"
#include "views/TroveListCtrl.h"
#include "views/editors/InPlaceEditCtrl.h"

#include <QApplication>
#include <QContextMenuEvent>
#include <QtTest/QTest>

using Column = Trove::ListViewColumn;

class DemoViewsTest : public DemoWindowTest
{
protected:
    CTroveListCtrl& List() const { return *Panel().GetListCtrl(); }

    QPoint Cell(const char* name, int column) const
    {
        const DemoItem* item = Item(QString::fromUtf8(name));
        return item ? List().visualRect(List().IndexFromItem(*item, column)).center() : QPoint();
    }
    /// Clicks @p name's row; true when the panel learnt of the selection.
    bool ClickRow(const char* name)
    {
        QTest::mouseClick(List().viewport(), Qt::LeftButton, {}, Cell(name, Column::ReferenceName));
        Settle();
        const auto& selected = Panel().GetSelectedItems();
        return selected.size() == 1 && selected.front() == Item(QString::fromUtf8(name));
    }
    void TypeNewName(const QString& text)
    {
        QTest::keyClick(&List(), Qt::Key_F2);
        auto* editor = List().findChild<CInPlaceEditCtrl*>();
        ASSERT_NE(editor, nullptr) << "F2 opens the name editor";
        editor->selectAll();
        QTest::keyClicks(editor, text);
        QTest::keyClick(editor, Qt::Key_Return);
        Settle();
    }
};

TEST_F(DemoViewsTest, nameTypedInTheListIsSavedAndARefusedOneIsRolledBack)
{
    Open();
    ASSERT_TRUE(ClickRow("Survey"));
    TypeNewName(QStringLiteral("Survey 2024"));
    EXPECT_EQ(SavedRecord(QStringLiteral("Survey 2024")).kind, ReferenceKind::PdfUnderlay);

    const QByteArray before = Bytes(m_drawing);
    ASSERT_TRUE(ClickRow("Bridge"));
    TypeNewName(QStringLiteral("Survey 2024"));
    EXPECT_EQ(Bytes(m_drawing), before);
    EXPECT_NE(Panel().FindItem(QStringLiteral("Bridge")), nullptr);
}

TEST_F(DemoViewsTest, rightClickMenuUnloadsTheClickedReference)
{
    MenuTracker menus;
    menus.ChooseCommand(Trove::HostCommand6);
    Open();
    ASSERT_TRUE(ClickRow("Survey"));
    const QPoint at = Cell("Survey", Column::ReferenceName);
    QContextMenuEvent click(QContextMenuEvent::Mouse, at, List().viewport()->mapToGlobal(at));
    QApplication::sendEvent(List().viewport(), &click);
    Settle();
    ASSERT_EQ(menus.Count(), 1);
    EXPECT_TRUE(menus.ShownMenus().front().ids.contains(unsigned(Trove::HostCommand9)));
    EXPECT_TRUE(SavedRecord(QStringLiteral("Survey")).unloaded);
}

TEST_F(DemoViewsTest, doubleClickOnAnUnloadedStatusLoadsIt)
{
    Open();
    ASSERT_TRUE(ClickRow("Quay photo"));
    QTest::mouseDClick(List().viewport(), Qt::LeftButton, {}, Cell("Quay photo", Column::Status));
    Settle();
    EXPECT_FALSE(SavedRecord(QStringLiteral("Quay photo")).unloaded);
    EXPECT_EQ(Item(QStringLiteral("Quay photo"))->GetReferenceStatusIcon(), RefStatus::Blank);
}
