// A seeded random run of user gestures (clicks with and without Shift or Ctrl, keys, right
// clicks with a menu choice, renames begun and abandoned or committed, view and pane switches)
// mixed with what a host does (insert, delete a subtree, delete everything, status changes,
// theme and scale changes), checking after every step that the panel points at nothing that
// is gone and that its views agree with the items it holds.
//
// KVX_MONKEY_STEPS and KVX_MONKEY_SEED choose the length and the seed; a failure names the seed
// and the step so that the run can be repeated.

#include "PanelFixture.h"
#include "support/TestXrefItem.h"

#include "framework/ZuUiHiDpi.h"
#include "framework/ZuUiMenu.h"
#include "framework/ZuUiTheme.h"
#include "items/TroveListCtrlItem.h"
#include "views/TroveListModel_p.h"
#include "views/XrefPropListCtrl.h"

#include <QCoreApplication>
#include <QLineEdit>
#include <QTest>

#include <random>
#include <set>

namespace {

using testing::_;
using testing::Invoke;
using testing::Return;
using Props = Trove::XrefProperties;

/// Every item of the run, so that the test knows which are alive.
std::set<const CXrefPanelCtrlItem*>& liveItems()
{
    static std::set<const CXrefPanelCtrlItem*> items;
    return items;
}

class MonkeyItem : public TestXrefItem
{
public:
    MonkeyItem(CXrefPanelCtrl& panel, bool host = false) : TestXrefItem(panel, host)
    {
        liveItems().insert(this);
        editable = [](Props property, int) { return property == Props::Name; };
    }
    ~MonkeyItem() override { liveItems().erase(this); }
};

int envNumber(const char* name, int fallback)
{
    bool ok = false;
    const int value = qEnvironmentVariableIntValue(name, &ok);
    return ok ? value : fallback;
}

class GestureMonkeyTest : public PanelFixture
{
protected:
    void SetUp() override
    {
        m_menus = CZuUiMenu::SetTrackHandler([this](QMenu&, unsigned, QPoint, QWidget*) {
            // A context menu's choice: dismissed, or one of the commands the views route.
            static const unsigned choices[] = {0, 3, 9, 18, 31};
            return choices[pick(std::size(choices))];
        });
        toolBar = std::make_shared<CXrefToolBar>();
        panel = Make(520, 760, false, toolBar, Trove::ListViewColumn::ReferenceName, true);
        ON_CALL(*panel, FillContextMenu(_, _, _))
            .WillByDefault(Invoke([](QMenu& menu, const std::vector<CXrefPanelCtrlItem*>&, bool) {
                CXrefPanelCtrl::InsertMenuW(menu, Trove::HostCommand3, 0, nullptr);
                CXrefPanelCtrl::InsertMenuW(menu, Trove::HostCommand9, 0, nullptr);
            }));
        // The host accepts every other edit, and may empty the panel from a menu command.
        ON_CALL(*panel, OnApplyPropertyEdit(_, _, _, _))
            .WillByDefault(Invoke([this](const std::vector<CXrefPanelCtrlItem*>& items, Props,
                                         const std::wstring& value, const std::wstring&) {
                if (pick(2) == 0)
                    return false;
                for (CXrefPanelCtrlItem* item : items)
                    static_cast<MonkeyItem*>(item)->SetText(value);
                return true;
            }));
        ON_CALL(*panel, OnMenuSelection(_, _))
            .WillByDefault(
                Invoke([this](Trove::MenuItems item, const std::vector<CXrefPanelCtrlItem*>&) {
                    if (item == Trove::HostCommand9 && pick(20) == 0)
                        refill(50);
                }));
        panel->show();
        QApplication::setActiveWindow(panel.get());
    }

    void TearDown() override
    {
        if (panel)
            panel->DeleteAllItems();
        panel.reset();
        // What the host kept after taking it out of the panel.
        for (MonkeyItem* item : m_detached)
            delete item;
        m_detached.clear();
        CZuUiMenu::SetTrackHandler(std::move(m_menus));
    }

    std::size_t pick(std::size_t count)
    {
        return std::uniform_int_distribution<std::size_t>(0, count - 1)(m_random);
    }

    void refill(int count)
    {
        panel->DeleteAllItems();
        panel->BeginUpdate();
        root = new MonkeyItem(*panel, true);
        root->sortItem = false;
        panel->InsertRootItem(*root);
        root->SetText(L"Site");
        for (int i = 0; i < count; ++i)
            insert();
        panel->EndUpdate();
    }

