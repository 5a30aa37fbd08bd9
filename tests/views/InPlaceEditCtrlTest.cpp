#include "InPlaceEditorTestHost.h"
#include "support/QtPrinters.h"
#include "support/ScopedOverrides.h"
#include "views/editors/InPlaceEditCtrl.h"

#include <QAction>
#include <QApplication>
#include <QListView>
#include <QPointer>
#include <QStringListModel>

namespace {

class InPlaceEditCtrlTest : public InPlaceEditorTest
{
protected:
    CInPlaceEditCtrl* open(int item, const QString& text, QWidget* parent = nullptr,
                           QRect rect = QRect())
    {
        m_editor = new CInPlaceEditCtrl(item, 2, text);
        m_recorders.push_back(std::make_unique<LabelEditRecorder>(m_editor.data()));
        m_recorder = m_recorders.back().get();
        EXPECT_TRUE(
            m_editor->Create(rect.isNull() ? cell() : rect, parent ? parent : m_owner, 40001));
        return m_editor;
    }

    QPointer<CInPlaceEditCtrl> m_editor;
    std::vector<std::unique_ptr<LabelEditRecorder>> m_recorders;
    LabelEditRecorder* m_recorder = nullptr;
};

TEST_F(InPlaceEditCtrlTest, enterEndsTheEditWithTheTextAndTheEditorGoes)
{
    CInPlaceEditCtrl* editor = open(7, QStringLiteral("Plan"));
    ASSERT_TRUE(editor->hasFocus());
    EXPECT_EQ(editor->selectedText(), QStringLiteral("Plan"));
    ASSERT_EQ(m_recorder->begins.size(), 1u);
    const LabelEditInfo& begin = m_recorder->begins[0];
    EXPECT_EQ(begin.item, 7);
    EXPECT_EQ(begin.subItem, 2);
    EXPECT_EQ(begin.mask, unsigned(LabelEditInfo::MaskText));
    EXPECT_EQ(begin.text, QStringLiteral("Plan"));

    QTest::keyClicks(editor, QStringLiteral("Site"));
    QTest::keyClick(editor, Qt::Key_Return);
    ASSERT_EQ(m_recorder->ends.size(), 1u);
    EXPECT_EQ(m_recorder->ends[0].text, QStringLiteral("Site"));
    EXPECT_EQ(m_recorder->ends[0].item, 7);
    EXPECT_TRUE(m_owner->hasFocus());
    flushDeletes();
    EXPECT_TRUE(m_editor.isNull());
    EXPECT_EQ(m_recorder->begins.size(), 1u);
}

TEST_F(InPlaceEditCtrlTest, escapeEndsTheEditWithNoText)
{
    CInPlaceEditCtrl* editor = open(0, QStringLiteral("Plan"));
    QTest::keyClicks(editor, QStringLiteral("xyz"));
    QTest::keyClick(editor, Qt::Key_Escape);
    ASSERT_EQ(m_recorder->ends.size(), 1u);
    EXPECT_EQ(m_recorder->ends[0].text, std::nullopt);
    EXPECT_EQ(m_recorder->ends[0].mask, unsigned(LabelEditInfo::MaskText));
    EXPECT_TRUE(m_owner->hasFocus());
    flushDeletes();
    EXPECT_TRUE(m_editor.isNull());
}

TEST_F(InPlaceEditCtrlTest, losingTheFocusEndsTheEditOnceWithTheText)
{
    auto* other = new QWidget(&m_window);
    other->setFocusPolicy(Qt::StrongFocus);
    other->setGeometry(320, 10, 50, 50);
    other->show();
    CInPlaceEditCtrl* editor = open(1, QStringLiteral("Plan"));
    QTest::keyClick(editor, Qt::Key_End);
    QTest::keyClicks(editor, QStringLiteral("-2"));
    other->setFocus();
    ASSERT_EQ(m_recorder->ends.size(), 1u);
    EXPECT_EQ(m_recorder->ends[0].text, QStringLiteral("Plan-2"));
    // The focus coming back to a deleted-to-be editor starts nothing new.
    if (m_editor)
        m_editor->setFocus();
    EXPECT_EQ(m_recorder->begins.size(), 1u);
    EXPECT_EQ(m_recorder->ends.size(), 1u);
}

TEST_F(InPlaceEditCtrlTest, negativeItemEditsWithoutRecords)
{
    CInPlaceEditCtrl* editor = open(-1, QStringLiteral("Plan"));
    QTest::keyClick(editor, Qt::Key_Return);
    EXPECT_TRUE(m_recorder->begins.empty());
    EXPECT_TRUE(m_recorder->ends.empty());
    flushDeletes();
    EXPECT_TRUE(m_editor.isNull());
}

TEST_F(InPlaceEditCtrlTest, creationTakesTheOwnersFontAndFailsWithoutParent)
{
    QFont font(QStringLiteral("Sans"), 17, QFont::Bold);
    m_owner->setFont(font);
    CInPlaceEditCtrl* editor = open(0, QStringLiteral("A"));
    EXPECT_EQ(editor->font(), font);
    EXPECT_EQ(editor->geometry(), cell());

    QPointer<CInPlaceEditCtrl> orphan = new CInPlaceEditCtrl(0, 0, QStringLiteral("x"));
    EXPECT_FALSE(orphan->Create(cell(), nullptr, 1));
    flushDeletes();
    EXPECT_TRUE(orphan.isNull());
}

TEST_F(InPlaceEditCtrlTest, editorFollowsTheThemeWhileOpen)
{
    CInPlaceEditCtrl* editor = open(0, QStringLiteral("Plan"));
    EXPECT_EQ(editor->palette().color(QPalette::Base),
              CZuUiTheme::Instance().GetColor(CZuUiTheme::AlternateBackground));
    ScopedTheme dark(!CZuUiTheme::Instance().IsDarkTheme());
    EXPECT_EQ(editor->palette().color(QPalette::Base),
              CZuUiTheme::Instance().GetColor(CZuUiTheme::AlternateBackground));
    EXPECT_EQ(editor->palette().color(QPalette::Text),
              CZuUiTheme::Instance().GetColor(CZuUiTheme::Text));
}

TEST_F(InPlaceEditCtrlTest, typingWidensTheEditorUpToTheOwnersEdgeOnly)
{
    CInPlaceEditCtrl* editor = open(0, QString(), nullptr, QRect(200, 20, 40, 22));
    const QFontMetrics metrics(m_owner->font());
    int previous = editor->width();
    QString typed;
    for (int i = 0; i < 30; ++i) {
        QTest::keyClick(editor, Qt::Key_W, Qt::NoModifier);
        typed += QLatin1Char('w');
        ASSERT_EQ(editor->text(), typed);
        EXPECT_GE(editor->width(), previous) << "never narrows";
        EXPECT_LE(editor->geometry().right(), m_owner->rect().right()) << "stays inside";
        if (editor->geometry().right() < m_owner->rect().right()) {
            EXPECT_GE(editor->width(), metrics.horizontalAdvance(typed) + 5) << i;
        }
        previous = editor->width();
    }
    EXPECT_EQ(editor->geometry().right(), m_owner->rect().right());
    EXPECT_EQ(editor->x(), 200);

    // A short text keeps the cell's width.
    CInPlaceEditCtrl* second = open(1, QString(), nullptr, QRect(10, 60, 120, 22));
    QTest::keyClick(second, Qt::Key_I);
    EXPECT_EQ(second->width(), 120);
}

TEST_F(InPlaceEditCtrlTest, hostShortcutsDoNotTakeTheEditorsKeys)
{
    int deletes = 0;
    int saves = 0;
    int enters = 0;
    int refreshes = 0;
    auto addShortcut = [this](QKeySequence keys, int& counter) {
        auto* action = new QAction(&m_window);
        action->setShortcut(keys);
        QObject::connect(action, &QAction::triggered, [&counter] { ++counter; });
        m_window.addAction(action);
    };
    addShortcut(QKeySequence(Qt::Key_Delete), deletes);
    addShortcut(QKeySequence(Qt::CTRL | Qt::Key_S), saves);
    addShortcut(QKeySequence(Qt::Key_Return), enters);
    addShortcut(QKeySequence(Qt::Key_F5), refreshes);

    CInPlaceEditCtrl* editor = open(0, QStringLiteral("Plan"));
    QTest::keyClick(editor, Qt::Key_Home);
    QTest::keyClick(editor, Qt::Key_Delete);
    EXPECT_EQ(editor->text(), QStringLiteral("lan"));
    QTest::keyClick(editor, Qt::Key_S, Qt::ControlModifier);
    QTest::keyClick(editor, Qt::Key_Up);
    QTest::keyClick(editor, Qt::Key_PageDown);
    // Other keys keep their shortcuts: proof that the shortcuts are live at all.
    QTest::keyClick(editor, Qt::Key_F5);
    EXPECT_EQ(refreshes, 1);
    QTest::keyClick(editor, Qt::Key_Return);
    EXPECT_EQ(deletes, 0);
    EXPECT_EQ(saves, 0);
    EXPECT_EQ(enters, 0);
    EXPECT_EQ(m_owner->keyPresses, 0) << "no key of the edit reached the view";
    ASSERT_EQ(m_recorder->ends.size(), 1u);
    EXPECT_EQ(m_recorder->ends[0].text, QStringLiteral("lan"));
}

TEST_F(InPlaceEditCtrlTest, worksOverAnItemViewsViewport)
{
    QStringListModel model({QStringLiteral("one"), QStringLiteral("two")});
    auto* view = new QListView(&m_window);
    view->setModel(&model);
    view->setGeometry(10, 10, 200, 150);
    view->show();
    const QRect rect = view->visualRect(model.index(1, 0));
    CInPlaceEditCtrl* editor = open(1, QStringLiteral("two"), view->viewport(), rect);
    ASSERT_TRUE(editor->hasFocus());
    QTest::keyClicks(editor, QStringLiteral("a long replacement text for the second row"));
    EXPECT_LE(editor->geometry().right(), view->viewport()->rect().right());
    QTest::keyClick(editor, Qt::Key_Enter);
    EXPECT_TRUE(view->hasFocus());
    ASSERT_EQ(m_recorder->ends.size(), 1u);
    EXPECT_EQ(m_recorder->ends[0].text,
              QStringLiteral("a long replacement text for the second row"));
}

} // namespace
