#pragma once

// What the list view tests share: a created mock panel shown as an active window with the list
// laid out at a known size, references to fill it with, input at a cell's visual rectangle and
// a recorder of every signal the list raises.

#include "support/MockXrefPanel.h"
#include "support/ScopedOverrides.h"
#include "support/TestXrefItem.h"

#include "host/KvToolTipService.h"
#include "items/TroveListCtrlItem.h"
#include "panel/ListViewColumn.h"
#include "services/RmxImageSettings.h"
#include "views/TroveListCtrl.h"
#include "views/TroveListModel_p.h"

#include <gtest/gtest.h>

#include <QApplication>
#include <QContextMenuEvent>
#include <QTest>

#include <memory>
#include <string>
#include <vector>

/// Sets whether the repository user is logged in for one test.
class ScopedLogin
{
public:
    explicit ScopedLogin(bool loggedIn)
    {
        TroveUI::RmxImageSettings::New();
        m_previous = TroveUI::RmxImageSettings::Value().GetTroveLoggedIn();
        TroveUI::RmxImageSettings::Value().SetTroveLoggedIn(loggedIn);
    }
    ~ScopedLogin() { TroveUI::RmxImageSettings::Value().SetTroveLoggedIn(m_previous); }
    ScopedLogin(const ScopedLogin&) = delete;
    ScopedLogin& operator=(const ScopedLogin&) = delete;

private:
    bool m_previous = false;
};

/// Everything the list raised, in order.
struct ListSignals
{
    struct Selected
    {
        std::vector<std::wstring> names;
        bool flag;
    };
    struct Menu
    {
        QPoint point;
        std::vector<std::wstring> names;
        bool flag;
    };
    struct Edit
    {
        std::string what; ///< "starting", "edited" or "aborted"
        Trove::XrefProperties property;
        std::wstring before;
        std::wstring after;
    };

    std::vector<Selected> selected;
    std::vector<Menu> menus;
    std::vector<std::pair<int, std::vector<std::wstring>>> commands;
    std::vector<std::wstring> statusDoubleClicks;
    std::vector<std::pair<int, bool>> sorts;
    std::vector<Edit> edits;

    void Clear() { *this = ListSignals(); }
};

class ListViewFixture : public testing::Test
{
protected:
    using Column = Trove::ListViewColumn;
    using Props = Trove::XrefProperties;

    void SetUp() override
    {
        panel = MockXrefPanel::Created();
        // The panel lays the list out in its upper group; tall enough that ten rows leave
        // empty space below them.
        panel->resize(700, 900);
        panel->show();
        QApplication::setActiveWindow(panel.get());
        ASSERT_TRUE(QTest::qWaitForWindowActive(panel.get()));
        list().setFocus();
        record();
    }

    void TearDown() override
    {
        testing::Mock::VerifyAndClearExpectations(panel.get());
        // The last input's modifiers stay with the application; the next test starts clean.
        QTest::keyRelease(&list(), Qt::Key_Shift);
        QTest::keyRelease(&list(), Qt::Key_Control);
        panel->DeleteAllItems();
        panel.reset();
        // Moves over the rows show the host's rich tip; its window must go while the
        // application still can take it down.
        delete KvToolTipService::Instance()->Popup();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }

    CTroveListCtrl& list() const { return *panel->GetListCtrl(); }
    CTroveListModel& model() const { return list().Model(); }

    /// A reference with its own row; @p hostDwg makes it the host drawing's row.
    TestXrefItem* Add(const std::wstring& name, bool hostDwg = false)
    {
        auto* item = new TestXrefItem(*panel, hostDwg);
        if (!root) {
            root = item;
            panel->InsertRootItem(*item);
        } else {
            panel->InsertItem(*item, *root, nullptr);
        }
        item->SetText(name);
        return item;
    }
    /// The host drawing's row "Host", then rows named @p names.
    std::vector<TestXrefItem*> Fill(const std::vector<std::wstring>& names)
    {
        std::vector<TestXrefItem*> items;
        Add(L"Host", true);
        for (const std::wstring& name : names)
            items.push_back(Add(name));
        settle();
        return items;
    }
    /// Rows "Host", "R1" ... "R<count>".
    void FillNumbered(int count)
    {
        std::vector<std::wstring> names;
        for (int i = 1; i <= count; ++i)
            names.push_back(L"R" + std::to_wstring(i));
        Fill(names);
    }

    /// Lets posted layout and stretching run.
    void settle()
    {
        model().FlushChanges();
        QCoreApplication::processEvents();
        QCoreApplication::processEvents();
    }

    QRect cell(int row, int column) const { return list().visualRect(model().index(row, column)); }
    QPoint at(int row, int column = Column::ReferenceName) const
    {
        return cell(row, column).center();
    }

