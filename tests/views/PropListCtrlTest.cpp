// The details list: rows from properties, when and how a value is edited in place and what the
// panel hears of it, the browse dialog of the path editor, the column divider, sizing, tips
// and row height.

#include "support/FileDialogStandIn.h"
#include "support/MockXrefPanel.h"
#include "support/ScopedOverrides.h"

#include "framework/ControlId.h"
#include "framework/ZuToolTipCtrl.h"
#include "framework/ZuUiHiDpi.h"
#include "items/XrefProperty.h"
#include "views/XrefPropListCtrl.h"
#include "views/editors/InPlaceEditCtrl.h"
#include "views/editors/InPlaceFileEditCtrl.h"
#include "views/editors/LabelEditInfo_p.h"
#include "views/editors/XrefInPlaceComboBoxCtrl.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QApplication>
#include <QHeaderView>
#include <QLineEdit>
#include <QPointer>
#include <QScrollBar>
#include <QTest>

#include <memory>

namespace {

using P = Trove::XrefProperties;
using Style = CXrefProperty::XrefPropertyEditStyle;

class PropListTest : public testing::Test
{
protected:
    void SetUp() override
    {
        m_window.resize(420, 260);
        list = new CXrefPropListCtrl(&m_window);
        list->setGeometry(0, 0, 400, 240);
        m_window.show();
        m_window.activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&m_window));
        list->setFocus();
        QCoreApplication::processEvents();

        Own(P::Name, L"Ground floor", Style::TextEdit);
        Own(P::Status, L"Loaded", Style::NotEditable);
        Own(P::Size, L"", Style::TextEdit);
        Own(P::Type, L"Overlay", Style::ComboBox);
        Own(P::FoundAt, L"/site/ground.dwg", Style::FileEdit);
        list->SetProperties(Rows());

        QObject::connect(list, &CXrefPropListCtrl::PropertyEditStarting,
                         [this](P row, const std::wstring& before) {
                             events << QStringLiteral("starting %1 %2")
                                           .arg(int(row))
                                           .arg(QString::fromStdWString(before));
                         });
        QObject::connect(list, &CXrefPropListCtrl::PropertyEdited,
                         [this](P row, const std::wstring& before, const std::wstring& after) {
                             events << QStringLiteral("edited %1 %2 %3")
                                           .arg(int(row))
                                           .arg(QString::fromStdWString(before),
                                                QString::fromStdWString(after));
                         });
        QObject::connect(list, &CXrefPropListCtrl::PropertyEditAborted,
                         [this](P row) { events << QStringLiteral("aborted %1").arg(int(row)); });
    }
    void TearDown() override
    {
        delete list.data();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }

    CXrefProperty* Own(P id, const std::wstring& value, Style style)
    {
        owned.push_back(std::make_unique<CXrefProperty>(id, value, style));
        return owned.back().get();
    }
    std::vector<CXrefProperty*> Rows() const
    {
        std::vector<CXrefProperty*> rows;
        for (const auto& property : owned)
            rows.push_back(property.get());
        return rows;
    }
    QPoint ValueOf(int row) const { return list->GetSubItemRect(row, 1).center(); }
    void Press(const QPoint& point)
    {
        QTest::mousePress(list->viewport(), Qt::LeftButton, Qt::NoModifier, point);
        QTest::mouseRelease(list->viewport(), Qt::LeftButton, Qt::NoModifier, point);
    }
    void Move(const QPoint& point, Qt::MouseButtons buttons = Qt::NoButton)
    {
        QMouseEvent move(QEvent::MouseMove, point, list->viewport()->mapToGlobal(point),
                         Qt::NoButton, buttons, Qt::NoModifier);
        QApplication::sendEvent(list->viewport(), &move);
    }
    QLineEdit* LineEditor() const { return qobject_cast<QLineEdit*>(list->Editor()); }
    QStringList Take()
    {
        QStringList taken = events;
        events.clear();
        return taken;
    }

    QWidget m_window;
    QPointer<CXrefPropListCtrl> list;
    std::vector<std::unique_ptr<CXrefProperty>> owned;
    QStringList events;
};

