#include "views/editors/InPlaceComboBoxCtrl.h"
#include "InPlaceEditorTestHost.h"
#include "resources/TroveResources.h"
#include "support/QtPrinters.h"
#include "views/editors/XrefInPlaceComboBoxCtrl.h"

#include <QAbstractItemView>
#include <QAction>
#include <QApplication>
#include <QPointer>

#include <map>

namespace {

const QStringList kChoices{QStringLiteral("Attach"), QStringLiteral("Overlay"),
                           QStringLiteral("Overlay nested")};

class InPlaceComboBoxCtrlTest : public InPlaceEditorTest
{
protected:
    CInPlaceComboBoxCtrl* open(const QString& initial, CInPlaceComboBoxCtrl* combo = nullptr)
    {
        m_combo = combo ? combo : new CInPlaceComboBoxCtrl(4, 1, kChoices, initial);
        m_recorders.push_back(std::make_unique<LabelEditRecorder>(m_combo.data()));
        m_recorder = m_recorders.back().get();
        EXPECT_TRUE(m_combo->Create(cell(), m_owner, 40002));
        return m_combo;
    }

    QPointer<CInPlaceComboBoxCtrl> m_combo;
    std::vector<std::unique_ptr<LabelEditRecorder>> m_recorders;
    LabelEditRecorder* m_recorder = nullptr;
};

TEST_F(InPlaceComboBoxCtrlTest, choicesKeepTheirOrderAndTheInitialValueIsSelected)
{
    struct Case
    {
        QString initial;
        QString selected;
    };
    // Equal text first (letter case aside), else the first choice that starts with it.
    for (const Case& c : {Case{QStringLiteral("Overlay"), QStringLiteral("Overlay")},
                          Case{QStringLiteral("overlay"), QStringLiteral("Overlay")},
                          Case{QStringLiteral("OVERLAY N"), QStringLiteral("Overlay nested")},
                          Case{QStringLiteral("att"), QStringLiteral("Attach")}}) {
        CInPlaceComboBoxCtrl* combo = open(c.initial);
        QStringList shown;
        for (int i = 0; i < combo->count(); ++i)
            shown << combo->itemText(i);
        EXPECT_EQ(shown, kChoices);
        ASSERT_EQ(m_recorder->begins.size(), 1u) << c.initial.toStdString();
        const LabelEditInfo& begin = m_recorder->begins[0];
        EXPECT_EQ(begin.text, c.selected);
        EXPECT_EQ(begin.mask, unsigned(LabelEditInfo::MaskText | LabelEditInfo::MaskParam));
        EXPECT_EQ(begin.item, 4);
        EXPECT_EQ(begin.subItem, 1);
        m_owner->setFocus();
    }
}

TEST_F(InPlaceComboBoxCtrlTest, emptyOrUnknownInitialValueSendsNoRecordAtAll)
{
    for (const QString& initial : {QString(), QStringLiteral("Detached")}) {
        CInPlaceComboBoxCtrl* combo = open(initial);
        EXPECT_EQ(combo->currentIndex(), -1);
        EXPECT_TRUE(m_recorder->begins.empty());
        QTest::keyClick(combo, Qt::Key_Return);
        EXPECT_TRUE(m_recorder->ends.empty()) << "no choice, nothing to report";
        flushDeletes();
        EXPECT_TRUE(m_combo.isNull()) << "the combo box goes all the same";
    }
}

TEST_F(InPlaceComboBoxCtrlTest, closingTheDropDownEndsTheEditWithTheChoiceAndItsData)
{
    CInPlaceComboBoxCtrl* combo = open(QStringLiteral("Attach"));
    combo->setItemData(1, 1074);
    combo->showPopup();
    EXPECT_TRUE(m_recorder->ends.empty()) << "opening the list is part of the edit";
    combo->setCurrentIndex(1);
    combo->hidePopup();
    QCoreApplication::processEvents();
    ASSERT_EQ(m_recorder->ends.size(), 1u);
    EXPECT_EQ(m_recorder->ends[0].text, QStringLiteral("Overlay"));
    EXPECT_EQ(m_recorder->ends[0].param, QVariant(1074));
    // The offscreen platform leaves the activation with the closed list: ask the window.
    EXPECT_EQ(m_window.focusWidget(), m_owner);
    flushDeletes();
    EXPECT_TRUE(m_combo.isNull());
}

TEST_F(InPlaceComboBoxCtrlTest, escapeCancelsAndEnterKeepsTheChoice)
{
    // Enter and Escape stay with the combo box although the host has shortcuts on them; Delete,
    // which a list of choices has no use for, is left to the host.
    std::map<int, int> triggered;
    for (Qt::Key key : {Qt::Key_Escape, Qt::Key_Enter, Qt::Key_Delete}) {
        auto* action = new QAction(&m_window);
        action->setShortcut(QKeySequence(key));
        QObject::connect(action, &QAction::triggered, [&triggered, key] { ++triggered[key]; });
        m_window.addAction(action);
    }

    CInPlaceComboBoxCtrl* combo = open(QStringLiteral("Attach"));
    QTest::keyClick(combo, Qt::Key_Delete);
    EXPECT_EQ(triggered[Qt::Key_Delete], 1);
    QTest::keyClick(combo, Qt::Key_Down);
    QTest::keyClick(combo, Qt::Key_Escape);
    ASSERT_EQ(m_recorder->ends.size(), 1u);
    EXPECT_EQ(m_recorder->ends[0].text, std::nullopt);
    EXPECT_TRUE(m_owner->hasFocus());

    combo = open(QStringLiteral("Attach"));
    QTest::keyClick(combo, Qt::Key_Down);
    QTest::keyClick(combo, Qt::Key_Enter);
    ASSERT_EQ(m_recorder->ends.size(), 1u);
    EXPECT_EQ(m_recorder->ends[0].text, QStringLiteral("Overlay"));
    EXPECT_EQ(m_owner->keyPresses, 0);
    EXPECT_EQ(triggered[Qt::Key_Escape], 0);
    EXPECT_EQ(triggered[Qt::Key_Enter], 0);
}

TEST_F(InPlaceComboBoxCtrlTest, referenceTypeComboOffersTheLibrarysTypeTexts)
{
    auto* combo = new CXrefInPlaceComboBoxCtrl(2, 1, TroveUI::ResString(1074));
    open(QString(), combo);
    ASSERT_EQ(combo->count(), 2);
    EXPECT_EQ(combo->itemText(0), TroveUI::ResString(1072));
    EXPECT_EQ(combo->itemText(1), TroveUI::ResString(1074));
    EXPECT_FALSE(combo->itemText(0).isEmpty());
    EXPECT_EQ(combo->currentIndex(), 1);
    EXPECT_EQ(combo->view()->verticalScrollBarPolicy(), Qt::ScrollBarAlwaysOn);
    EXPECT_EQ(CXrefInPlaceComboBoxCtrl::VariesText(), TroveUI::ResString(1133));
    EXPECT_FALSE(CXrefInPlaceComboBoxCtrl::VariesText().isEmpty());

    // The cell of several references with different types opens with nothing chosen.
    auto* varies = new CXrefInPlaceComboBoxCtrl(2, 1, CXrefInPlaceComboBoxCtrl::VariesText());
    open(QString(), varies);
    EXPECT_EQ(varies->currentIndex(), -1);
    EXPECT_TRUE(m_recorder->begins.empty());
}

TEST_F(InPlaceComboBoxCtrlTest, dropDownClosedByTheSystemStillEndsTheEdit)
{
    CInPlaceComboBoxCtrl* combo = open(QStringLiteral("Attach"));
    combo->showPopup();
    QWidget* popup = QApplication::activePopupWidget();
    ASSERT_NE(popup, nullptr);
    // As when the window loses the activation: the popup goes without the combo box's word.
    popup->close();
    QCoreApplication::processEvents();
    ASSERT_EQ(m_recorder->ends.size(), 1u);
    EXPECT_EQ(m_recorder->ends[0].text, QStringLiteral("Attach"));
    EXPECT_EQ(m_window.focusWidget(), m_owner);
    flushDeletes();
    EXPECT_TRUE(m_combo.isNull());
}

TEST_F(InPlaceComboBoxCtrlTest, choiceMadeInTheDropDownIsTheOneReported)
{
    CInPlaceComboBoxCtrl* combo = open(QStringLiteral("Attach"));
    combo->showPopup();
    ASSERT_TRUE(combo->view()->isVisible());
    QTest::keyClick(combo->view(), Qt::Key_Down);
    QTest::keyClick(combo->view(), Qt::Key_Return);
    QCoreApplication::processEvents();
    ASSERT_EQ(m_recorder->ends.size(), 1u);
    EXPECT_EQ(m_recorder->ends[0].text, QStringLiteral("Overlay"));

    combo = open(QStringLiteral("Attach"));
    combo->showPopup();
    const QRect third = combo->view()->visualRect(combo->model()->index(2, 0));
    QTest::mouseMove(combo->view()->viewport(), third.center());
    QTest::mouseClick(combo->view()->viewport(), Qt::LeftButton, Qt::NoModifier, third.center());
    QCoreApplication::processEvents();
    ASSERT_EQ(m_recorder->ends.size(), 1u);
    EXPECT_EQ(m_recorder->ends[0].text, QStringLiteral("Overlay nested"));
}

} // namespace