    /// A new reference under a random item in the tree; now and then a second occurrence of a
    /// file already listed.
    void insert()
    {
        std::vector<CXrefPanelCtrlItem*> inTree = treeItems();
        CXrefPanelCtrlItem* parent = inTree.empty() ? nullptr : inTree[pick(inTree.size())];
        if (!parent)
            return;
        auto* item = new MonkeyItem(*panel);
        const CXrefPanelCtrlItem* shared = nullptr;
        if (inTree.size() > 2 && pick(10) == 0) {
            shared = inTree[pick(inTree.size())];
            if (shared == root || !shared->GetListRowLink())
                shared = nullptr;
        }
        panel->InsertItem(*item, *parent, shared);
        item->SetText(shared ? shared->GetText() : L"Ref " + std::to_wstring(++m_names));
        item->SetType(pick(3) ? L"Attach" : L"Overlay");
        item->fileType = pick(4) ? 1 : int(5 + pick(2));
    }

    /// Live items that are neither in the tree nor kept by the host yet: the host keeps them.
    void adoptOrphans()
    {
        const std::vector<CXrefPanelCtrlItem*> inTree = treeItems();
        const std::set<const CXrefPanelCtrlItem*> placed(inTree.begin(), inTree.end());
        const std::set<const CXrefPanelCtrlItem*> kept(m_detached.begin(), m_detached.end());
        for (const CXrefPanelCtrlItem* item : liveItems()) {
            if (!placed.count(item) && !kept.count(item))
                m_detached.push_back(const_cast<MonkeyItem*>(static_cast<const MonkeyItem*>(item)));
        }
    }

    std::vector<CXrefPanelCtrlItem*> treeItems() const
    {
        std::vector<CXrefPanelCtrlItem*> items;
        if (CXrefPanelCtrlItem* top = panel->GetRootItem()) {
            std::vector<CXrefPanelCtrlItem*> pending{top};
            while (!pending.empty()) {
                CXrefPanelCtrlItem* item = pending.back();
                pending.pop_back();
                items.push_back(item);
                for (CXrefPanelCtrlItem* child : panel->GetChildren(*item))
                    pending.push_back(child);
            }
        }
        return items;
    }

    QWidget& front() const
    {
        if (panel->GetReferenceViewType() == CXrefPanelCtrl::FileReferenceViewType::TreeView)
            return *panel->GetTreeCtrl()->viewport();
        return *panel->GetListCtrl()->viewport();
    }

    QPoint randomPoint()
    {
        QWidget& view = front();
        return QPoint(int(pick(std::size_t(std::max(1, view.width())))),
                      int(pick(std::size_t(std::max(1, view.height())))));
    }

    Qt::KeyboardModifiers randomModifiers()
    {
        switch (pick(4)) {
        case 0:
            return Qt::ShiftModifier;
        case 1:
            return Qt::ControlModifier;
        default:
            return Qt::NoModifier;
        }
    }

    void gesture()
    {
        QWidget& view = front();
        QWidget* keys = view.parentWidget();
        switch (pick(12)) {
        case 0:
        case 1:
        case 2: {
            const Qt::KeyboardModifiers modifiers = randomModifiers();
            QTest::mouseClick(&view, Qt::LeftButton, modifiers, randomPoint());
            if (modifiers)
                QTest::keyRelease(keys,
                                  modifiers & Qt::ShiftModifier ? Qt::Key_Shift : Qt::Key_Control);
            break;
        }
        case 3: {
            static const Qt::Key moves[] = {Qt::Key_Up,   Qt::Key_Down,     Qt::Key_Home,
                                            Qt::Key_End,  Qt::Key_PageDown, Qt::Key_Left,
                                            Qt::Key_Right};
            const Qt::Key key = moves[pick(std::size(moves))];
            QTest::keyPress(keys, key);
            QTest::keyRelease(keys, key);
            break;
        }
        case 4: {
            const QPoint at = randomPoint();
            QTest::mousePress(&view, Qt::RightButton, {}, at);
            QTest::mouseRelease(&view, Qt::RightButton, {}, at);
            QContextMenuEvent menu(QContextMenuEvent::Mouse, at, view.mapToGlobal(at));
            QApplication::sendEvent(&view, &menu);
            break;
        }
        case 5: {
            // A rename, abandoned or committed with a new name.
            QTest::keyClick(keys, Qt::Key_F2);
            if (QLineEdit* editor = keys->findChild<QLineEdit*>(); editor && editor->isVisible()) {
                if (pick(2)) {
                    editor->setText(QStringLiteral("Renamed %1").arg(++m_names));
                    QTest::keyClick(editor, Qt::Key_Return);
                } else {
                    QTest::keyClick(editor, Qt::Key_Escape);
                }
            }
            break;
        }
        case 6:
            panel->SetReferenceViewType(pick(2) ? CXrefPanelCtrl::FileReferenceViewType::ListView
                                                : CXrefPanelCtrl::FileReferenceViewType::TreeView);
            break;
        case 7:
            if (pick(2))
                panel->OnPreviewDetailsPane();
            else
                panel->SetDetailsViewType(pick(2) ? CXrefPanelCtrl::DetailsViewType::Details
                                                  : CXrefPanelCtrl::DetailsViewType::Preview);
            break;
        default:
            hostOperation();
            break;
        }
        QCoreApplication::sendPostedEvents();
    }