TEST_F(PropListTest, eventsCarryTheRowAndPropertiesFrom30OnAreNeverEditable)
{
    // An empty slot moves every later property up a row; the events name the row.
    CXrefProperty* path = owned[4].get();
    list->SetProperties({owned[0].get(), nullptr, path});
    EXPECT_EQ(list->GetItemCount(), 2);
    EXPECT_EQ(list->RowOf(P::FoundAt), 1);
    EXPECT_EQ(list->RowOf(P::Status), -1);
    Press(ValueOf(1));
    EXPECT_EQ(Take(), QStringList{"starting 1 /site/ground.dwg"});
    list->setFocus();
    EXPECT_EQ(Take(), QStringList{"edited 1 /site/ground.dwg /site/ground.dwg"});

    CXrefProperty beyond(P(30), L"x", Style::TextEdit);
    CXrefProperty further(P(31), L"y", Style::TextEdit);
    list->SetProperties({&beyond, &further});
    list->SetEditable(P(CXrefPropListCtrl::kAllProperties), true);
    list->SetEditable(P(31), true);
    EXPECT_FALSE(list->IsEditable(beyond));
    EXPECT_FALSE(list->IsEditable(further));
    Press(ValueOf(0));
    EXPECT_FALSE(list->IsEditorOpen());
    EXPECT_EQ(list->EditColumn(), 0);
    EXPECT_EQ(Take(), QStringList());
}

TEST_F(PropListTest, settingTheRowsMakesEveryPropertyEditableAgain)
{
    list->SetEditable(P::Name, false);
    list->SetEditable(P(CXrefPropListCtrl::kAllProperties), false);
    EXPECT_FALSE(list->IsEditable(*owned[0]));
    Press(ValueOf(0));
    EXPECT_EQ(list->Editor(), nullptr);

    list->SetProperties(Rows());
    EXPECT_TRUE(list->IsEditable(*owned[0]));
    EXPECT_FALSE(list->IsEditable(*owned[1])) << "its style still says no";
    list->SetPropertyValue(P::Status, L"Unloaded");
    EXPECT_EQ(list->GetItemText(1, 1), QStringLiteral("Unloaded"));
    list->SetPropertyValue(P::Date, L"never shown");
    EXPECT_EQ(list->GetItemCount(), 5);
}

TEST_F(PropListTest, aSinglePressOnAnEditableValueOpensTheEditorOfItsStyle)
{
    Press(list->GetSubItemRect(0, 0).center());
    EXPECT_EQ(list->Editor(), nullptr) << "the name column is not edited";
    Press(ValueOf(1));
    EXPECT_EQ(list->Editor(), nullptr) << "a read-only value";
    EXPECT_EQ(list->GetSelectedRow(), 1);

    Press(ValueOf(0));
    EXPECT_EQ(Take(), QStringList{"starting 0 Ground floor"});
    auto* text = qobject_cast<CInPlaceEditCtrl*>(list->Editor());
    ASSERT_NE(text, nullptr);
    EXPECT_EQ(ControlId::Get(text), CXrefPropListCtrl::TextEditorId);
    EXPECT_EQ(list->EditRow(), 0);
    EXPECT_EQ(list->EditColumn(), 1);
    const QRect cell = list->GetSubItemRect(0, 1);
    EXPECT_EQ(text->geometry(),
              QRect(cell.left() + 1, cell.top() + 1, cell.width() - 1, cell.height() - 2));
    list->setFocus();
    EXPECT_EQ(Take(), QStringList{"edited 0 Ground floor Ground floor"});

    Press(ValueOf(3));
    auto* combo = qobject_cast<CXrefInPlaceComboBoxCtrl*>(list->Editor());
    ASSERT_NE(combo, nullptr);
    EXPECT_EQ(ControlId::Get(combo), CXrefPropListCtrl::ComboEditorId);
    EXPECT_EQ(combo->height(), list->RowHeight());
    list->setFocus();
    Take();

    Press(ValueOf(4));
    auto* file = qobject_cast<CInPlaceFileEditCtrl*>(list->Editor());
    ASSERT_NE(file, nullptr);
    EXPECT_EQ(ControlId::Get(file), CXrefPropListCtrl::FileEditorId);
    EXPECT_EQ(file->GetFlags(), 0x401u);
    EXPECT_EQ(file->ButtonColor(), QColor(0xEF, 0xEF, 0xEF));
}

