// The collapsible group: pages in front and behind, the notifications the panel relies on,
// header height, and the header's mouse and keyboard controls.

#include "support/ScopedOverrides.h"
#include "views/XrefGroupCtrl.h"

#include <gtest/gtest.h>

#include <QSignalSpy>
#include <QTest>

#include <memory>

namespace {

using Notice = std::pair<QWidget*, unsigned>;

class GroupPages : public testing::Test
{
protected:
    std::unique_ptr<CXrefGroupCtrl> group = std::make_unique<CXrefGroupCtrl>();
    QWidget* list = new QWidget;
    QWidget* tree = new QWidget;
    std::vector<Notice> notices;

    void SetUp() override
    {
        group->resize(300, 200);
        QObject::connect(
            group.get(), &CZuUiGroupCtrl::paneVisibilityChanging,
            [this](QWidget* pane, unsigned flags) { notices.emplace_back(pane, flags); });
        group->AddPage(list, "File References", "GRPCTRL_LISTVIEW");
        group->AddPage(tree, "Tree", "GRPCTRL_TREEVIEW");
    }
};

} // namespace

TEST_F(GroupPages, firstPageComesToFrontAndFillsTheContent)
{
    EXPECT_EQ(group->GetSelIndex(), 0);
    EXPECT_EQ(notices, (std::vector<Notice>{{list, CZuUiGroupCtrl::PaneShown}}));
    EXPECT_FALSE(list->isHidden());
    EXPECT_TRUE(tree->isHidden());
    EXPECT_EQ(list->geometry(), group->ContentRect());
    EXPECT_EQ(group->ContentRect().top(), 22);
    EXPECT_EQ(group->FindPage("GRPCTRL_TREEVIEW"), 1);
    EXPECT_EQ(group->FindPage("nothing"), -1);
}

TEST_F(GroupPages, bringingAPageToFrontHidesTheOldOneFirst)
{
    notices.clear();
    EXPECT_TRUE(group->SetSelIndex(1));
    EXPECT_EQ(notices, (std::vector<Notice>{{list, CZuUiGroupCtrl::PaneHidden},
                                            {tree, CZuUiGroupCtrl::PaneShown}}));
    EXPECT_TRUE(list->isHidden());
    EXPECT_EQ(tree->geometry(), group->ContentRect());
    notices.clear();
    EXPECT_TRUE(group->SetSelIndex(1)); // already in front: nothing to tell
    EXPECT_FALSE(group->SetSelIndex(2));
    EXPECT_FALSE(group->SetSelIndex(-1));
    EXPECT_TRUE(notices.empty());
    EXPECT_EQ(group->GetSelIndex(), 1);
}

TEST_F(GroupPages, collapsingHidesThePageAndExpandingRevealsIt)
{
    QSignalSpy collapsed(group.get(), &CZuUiGroupCtrl::collapsedChanged);
    notices.clear();
    group->SetCollapsed(true);
    EXPECT_TRUE(list->isHidden());
    group->SetCollapsed(true);
    group->SetCollapsed(false);
    EXPECT_EQ(notices, (std::vector<Notice>{{list, CZuUiGroupCtrl::PaneHidden},
                                            {list, CZuUiGroupCtrl::PaneRevealed}}));
    EXPECT_EQ(collapsed.count(), 2);
    EXPECT_FALSE(list->isHidden());
}

TEST_F(GroupPages, aDestroyedPageLeavesTheGroup)
{
    group->SetSelIndex(1);
    notices.clear();
    delete tree;
    EXPECT_EQ(group->GetPageCount(), 1);
    EXPECT_EQ(group->GetSelIndex(), 0);
    EXPECT_EQ(notices, (std::vector<Notice>{{list, CZuUiGroupCtrl::PaneShown}}));
    EXPECT_FALSE(list->isHidden());
}

TEST_F(GroupPages, headerButtonsChoosePagesAndCollapse)
{
    group->show();
    QTest::mouseClick(group.get(), Qt::LeftButton, Qt::NoModifier,
                      group->PageButtonRect(1).center());
    EXPECT_EQ(group->GetSelIndex(), 1);
    QTest::mouseClick(group.get(), Qt::LeftButton, Qt::NoModifier,
                      group->CollapseButtonRect().center());
    EXPECT_TRUE(group->IsCollapsed());
    // Choosing a page of a collapsed group opens it.
    QTest::mouseClick(group.get(), Qt::LeftButton, Qt::NoModifier,
                      group->PageButtonRect(0).center());
    EXPECT_EQ(group->GetSelIndex(), 0);
    EXPECT_FALSE(group->IsCollapsed());
    // Clicks in the content area are not the header's.
    QTest::mouseClick(group.get(), Qt::LeftButton, Qt::NoModifier, QPoint(150, 150));
    EXPECT_FALSE(group->IsCollapsed());
}

TEST_F(GroupPages, keyboardSwitchesPagesAndCollapses)
{
    QTest::keyClick(group.get(), Qt::Key_Right);
    EXPECT_EQ(group->GetSelIndex(), 1);
    QTest::keyClick(group.get(), Qt::Key_Right);
    EXPECT_EQ(group->GetSelIndex(), 1);
    QTest::keyClick(group.get(), Qt::Key_Left);
    EXPECT_EQ(group->GetSelIndex(), 0);
    QTest::keyClick(group.get(), Qt::Key_Space);
    EXPECT_TRUE(group->IsCollapsed());
    QTest::keyClick(group.get(), Qt::Key_Return);
    EXPECT_FALSE(group->IsCollapsed());
}

TEST(GroupHeader, pageButtonsShowTheLibraryIconOfTheThemeNamedByTheKey)
{
    ScopedTheme light(false);
    CXrefGroupCtrl group;
    group.resize(200, 100);
    group.AddPage(new QWidget, "Details", "GRPCTRL_DETAILS");
    group.AddPage(new QWidget, "Preview", "NO_SUCH_ICON");
    const QRect button = group.PageButtonRect(0);
    ASSERT_FALSE(button.isEmpty());
    const QImage lightHeader = group.grab(button).toImage();
    {
        ScopedTheme dark(true);
        const QImage darkHeader = group.grab(button).toImage();
        EXPECT_NE(lightHeader, darkHeader);
    }
    // No single page, no buttons.
    CXrefGroupCtrl single;
    single.AddPage(new QWidget, "Details", "GRPCTRL_DETAILS");
    EXPECT_TRUE(single.PageButtonRect(0).isEmpty());
}