    void hostOperation()
    {
        std::vector<CXrefPanelCtrlItem*> inTree = treeItems();
        switch (pick(8)) {
        case 0:
        case 1:
            insert();
            break;
        case 2:
            if (inTree.size() > 1) {
                // The named item stays the host's; it keeps it for a while, then deletes it.
                CXrefPanelCtrlItem* item = inTree[1 + pick(inTree.size() - 1)];
                panel->DeleteTreeItem(*item);
                m_detached.push_back(static_cast<MonkeyItem*>(item));
            }
            break;
        case 3:
            if (inTree.size() > 1) {
                // Deleted outright while still in the panel; the items below it stay the host's.
                delete inTree[1 + pick(inTree.size() - 1)];
                adoptOrphans();
            }
            break;
        case 4:
            if (!inTree.empty())
                static_cast<MonkeyItem*>(inTree[pick(inTree.size())])
                    ->SetReferenceStatus(RefStatus::RefIcon(1 + pick(6)),
                                         Trove::FileDataStatus::Value());
            break;
        case 5:
            CZuUiTheme::Instance().SetDarkTheme(!CZuUiTheme::Instance().IsDarkTheme());
            break;
        case 6:
            CZuUiHiDpi::SetOverride(pick(2) ? 1.0 : 1.5, pick(2) ? 1.0 : 1.5);
            panel->resize(panel->size());
            break;
        default:
            if (pick(10) == 0)
                refill(int(pick(60)));
            else if (!m_detached.empty()) {
                delete m_detached.back();
                m_detached.pop_back();
            }
            break;
        }
    }

    /// The panel holds only live items, and its two views agree with the items in the tree.
    void checkInvariants(int step)
    {
        for (CXrefPanelCtrlItem* item : panel->GetSelectedItems())
            ASSERT_TRUE(liveItems().count(item)) << "selected item is gone, step " << step;
        const std::vector<CXrefPanelCtrlItem*> inTree = treeItems();
        std::set<const CTroveListCtrlItem*> rows;
        for (CXrefPanelCtrlItem* item : inTree) {
            ASSERT_TRUE(liveItems().count(item)) << "tree node of a gone item, step " << step;
            if (item->GetListRowLink())
                rows.insert(item->GetListRowLink().get());
        }
        CTroveListCtrl& list = *panel->GetListCtrl();
        list.Model().FlushChanges();
        ASSERT_EQ(panel->GetTreeCtrl()->GetCount(), int(inTree.size())) << "step " << step;
        // Items the host took out of the tree keep their rows until it deletes them.
        for (MonkeyItem* item : m_detached)
            if (item->GetListRowLink() && item->LVItemIndex() >= 0)
                rows.insert(item->GetListRowLink().get());
        ASSERT_EQ(list.GetItemCount(), int(rows.size()))
            << "list rows are the files, step " << step;
        // A row may have no item left while a sharer the host took out still holds it; it
        // never names a gone one.
        for (int row = 0; row < list.GetItemCount(); ++row) {
            const CXrefPanelCtrlItem* item = list.ItemOfRow(row);
            ASSERT_TRUE(!item || liveItems().count(item)) << "row of a gone item, step " << step;
        }
    }

    std::shared_ptr<CXrefToolBar> toolBar;
    std::unique_ptr<TestPanel> panel;
    MonkeyItem* root = nullptr;
    std::vector<MonkeyItem*> m_detached;
    std::mt19937 m_random;
    int m_names = 0;
    CZuUiMenu::TrackHandler m_menus;
    ScopedTheme m_theme{false};
};

TEST_F(GestureMonkeyTest, randomGesturesAndHostOperationsLeaveNothingDangling)
{
    const int seed = envNumber("KVX_MONKEY_SEED", 20261125);
    const int steps = envNumber("KVX_MONKEY_STEPS", 1500);
    const int references = envNumber("KVX_MONKEY_REFERENCES", 300);
    m_random.seed(std::uint32_t(seed));
    SCOPED_TRACE("KVX_MONKEY_SEED=" + std::to_string(seed));
    refill(references);
    int selecting = 0;
    for (int step = 0; step < steps; ++step) {
        gesture();
        checkInvariants(step);
        if (HasFatalFailure())
            return;
        selecting += !panel->GetSelectedItems().empty();
    }
    // The gestures must reach the panel: a run that never selects anything checks nothing.
    EXPECT_GT(selecting, steps / 10);
}

} // namespace