TEST_F(PropListTest, theNewTextIsInTheCellAndThePropertyBeforeThePanelHearsOfIt)
{
    QString cellSeen;
    std::wstring valueSeen;
    QObject::connect(list, &CXrefPropListCtrl::PropertyEdited, [&](P, const auto&, const auto&) {
        cellSeen = list->GetItemText(0, 1);
        valueSeen = owned[0]->GetValue();
    });
    Press(ValueOf(0));
    ASSERT_NE(LineEditor(), nullptr);
    LineEditor()->selectAll();
    QTest::keyClicks(LineEditor(), QStringLiteral("Roof"));
    QPointer<QWidget> editor = list->Editor();
    QTest::keyClick(LineEditor(), Qt::Key_Return);
    EXPECT_EQ(Take(), (QStringList{"starting 0 Ground floor", "edited 0 Ground floor Roof"}));
    EXPECT_EQ(cellSeen, QStringLiteral("Roof"));
    EXPECT_EQ(valueSeen, L"Roof");
    EXPECT_FALSE(list->IsEditorOpen());
    EXPECT_EQ(list->EditColumn(), 0);
    ASSERT_TRUE(editor);
    EXPECT_FALSE(editor->isVisible()) << "hidden at once";

    // Escape reports the abort and leaves the value.
    Press(ValueOf(0));
    QTest::keyClicks(LineEditor(), QStringLiteral("Cellar"));
    QTest::keyClick(LineEditor(), Qt::Key_Escape);
    EXPECT_EQ(Take(), (QStringList{"starting 0 Roof", "aborted 0"}));
    EXPECT_EQ(list->GetItemText(0, 1), QStringLiteral("Roof"));

    // An end reported when no edit is open changes nothing.
    LabelEditInfo late;
    late.item = 0;
    late.subItem = 1;
    late.text = QStringLiteral("late");
    if (auto* text = qobject_cast<CInPlaceEditCtrl*>(list->Editor()))
        emit text->endLabelEdit(late);
    EXPECT_EQ(Take(), QStringList());
}

TEST_F(PropListTest, anEmptyValueKeepsTheTextBeforeOfTheEditBefore)
{
    Press(ValueOf(0));
    list->setFocus();
    Take();
    Press(ValueOf(2)); // Size, empty
    EXPECT_EQ(Take(), QStringList{"starting 2 Ground floor"});
}

class PropListBrowseTest : public PropListTest
{
protected:
    CInPlaceFileEditCtrl* OpenPathEditor()
    {
        Press(ValueOf(4));
        Take();
        return qobject_cast<CInPlaceFileEditCtrl*>(list->Editor());
    }
    FileDialogStandIn dialogs;
};

TEST_F(PropListBrowseTest, theBrowseDialogFollowsThePanelsSettingsAndHoldsTheEditOpen)
{
    list->SetBrowseSettings(QStringLiteral("Drawings (*.dwg)|*.dwg||"), QStringLiteral("dwg"),
                            QStringLiteral("Pick a drawing"), true, true);
    CInPlaceFileEditCtrl* editor = OpenPathEditor();
    ASSERT_NE(editor, nullptr);
    int columnWhileOpen = -1;
    unsigned flagsWhileOpen = 0;
    dialogs.WhileOpen([&] {
        columnWhileOpen = list->EditColumn();
        flagsWhileOpen = editor->GetFlags();
        // An end that arrives while the dialog is open is not the list's to act on.
        LabelEditInfo info;
        info.item = 4;
        info.subItem = 1;
        info.text = QStringLiteral("/elsewhere.dwg");
        emit editor->endLabelEdit(info);
    });
    dialogs.Choose({QStringLiteral("/site/upper.dwg")});
    editor->Browse();
    EXPECT_EQ(columnWhileOpen, 2);
    EXPECT_EQ(flagsWhileOpen, 0x401u | 0x2000u | 0x4000u);
    ASSERT_EQ(dialogs.Count(), 1);
    const FileDialogStandIn::Shown& shown = dialogs.ShownDialogs().front();
    EXPECT_EQ(shown.filter, QStringLiteral("Drawings (*.dwg)|*.dwg||"));
    EXPECT_EQ(shown.defaultExtension, QStringLiteral("dwg"));
    EXPECT_EQ(shown.caption, QStringLiteral("Pick a drawing"));
    EXPECT_TRUE(shown.flags & CKvUiNavDialog::PreviewPane);
    EXPECT_EQ(Take(), QStringList());
    EXPECT_EQ(list->EditColumn(), 1);
    EXPECT_TRUE(list->IsEditorOpen());

    list->setFocus();
    EXPECT_EQ(Take(), QStringList{"edited 4 /site/ground.dwg /site/upper.dwg"});
    EXPECT_EQ(list->Editor(), editor) << "the path editor stays, hidden, for the list to reuse";

    // Without the options flag the option bit goes again.
    list->SetBrowseSettings(QString(), QString(), QString(), false, false);
    editor = OpenPathEditor();
    dialogs.WhileOpen([&] { flagsWhileOpen = editor->GetFlags(); });
    dialogs.Cancel();
    editor->Browse();
    EXPECT_EQ(flagsWhileOpen, 0x401u | 0x2000u);
    EXPECT_FALSE(dialogs.ShownDialogs().back().flags & CKvUiNavDialog::PreviewPane);
}

