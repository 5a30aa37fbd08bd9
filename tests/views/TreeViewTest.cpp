// The tree view's gestures and what it reports for them: selection and who made it, the context
// menu and its commands, the root that the user cannot fold away, keys, renames, and the tips.

#include "TreeViewFixture.h"

#include "framework/Win32Types.h"
#include "host/KvToolTipService.h"
#include "services/RmxImageSettings.h"
#include "support/QtPrinters.h"
#include "support/ScopedOverrides.h"

#include <QApplication>
#include <QContextMenuEvent>
#include <QLineEdit>
#include <QShortcut>
#include <QSignalSpy>

namespace {

const QStringList kNothing;

TEST_F(TreeViewTest, selectionChangesSayWhetherTheUserMadeThem)
{
    tree->SelectItem(alpha->GetTreeItem());
    EXPECT_EQ(log->Take(), QStringList{"selected Alpha program"});

    Click(*beta);
    EXPECT_EQ(log->Take(), QStringList{"selected Beta user"});

    // The node that is already selected is reported again, once.
    Click(*beta);
    EXPECT_EQ(log->Take(), QStringList{"selected Beta user"});

    QTest::keyClick(tree, Qt::Key_Up);
    EXPECT_EQ(log->Take(), QStringList{"selected Alpha child user"});

    // Control does not take the only selection away.
    QTest::mouseClick(tree->viewport(), Qt::LeftButton, Qt::ControlModifier, PointOf(*alpha));
    EXPECT_EQ(log->Take(), QStringList{"selected Alpha user"});
    EXPECT_EQ(tree->GetSelectedItems(), std::vector<CXrefPanelCtrlItem*>{alpha});

    // Empty space leaves the selection and still reports it.
    QTest::mouseClick(tree->viewport(), Qt::LeftButton, Qt::NoModifier, EmptySpace());
    EXPECT_EQ(log->Take(), QStringList{"selected Alpha user"});

    tree->SelectItem(nullptr);
    EXPECT_EQ(log->Take(), QStringList{"selected - program"});
}

TEST_F(TreeViewTest, draggingWithTheButtonHeldSelectsNothingElse)
{
    QTest::mousePress(tree->viewport(), Qt::LeftButton, Qt::NoModifier, PointOf(*alpha));
    QMouseEvent move(QEvent::MouseMove, PointOf(*beta),
                     tree->viewport()->mapToGlobal(PointOf(*beta)), Qt::NoButton, Qt::LeftButton,
                     Qt::NoModifier);
    QApplication::sendEvent(tree->viewport(), &move);
    QTest::mouseRelease(tree->viewport(), Qt::LeftButton, Qt::NoModifier, PointOf(*beta));
    EXPECT_EQ(log->Take(), QStringList{"selected Alpha user"});
}

TEST_F(TreeViewTest, rightClickSelectsTheNodeUnderThePointerBeforeTheMenu)
{
    tree->SelectItem(alpha->GetTreeItem());
    log->Take();

    RightClick(PointOf(*beta));
    EXPECT_EQ(log->Take(), (QStringList{"selected Beta user", "menu Beta false"}));
    EXPECT_EQ(log->menuSource, tree);
    // In the view's own coordinates, as the panel maps them.
    EXPECT_EQ(log->menuPoint, tree->viewport()->mapTo(tree, PointOf(*beta)));

    RightClick(EmptySpace());
    EXPECT_EQ(log->Take(), (QStringList{"selected - user", "menu - false"}));
    EXPECT_TRUE(tree->GetSelectedItems().empty());

    // The menu key opens the menu where the pointer is.
    QCursor::setPos(tree->viewport()->mapToGlobal(PointOf(*alpha)));
    QContextMenuEvent key(QContextMenuEvent::Keyboard, QPoint(0, 0), QCursor::pos());
    QApplication::sendEvent(tree, &key);
    EXPECT_EQ(log->Take(), (QStringList{"selected Alpha user", "menu Alpha false"}));
}

TEST_F(TreeViewTest, theTreeRoutesItsOwnSetOfContextCommands)
{
    tree->SelectItem(beta->GetTreeItem());
    log->Take();
    for (unsigned id : {3u, 18u, 28u, 30u, 35u, 39u, 46u, 47u, 1000u, 1040u}) {
        EXPECT_TRUE(tree->OnCommand(id)) << id;
        EXPECT_EQ(log->Take(), QStringList{QStringLiteral("command %1 Beta").arg(id)});
    }
    for (unsigned id : {0u, 1u, 2u, 40u, 41u, 42u, 43u, 44u, 45u, 48u, 999u, 1041u}) {
        EXPECT_FALSE(tree->OnCommand(id)) << id;
        EXPECT_EQ(log->Take(), kNothing) << id;
    }
}

TEST_F(TreeViewTest, theUserCannotFoldTheRootAwayButAProgramCan)
{
    const QModelIndex rootIndex = IndexOf(*root);
    ASSERT_TRUE(tree->isExpanded(rootIndex));
    tree->setCurrentIndex(rootIndex);
    QTest::keyClick(tree, Qt::Key_Left);
    QTest::keyClick(tree, Qt::Key_Minus);
    DoubleClick(PointOf(*root));
    EXPECT_TRUE(tree->isExpanded(rootIndex));
    EXPECT_EQ(tree->currentIndex(), rootIndex);

    // Any other node folds as the user likes.
    tree->setCurrentIndex(IndexOf(*alpha));
    QTest::keyClick(tree, Qt::Key_Left);
    EXPECT_FALSE(tree->isExpanded(IndexOf(*alpha)));
    DoubleClick(PointOf(*alpha));
    EXPECT_TRUE(tree->isExpanded(IndexOf(*alpha)));

    tree->Collapse(root->GetTreeItem());
    EXPECT_FALSE(tree->IsExpanded(root->GetTreeItem()));
    tree->Expand(root->GetTreeItem());
    EXPECT_TRUE(tree->IsExpanded(root->GetTreeItem()));
}

TEST_F(TreeViewTest, aChainTooDeepToLayOutOpensOnlyDownToTheLimit)
{
    // The root is level 0, Alpha 1: the chain below Alpha reaches past the limit.
    std::vector<TestXrefItem*> chain{alpha};
    panel->BeginUpdate();
    while (chain.size() < std::size_t(CXrefTreeCtrl::kMaxOpenLevel) + 5)
        chain.push_back(Add(L"Level", chain.back()));
    panel->EndUpdate();
    const auto opened = [&](std::size_t i) { return tree->IsExpanded(chain[i]->GetTreeItem()); };
    const std::size_t limit = CXrefTreeCtrl::kMaxOpenLevel - 1; // Alpha's level is 1
    EXPECT_TRUE(opened(limit - 1));
    EXPECT_FALSE(opened(limit));

    // Neither the user nor the base class's calls open it further.
    tree->setCurrentIndex(IndexOf(*chain[limit]));
    QTest::keyClick(tree, Qt::Key_Right);
    QTest::keyClick(tree, Qt::Key_Plus);
    tree->QTreeView::expand(IndexOf(*chain[limit + 1]));
    tree->Collapse(alpha->GetTreeItem());
    tree->setCurrentIndex(IndexOf(*alpha));
    QTest::keyClick(tree, Qt::Key_Asterisk);
    EXPECT_TRUE(opened(0));
    EXPECT_FALSE(opened(limit));
    EXPECT_FALSE(opened(limit + 1));
    tree->expandAll();
    EXPECT_TRUE(opened(limit - 1));
    EXPECT_FALSE(opened(limit));
    EXPECT_FALSE(tree->grab().isNull());
}

TEST_F(TreeViewTest, typingNeverSearchesWhileNavigationKeysStillMove)
{
    tree->setCurrentIndex(IndexOf(*root));
    QTest::keyClicks(tree, QStringLiteral("Beta"));
    EXPECT_EQ(tree->currentIndex(), IndexOf(*root));

    QTest::keyClick(tree, Qt::Key_Down);
    EXPECT_EQ(tree->currentIndex(), IndexOf(*alpha));
    QTest::keyClick(tree, Qt::Key_End);
    EXPECT_EQ(tree->currentIndex(), IndexOf(*beta));
    QTest::keyClick(tree, Qt::Key_Home);
    EXPECT_EQ(tree->currentIndex(), IndexOf(*root));
    QTest::keyClick(tree, Qt::Key_PageDown);
    EXPECT_EQ(tree->currentIndex(), IndexOf(*beta));
}

class TreeRenameTest : public TreeViewTest
{
protected:
    void SetUp() override
    {
        TreeViewTest::SetUp();
        alpha->editable = [](Trove::XrefProperties property, int) {
            return property == Trove::XrefProperties::Name;
        };
        tree->SelectItem(alpha->GetTreeItem());
        log->Take();
    }
    QLineEdit* Editor() const
    {
        return qobject_cast<QLineEdit*>(tree->indexWidget(IndexOf(*alpha)));
    }
    QString Label() const { return QString::fromStdWString(alpha->GetText()); }
};

TEST_F(TreeRenameTest, anEndedRenameIsReportedAndTheLabelStaysForThePanelToChange)
{
    QTest::keyClick(tree, Qt::Key_F2);
    EXPECT_EQ(log->Take(), QStringList{"starting 0 Alpha"});
    QLineEdit* editor = Editor();
    ASSERT_NE(editor, nullptr);
    editor->selectAll();
    QTest::keyClicks(editor, QStringLiteral("Gamma"));
    QTest::keyClick(editor, Qt::Key_Return);
    EXPECT_EQ(log->Take(), QStringList{"edited 0 Alpha Gamma"});
    EXPECT_EQ(Label(), QStringLiteral("Alpha"));
    EXPECT_FALSE(tree->IsEditingLabel());

    // Enter with the text unchanged is still an edit.
    QTest::keyClick(tree, Qt::Key_F2);
    ASSERT_NE(Editor(), nullptr);
    QTest::keyClick(Editor(), Qt::Key_Return);
    EXPECT_EQ(log->Take(), (QStringList{"starting 0 Alpha", "edited 0 Alpha Alpha"}));

    // So is the focus going elsewhere.
    QTest::keyClick(tree, Qt::Key_F2);
    ASSERT_NE(Editor(), nullptr);
    QTest::keyClicks(Editor(), QStringLiteral("X"));
    tree->setFocus();
    EXPECT_EQ(log->Take(), (QStringList{"starting 0 Alpha", "edited 0 Alpha X"}));
}

TEST_F(TreeRenameTest, hostShortcutsOnEnterAndEscapeDoNotTakeTheKeysFromTheRename)
{
    int fired = 0;
    QShortcut enter(QKeySequence(Qt::Key_Return), panel.get());
    QShortcut escape(QKeySequence(Qt::Key_Escape), panel.get());
    QObject::connect(&enter, &QShortcut::activated, [&] { ++fired; });
    QObject::connect(&escape, &QShortcut::activated, [&] { ++fired; });
    QTest::keyClick(tree, Qt::Key_F2);
    ASSERT_NE(Editor(), nullptr);
    QTest::keyClick(Editor(), Qt::Key_Return);
    QTest::keyClick(tree, Qt::Key_F2);
    ASSERT_NE(Editor(), nullptr);
    QTest::keyClick(Editor(), Qt::Key_Escape);
    EXPECT_EQ(fired, 0);
    EXPECT_EQ(log->Take(), (QStringList{"starting 0 Alpha", "edited 0 Alpha Alpha",
                                        "starting 0 Alpha", "aborted 0"}));
}

TEST_F(TreeRenameTest, escapeAbortsTheRename)
{
    QTest::keyClick(tree, Qt::Key_F2);
    ASSERT_NE(Editor(), nullptr);
    QTest::keyClicks(Editor(), QStringLiteral("Gamma"));
    QTest::keyClick(Editor(), Qt::Key_Escape);
    EXPECT_EQ(log->Take(), (QStringList{"starting 0 Alpha", "aborted 0"}));
    EXPECT_EQ(Label(), QStringLiteral("Alpha"));
}

TEST_F(TreeRenameTest, anItemThatRefusesItsNameOpensNoEditorAndReportsNothing)
{
    tree->SelectItem(beta->GetTreeItem());
    log->Take();
    QTest::keyClick(tree, Qt::Key_F2);
    EXPECT_EQ(log->Take(), kNothing);
    EXPECT_EQ(tree->indexWidget(IndexOf(*beta)), nullptr);
    EXPECT_FALSE(tree->EditLabel(beta->GetTreeItem()));
}

TEST_F(TreeRenameTest, aRenamedNodeThatGoesAbortsTheRename)
{
    alphaChild->editable = [](Trove::XrefProperties, int) { return true; };
    ASSERT_TRUE(tree->EditLabel(alphaChild->GetTreeItem()));
    log->Take();
    ASSERT_TRUE(tree->DeleteChildren(alpha->GetTreeItem()));
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_EQ(log->Take().filter(QStringLiteral("0")), QStringList{"aborted 0"});
    EXPECT_FALSE(tree->IsEditingLabel());
    // The next rename opens as usual.
    EXPECT_TRUE(tree->EditLabel(alpha->GetTreeItem()));
}

TEST_F(TreeViewTest, deletingChildrenOfAForeignNodeOrFromInsideADeletionIsRefused)
{
    CXrefTreeCtrl other(false);
    EXPECT_FALSE(other.DeleteChildren(alpha->GetTreeItem()));
    EXPECT_EQ(tree->GetCount(), 4);

    bool nestedAnswer = true;
    QObject context;
    QObject::connect(tree, &CXrefTreeCtrl::ItemToBeDeleted, &context, [&](CXrefPanelCtrlItem*) {
        nestedAnswer = tree->DeleteChildren(beta->GetTreeItem());
    });
    EXPECT_TRUE(tree->DeleteChildren(alpha->GetTreeItem()));
    EXPECT_FALSE(nestedAnswer);
    EXPECT_EQ(tree->GetCount(), 3);
}

// --- Item colours, fonts and the bold state -----------------------------------------------------

class TreeStyleTest : public TreeViewTest
{
protected:
    void SetUp() override
    {
        TreeViewTest::SetUp();
        TroveUI::RmxImageSettings::New();
        m_wasLoggedIn = TroveUI::RmxImageSettings::Value().GetTroveLoggedIn();
    }
    void TearDown() override
    {
        TroveUI::RmxImageSettings::Value().SetTroveLoggedIn(m_wasLoggedIn);
        TreeViewTest::TearDown();
    }
    void Style(TestXrefItem& item, std::int32_t weight, COLORREF colour)
    {
        auto& style = item.EditTextStyle();
        style.treeCtrlItemTextFont.lfWeight = weight;
        style.itemTextColor = colour;
    }
    static bool Bold(const CXrefPanelCtrlItem& item) { return item.GetTreeItem()->state.IsBold(); }
    /// How many pixels of @p item's row are exactly @p colour after a paint.
    int PixelsOf(const CXrefPanelCtrlItem& item, QColor colour)
    {
        const QImage image = tree->viewport()->grab().toImage();
        const QRect row = tree->visualRect(IndexOf(item)) & image.rect();
        int count = 0;
        for (int y = row.top(); y <= row.bottom(); ++y)
            for (int x = row.left(); x <= row.right(); ++x)
                count += image.pixelColor(x, y) == colour;
        return count;
    }
    void Paint() { tree->viewport()->grab(); }

