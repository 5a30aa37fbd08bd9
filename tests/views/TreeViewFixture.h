#pragma once

// A created mock panel whose tree view is shown in an active window, filled with a host drawing
// and a few references, and a recorder of every signal the tree raises.

#include "support/MockXrefPanel.h"
#include "support/TestXrefItem.h"

#include "views/XrefTreeCtrl.h"
#include "views/XrefTreeModel_p.h"
#include "views/XrefTreeNode_p.h"

#include <gtest/gtest.h>

#include <QContextMenuEvent>
#include <QCoreApplication>
#include <QMouseEvent>
#include <QStringList>
#include <QTest>

#include <memory>
#include <string>
#include <vector>

/// Every signal of a tree as one line of text: "selected Alpha program", "menu - user",
/// "starting 0 Alpha", "edited 0 Alpha Gamma", "aborted 0", "command 18 Alpha".
class TreeSignalLog
{
public:
    explicit TreeSignalLog(CXrefTreeCtrl& tree)
    {
        QObject::connect(&tree, &CXrefTreeCtrl::ItemsSelected, &m_context,
                         [this](const std::vector<CXrefPanelCtrlItem*>& items, bool flag) {
                             lines << QStringLiteral("selected %1 %2")
                                          .arg(names(items), flag ? QStringLiteral("program")
                                                                  : QStringLiteral("user"));
                         });
        QObject::connect(&tree, &CXrefTreeCtrl::ContextMenu, &m_context,
                         [this](QWidget* source, const QPoint& point,
                                const std::vector<CXrefPanelCtrlItem*>& items, bool flag) {
                             menuSource = source;
                             menuPoint = point;
                             lines << QStringLiteral("menu %1 %2")
                                          .arg(names(items), flag ? QStringLiteral("true")
                                                                  : QStringLiteral("false"));
                         });
        QObject::connect(
            &tree, &CXrefTreeCtrl::ContextMenuSelection, &m_context,
            [this](Trove::MenuItems item, const std::vector<CXrefPanelCtrlItem*>& items) {
                lines << QStringLiteral("command %1 %2").arg(int(item)).arg(names(items));
            });
        QObject::connect(&tree, &CXrefTreeCtrl::PropertyEditStarting, &m_context,
                         [this](Trove::XrefProperties property, const std::wstring& text) {
                             lines << QStringLiteral("starting %1 %2")
                                          .arg(int(property))
                                          .arg(QString::fromStdWString(text));
                         });
        QObject::connect(&tree, &CXrefTreeCtrl::PropertyEdited, &m_context,
                         [this](Trove::XrefProperties property, const std::wstring& before,
                                const std::wstring& after) {
                             lines << QStringLiteral("edited %1 %2 %3")
                                          .arg(int(property))
                                          .arg(QString::fromStdWString(before),
                                               QString::fromStdWString(after));
                         });
        QObject::connect(&tree, &CXrefTreeCtrl::PropertyEditAborted, &m_context,
                         [this](Trove::XrefProperties property) {
                             lines << QStringLiteral("aborted %1").arg(int(property));
                         });
    }

    /// The lines so far, and a fresh start.
    QStringList Take()
    {
        QStringList taken = lines;
        lines.clear();
        return taken;
    }

    QStringList lines;
    QWidget* menuSource = nullptr;
    QPoint menuPoint;

private:
    // Ends the connections with the log.
    QObject m_context;

    static QString names(const std::vector<CXrefPanelCtrlItem*>& items)
    {
        if (items.empty())
            return QStringLiteral("-");
        QStringList list;
        for (const CXrefPanelCtrlItem* item : items)
            list << QString::fromStdWString(item->GetText());
        return list.join(QLatin1Char(','));
    }
};

class TreeViewTest : public testing::Test
{
protected:
    void SetUp() override
    {
        panel = MockXrefPanel::Created();
        tree = panel->GetTreeCtrl();
        panel->resize(400, 600);
        panel->SetReferenceViewType(CXrefPanelCtrl::FileReferenceViewType::TreeView);
        panel->show();
        panel->activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(panel.get()));
        tree->setFocus();

        root = new TestXrefItem(*panel, true);
        panel->InsertRootItem(*root);
        root->SetText(L"Site");
        alpha = Add(L"Alpha");
        beta = Add(L"Beta");
        alphaChild = Add(L"Alpha child", alpha);
        log = std::make_unique<TreeSignalLog>(*tree);
    }

    void TearDown() override
    {
        log.reset();
        testing::Mock::VerifyAndClearExpectations(panel.get());
        panel->DeleteAllItems();
        panel.reset();
    }

    TestXrefItem* Add(const std::wstring& name, TestXrefItem* parent = nullptr)
    {
        auto* item = new TestXrefItem(*panel);
        panel->InsertItem(*item, parent ? *parent : *root, nullptr);
        item->SetText(name);
        return item;
    }

    QModelIndex IndexOf(const CXrefPanelCtrlItem& item) const { return tree->IndexFromItem(item); }
    /// The middle of @p item's row, in viewport coordinates.
    QPoint PointOf(const CXrefPanelCtrlItem& item) const
    {
        return tree->visualRect(IndexOf(item)).center();
    }
    /// A point below every node.
    QPoint EmptySpace() const { return QPoint(50, tree->viewport()->height() - 5); }
    void Click(const CXrefPanelCtrlItem& item)
    {
        QTest::mouseClick(tree->viewport(), Qt::LeftButton, Qt::NoModifier, PointOf(item));
    }
    /// Press, context-menu request and release, as the window system sends them.
    void RightClick(const QPoint& point)
    {
        QTest::mousePress(tree->viewport(), Qt::RightButton, Qt::NoModifier, point);
        QContextMenuEvent menu(QContextMenuEvent::Mouse, point,
                               tree->viewport()->mapToGlobal(point));
        QCoreApplication::sendEvent(tree->viewport(), &menu);
        QTest::mouseRelease(tree->viewport(), Qt::RightButton, Qt::NoModifier, point);
    }
    /// Both clicks of a double click, the second one with its double-click event.
    void DoubleClick(const QPoint& point)
    {
        const QPoint global = tree->viewport()->mapToGlobal(point);
        for (QEvent::Type type :
             {QEvent::MouseButtonPress, QEvent::MouseButtonRelease, QEvent::MouseButtonPress,
              QEvent::MouseButtonDblClick, QEvent::MouseButtonRelease}) {
            const Qt::MouseButtons held =
                type == QEvent::MouseButtonRelease ? Qt::NoButton : Qt::LeftButton;
            QMouseEvent event(type, point, global, Qt::LeftButton, held, Qt::NoModifier);
            QCoreApplication::sendEvent(tree->viewport(), &event);
        }
    }

    std::unique_ptr<testing::NiceMock<MockXrefPanel>> panel;
    CXrefTreeCtrl* tree = nullptr;
    TestXrefItem* root = nullptr;
    TestXrefItem* alpha = nullptr;
    TestXrefItem* beta = nullptr;
    TestXrefItem* alphaChild = nullptr;
    std::unique_ptr<TreeSignalLog> log;
};