TEST_F(PropListBrowseTest, anEditorDestroyedWhileItsDialogWaitsIsNeverTouchedAgain)
{
    // A press on another value opens that row's editor, which destroys the path editor in the
    // middle of its dialog.
    CInPlaceFileEditCtrl* editor = OpenPathEditor();
    ASSERT_NE(editor, nullptr);
    QPointer<CInPlaceFileEditCtrl> watch(editor);
    dialogs.WhileOpen([&] { Press(ValueOf(0)); });
    dialogs.Choose({QStringLiteral("/site/upper.dwg")});
    EXPECT_FALSE(editor->Browse());
    EXPECT_FALSE(watch);
    EXPECT_EQ(list->EditColumn(), 1);
    ASSERT_NE(LineEditor(), nullptr);
    QTest::keyClick(LineEditor(), Qt::Key_Return);
    EXPECT_EQ(Take().back(), QStringLiteral("edited 0 Ground floor Ground floor"));

    // The list itself goes while the dialog waits.
    editor = OpenPathEditor();
    dialogs.WhileOpen([&] { delete list.data(); });
    EXPECT_FALSE(editor->Browse());
    EXPECT_FALSE(list);
}

// --- Divider, sizing, tips, rows ----------------------------------------------------------------

class PropListScaleTest : public PropListTest, public testing::WithParamInterface<double>
{};

TEST_P(PropListScaleTest, theDividerFollowsTheDragButStays30DipFromEitherEdge)
{
    ScopedDpiScale scale(GetParam());
    list->setGeometry(0, 0, CZuUiHiDpi::ScaleX(400), 240);
    QCoreApplication::processEvents();
    const int margin = CZuUiHiDpi::ScaleX(30);
    const int width = list->viewport()->width();
    const int sum = list->GetColumnWidth(0) + list->GetColumnWidth(1);
    const QPoint divider(list->GetColumnWidth(0), 10);

    Move(divider);
    EXPECT_EQ(list->viewport()->cursor().shape(), list->DividerCursor().shape());
    Move(QPoint(divider.x() + 20, 10));
    EXPECT_EQ(list->viewport()->cursor().shape(), Qt::ArrowCursor);

    QTest::mousePress(list->viewport(), Qt::LeftButton, Qt::NoModifier, divider);
    ASSERT_TRUE(list->IsDraggingDivider());
    EXPECT_EQ(list->GetSelectedRow(), -1) << "a press on the divider selects nothing";
    Move(QPoint(margin, 10), Qt::LeftButton);
    EXPECT_EQ(list->GetColumnWidth(0), margin);
    Move(QPoint(margin - 1, 10), Qt::LeftButton);
    Move(QPoint(2, 10), Qt::LeftButton);
    EXPECT_EQ(list->GetColumnWidth(0), margin);
    Move(QPoint(width - margin, 10), Qt::LeftButton);
    EXPECT_EQ(list->GetColumnWidth(0), width - margin);
    Move(QPoint(width - margin + 1, 10), Qt::LeftButton);
    EXPECT_EQ(list->GetColumnWidth(0), width - margin);
    EXPECT_EQ(list->GetColumnWidth(0) + list->GetColumnWidth(1), sum);

    // Sizes during the drag are ignored.
    const int nameWidth = list->GetColumnWidth(0);
    list->resize(list->width() - 100, list->height());
    EXPECT_EQ(list->GetColumnWidth(0), nameWidth);

    QTest::mouseRelease(list->viewport(), Qt::LeftButton, Qt::NoModifier,
                        QPoint(width - margin, 10));
    EXPECT_FALSE(list->IsDraggingDivider());
    EXPECT_EQ(list->viewport()->cursor().shape(), Qt::ArrowCursor);
}

INSTANTIATE_TEST_SUITE_P(Scales, PropListScaleTest, testing::Values(1.0, 2.0));