    bool m_wasLoggedIn = false;
};

TEST_F(TreeStyleTest, loggedInItemsWithStylesDrawInTheirColourAndBoldExactlyAt700)
{
    TroveUI::RmxImageSettings::Value().SetTroveLoggedIn(true);
    ScopedSystemVariable titled(QStringLiteral("DWGTITLED"), 1);
    QFont font = tree->font();
    font.setPixelSize(18);
    tree->setFont(font);
    const QColor red(0xFF, 0, 0);
    Style(*alpha, 700, MakeColorRef(0xFF, 0, 0));
    Style(*beta, 800, MakeColorRef(0xFF, 0, 0));
    Paint();
    EXPECT_TRUE(Bold(*alpha));
    EXPECT_FALSE(Bold(*beta)) << "only weight 700 is the bold state";
    EXPECT_GT(PixelsOf(*alpha, red), 0);

    // A selected node keeps the view's text colour.
    tree->SelectItem(alpha->GetTreeItem());
    EXPECT_EQ(PixelsOf(*alpha, red), 0);

    // The view's default font takes the bold state away again.
    alpha->EditTextStyle().useDefaultFont = true;
    Paint();
    EXPECT_FALSE(Bold(*alpha));
}

TEST_F(TreeStyleTest, withoutItemStylesNothingChangesAndLoggingOutClearsBold)
{
    TroveUI::RmxImageSettings::Value().SetTroveLoggedIn(true);
    Style(*alpha, 700, MakeColorRef(0xFF, 0, 0));
    {
        ScopedSystemVariable titled(QStringLiteral("DWGTITLED"), 1);
        Paint();
        ASSERT_TRUE(Bold(*alpha));
    }
    {
        ScopedSystemVariable untitled(QStringLiteral("DWGTITLED"), 0);
        Style(*beta, 700, MakeColorRef(0xFF, 0, 0));
        Paint();
        EXPECT_TRUE(Bold(*alpha)) << "the state stays as it was";
        EXPECT_FALSE(Bold(*beta));
        EXPECT_EQ(PixelsOf(*beta, QColor(0xFF, 0, 0)), 0);
    }
    TroveUI::RmxImageSettings::Value().SetTroveLoggedIn(false);
    ScopedSystemVariable titled(QStringLiteral("DWGTITLED"), 1);
    Paint();
    EXPECT_FALSE(Bold(*alpha));
}

// --- Rich tips ----------------------------------------------------------------------------------

class TreeTipTest : public TreeViewTest
{
protected:
    void SetUp() override
    {
        TreeViewTest::SetUp();
        service()->Hide();
    }
    void TearDown() override
    {
        service()->Hide();
        TreeViewTest::TearDown();
    }
    static KvToolTipService* service() { return KvToolTipService::Instance(); }
    void MoveTo(const QPoint& point)
    {
        QMouseEvent move(QEvent::MouseMove, point, tree->viewport()->mapToGlobal(point),
                         Qt::NoButton, Qt::NoButton, Qt::NoModifier);
        QApplication::sendEvent(tree->viewport(), &move);
    }
};

TEST_F(TreeTipTest, theNodeUnderThePointerShowsItsItemsTipUntilAButtonIsPressed)
{
    ScopedSystemVariable tips(QStringLiteral("TOOLTIPS"), 1);
    MoveTo(PointOf(*beta));
    ASSERT_TRUE(service()->IsShowing());
    EXPECT_TRUE(service()->HasToolTipInfo());
    const QRect shownAt = service()->Popup()->geometry();

    QTest::mousePress(tree->viewport(), Qt::RightButton, Qt::NoModifier, PointOf(*beta));
    EXPECT_FALSE(service()->IsShowing());
    QTest::mouseRelease(tree->viewport(), Qt::RightButton, Qt::NoModifier, PointOf(*beta));

    // Moving on within the same node brings the tip back; empty space takes it away.
    MoveTo(PointOf(*beta) + QPoint(3, 0));
    EXPECT_TRUE(service()->IsShowing());
    EXPECT_EQ(service()->Popup()->geometry(), shownAt);
    MoveTo(EmptySpace());
    EXPECT_FALSE(service()->IsShowing());
}

TEST_F(TreeTipTest, aNodeWithoutItemShowsNothingAndTipsCanBeSwitchedOff)
{
    ScopedSystemVariable tips(QStringLiteral("TOOLTIPS"), 1);
    MoveTo(PointOf(*beta));
    ASSERT_TRUE(service()->HasToolTipInfo());
    const QPoint betaPoint = PointOf(*beta);
    delete beta; // the node stays, without its item
    beta = nullptr;
    MoveTo(PointOf(*alpha));
    MoveTo(betaPoint);
    EXPECT_FALSE(service()->HasToolTipInfo());
    EXPECT_FALSE(service()->IsShowing());

    ScopedSystemVariable off(QStringLiteral("TOOLTIPS"), 0);
    MoveTo(PointOf(*alpha));
    EXPECT_FALSE(service()->IsShowing());
}

} // namespace