    void click(int row, int column = Column::ReferenceName,
               Qt::KeyboardModifiers modifiers = Qt::NoModifier)
    {
        QTest::mouseClick(list().viewport(), Qt::LeftButton, modifiers, at(row, column));
    }
    /// A point of the viewport below the last row.
    QPoint emptySpace() const
    {
        auto& view = list();
        const QPoint point(20, view.viewport()->height() - 5);
        EXPECT_FALSE(view.indexAt(point).isValid()) << "the list is too short for empty space";
        return point;
    }
    void clickAt(const QPoint& point, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
    {
        QTest::mouseClick(list().viewport(), Qt::LeftButton, modifiers, point);
    }
    /// A right click and the context menu request that follows it.
    void rightClick(const QPoint& point, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
    {
        QTest::mousePress(list().viewport(), Qt::RightButton, modifiers, point);
        QTest::mouseRelease(list().viewport(), Qt::RightButton, modifiers, point);
        QContextMenuEvent menu(QContextMenuEvent::Mouse, point,
                               list().viewport()->mapToGlobal(point), modifiers);
        QApplication::sendEvent(list().viewport(), &menu);
    }
    void doubleClick(int row, int column)
    {
        QTest::mouseDClick(list().viewport(), Qt::LeftButton, Qt::NoModifier, at(row, column));
    }
    void key(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
    {
        QTest::keyClick(&list(), key, modifiers);
    }
    /// A key pressed and released while @p modifiers stay held (QTest's own key clicks press
    /// and release the modifier keys around the key).
    void keyWhileHeld(Qt::Key key, Qt::KeyboardModifiers modifiers)
    {
        QKeyEvent press(QEvent::KeyPress, key, modifiers);
        QApplication::sendEvent(&list(), &press);
        QKeyEvent release(QEvent::KeyRelease, key, modifiers);
        QApplication::sendEvent(&list(), &release);
    }
    /// A mouse move with the left button held, as a drag delivers it.
    void dragMove(const QPoint& point, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
    {
        QMouseEvent move(QEvent::MouseMove, point, list().viewport()->mapToGlobal(point),
                         Qt::NoButton, Qt::LeftButton, modifiers);
        QApplication::sendEvent(list().viewport(), &move);
    }

    /// The names of the selected rows, in row order.
    std::vector<std::wstring> selectedNames() const { return names(list().GetSelectedItems()); }
    std::vector<int> selectedRows() const { return model().SelectedRows(); }
    static std::vector<std::wstring> names(const std::vector<CXrefPanelCtrlItem*>& items)
    {
        std::vector<std::wstring> result;
        for (const CXrefPanelCtrlItem* item : items)
            result.push_back(item->GetText());
        return result;
    }
    /// The names in row order.
    std::vector<std::wstring> rowNames() const
    {
        std::vector<std::wstring> result;
        for (int row = 0; row < model().RowCount(); ++row)
            result.push_back(model().CellText(row, Column::ReferenceName).toStdWString());
        return result;
    }

    std::unique_ptr<testing::NiceMock<MockXrefPanel>> panel;
    TestXrefItem* root = nullptr;
    ListSignals raised;

private:
    void record()
    {
        CTroveListCtrl* l = &list();
        QObject::connect(l, &CTroveListCtrl::ItemsSelected, panel.get(),
                         [this](const CTroveListCtrl::ItemList& items, bool flag) {
                             raised.selected.push_back({names(items), flag});
                         });
        QObject::connect(l, &CTroveListCtrl::ContextMenu, panel.get(),
                         [this](QWidget*, const QPoint& point,
                                const CTroveListCtrl::ItemList& items, bool flag) {
                             raised.menus.push_back({point, names(items), flag});
                         });
        QObject::connect(l, &CTroveListCtrl::ContextMenuSelection, panel.get(),
                         [this](Trove::MenuItems item, const CTroveListCtrl::ItemList& items) {
                             raised.commands.emplace_back(int(item), names(items));
                         });
        QObject::connect(l, &CTroveListCtrl::StatusColumnDoubleClicked, panel.get(),
                         [this](CXrefPanelCtrlItem* item) {
                             raised.statusDoubleClicks.push_back(item ? item->GetText() : L"");
                         });
        QObject::connect(
            l, &CTroveListCtrl::SortCriteriaChanged, panel.get(),
            [this](int column, bool ascending) { raised.sorts.emplace_back(column, ascending); });
        QObject::connect(l, &CTroveListCtrl::PropertyEditStarting, panel.get(),
                         [this](Trove::XrefProperties property, const std::wstring& before) {
                             raised.edits.push_back({"starting", property, before, {}});
                         });
        QObject::connect(l, &CTroveListCtrl::PropertyEdited, panel.get(),
                         [this](Trove::XrefProperties property, const std::wstring& before,
                                const std::wstring& after) {
                             raised.edits.push_back({"edited", property, before, after});
                         });
        QObject::connect(l, &CTroveListCtrl::PropertyEditAborted, panel.get(),
                         [this](Trove::XrefProperties property) {
                             raised.edits.push_back({"aborted", property, {}, {}});
                         });
    }
};