TEST_F(PropListTest, anOpenEditorMovesWithTheDivider)
{
    Press(ValueOf(0));
    ASSERT_NE(list->Editor(), nullptr);
    const int left = list->Editor()->x();
    // The press on the divider leaves the focus, and with it the edit, where it is.
    const QPoint divider(list->GetColumnWidth(0), 60);
    Move(divider);
    QTest::mousePress(list->viewport(), Qt::LeftButton, Qt::NoModifier, divider);
    EXPECT_TRUE(list->IsEditorOpen());
    Move(divider + QPoint(40, 0), Qt::LeftButton);
    QTest::mouseRelease(list->viewport(), Qt::LeftButton, Qt::NoModifier, divider + QPoint(40, 0));
    ASSERT_NE(list->Editor(), nullptr);
    EXPECT_EQ(list->Editor()->x(), left + 40);
}

TEST_F(PropListTest, sizesNarrowerThanTheDefaultColumnsAreIgnored)
{
    const int defaults = CZuUiHiDpi::ScaleX(CXrefPropListCtrl::DefaultNameColumnDipWidth()) +
                         CZuUiHiDpi::ScaleX(CXrefPropListCtrl::DefaultValueColumnDipWidth());
    list->SetColumnWidth(0, 250);
    list->SetColumnWidth(1, 40);
    list->resize(defaults - 20, 240);
    QCoreApplication::processEvents();
    EXPECT_EQ(list->GetColumnWidth(0), 250);
    EXPECT_EQ(list->GetColumnWidth(1), 40);

    // A wide enough size leaves the value column 30 DIP at least and gives it the rest.
    list->resize(defaults + 10, 240);
    const int width = list->viewport()->width();
    EXPECT_EQ(list->GetColumnWidth(0), std::min(250, width - CZuUiHiDpi::ScaleX(30)));
    QCoreApplication::processEvents();
    EXPECT_EQ(list->GetColumnWidth(0) + list->GetColumnWidth(1), width);
}

TEST_F(PropListTest, onlyClippedValuesGetATipOfNameAndValue)
{
    CXrefProperty* longPath =
        Own(P::SavedPath, std::wstring(200, L'x') + L"/far/away/ground.dwg", Style::FileEdit);
    list->SetProperties(Rows());
    const int row = list->RowOf(P::SavedPath);
    CZuToolTipCtrl& tips = list->ToolTipCtrl();

    Move(ValueOf(row));
    const unsigned id = unsigned(row) * 10 + 2;
    ASSERT_TRUE(tips.HasTool(list->viewport(), id));
    EXPECT_EQ(tips.GetText(list->viewport(), id),
              QString::fromStdWString(longPath->GetName()) + QStringLiteral(":\n") +
                  QString::fromStdWString(longPath->GetValue()));

    Move(ValueOf(1));
    EXPECT_FALSE(tips.HasTool(list->viewport(), 1 * 10 + 2)) << "Loaded fits";
    Move(list->GetSubItemRect(1, 0).center());
    EXPECT_FALSE(tips.HasTool(list->viewport(), 1 * 10 + 1));
}

TEST(PropListRows, rowHeightIsLineHeightWithLeadingTimesOneAndAThirdTruncated)
{
    for (int pixels : {9, 12, 13, 16, 23}) {
        QFont font;
        font.setPixelSize(pixels);
        const QFontMetrics metrics(font);
        const int expected = int(double(metrics.height() + std::max(0, metrics.leading())) * 1.35);
        EXPECT_EQ(CXrefPropListCtrl::RowHeightFor(font), expected) << pixels;

        CXrefPropListCtrl list;
        list.setFont(font);
        EXPECT_EQ(list.RowHeight(), expected) << pixels;
    }
}

TEST(PropListHost, theHostHearsOnceWithAnEmptyListWhenTheListIsMade)
{
    auto panel = MockXrefPanel::Created();
    EXPECT_CALL(*panel, HostCallback9(testing::IsEmpty())).Times(1);
    auto* list = new CXrefPropListCtrl(panel.get());
    QWidget elsewhere(panel.get());
    list->setParent(&elsewhere);
    delete list;
    // A list made outside a panel calls when it first lands in one.
    EXPECT_CALL(*panel, HostCallback9(testing::IsEmpty())).Times(1);
    CXrefPropListCtrl loose;
    loose.setParent(panel.get());
    loose.setParent(nullptr);
}

} // namespace
