// The panel's own state, menu texts, state image lists and the items' repository state images.

#include "ItemFixture.h"

#include "framework/ZuUiHiDpi.h"
#include "framework/ZuUiRm.h"

#include <QHeaderView>

using testing::_;
using testing::Return;

namespace {

TEST(PanelBasics, validStatusIconsAreOneToSix)
{
    for (int value = -1; value <= 8; ++value)
        EXPECT_EQ(CXrefPanelCtrl::IsValidRefStatusIcon(RefStatus::RefIcon(value)),
                  value >= 1 && value <= 6)
            << value;
}

TEST(PanelBasics, constructionState)
{
    testing::NiceMock<MockXrefPanel> panel;
    EXPECT_EQ(panel.GetReferenceViewType(), CXrefPanelCtrl::FileReferenceViewType::ListView);
    EXPECT_EQ(panel.GetActiveDetailViewType(), panel.GetDetailsViewType());
    EXPECT_TRUE(panel.GetEnableSelect());
    EXPECT_FALSE(panel.IsHostModStatusEnabled());
    EXPECT_FALSE(panel.IsCreated());
    EXPECT_EQ(panel.GetListCtrl(), nullptr);
    EXPECT_EQ(panel.GetUniqueXrefCount(), 0);
    EXPECT_EQ(panel.GetRootItem(), nullptr);
    panel.EnableHostModStatus(true, false);
    EXPECT_TRUE(panel.IsHostModStatusEnabled());
    EXPECT_FALSE(panel.IsHostModified());
}

TEST(PanelBasics, createMakesBothViewsOnceAndFillsTheirStateImages)
{
    MockXrefPanel panel(true);
    EXPECT_CALL(panel, GetStoredColumnDipWidths()).WillOnce(Return(std::vector<int>{30, -1}));
    EXPECT_CALL(panel, FillStateImageList(_, true, 0))
        .WillOnce([](CZuUiImageList& list, bool, int) {
            EXPECT_EQ(list.IconSize(), QSize(16, 16));
            list.Add(CZuUiRm::Icon(CZuUiRmId(TroveUI::ResourceInstance(), "IDI_STATUS_BLANK")));
        });
    EXPECT_CALL(panel, FillStateImageList(_, true, 1));
    ASSERT_TRUE(panel.Create(L"References", QRect(0, 0, 300, 400), nullptr, 7));
    EXPECT_FALSE(panel.Create(L"References", QRect(0, 0, 300, 400), nullptr, 7));
    EXPECT_EQ(panel.GetListCtrl()->StateImageList().GetImageCount(), 1);
    EXPECT_EQ(panel.GetListCtrl()->header()->sectionSize(0), CZuUiHiDpi::ScaleX(30));
    EXPECT_EQ(panel.GetListCtrl()->header()->sectionSize(1), CZuUiHiDpi::ScaleX(18));
    EXPECT_EQ(panel.GetListCtrl()->Model().columnCount(), 8);
    EXPECT_EQ(panel.GetListCtrl()->GetSortColumn(), CXrefPanelCtrl::ListViewColumn::ReferenceName);
    EXPECT_TRUE(panel.GetListCtrl()->uniformRowHeights());
    EXPECT_TRUE(panel.GetTreeCtrl()->uniformRowHeights());

    EXPECT_CALL(panel, FillStateImageList(_, false, 0));
    EXPECT_CALL(panel, FillStateImageList(_, false, 1));
    panel.SetIconSize(false);
    EXPECT_EQ(panel.GetListCtrl()->StateImageList().GetImageCount(), 0) << "the list is rebuilt";
    EXPECT_CALL(panel, FillStateImageList(_, false, 0));
    EXPECT_CALL(panel, FillStateImageList(_, false, 1));
    panel.UpdateStateImageList();
}

TEST(PanelBasics, menuTextTableHoldsTheFortyFourTexts)
{
    CXrefPanelCtrl::LoadMenuItemStrings();
    const auto& texts = CXrefPanelCtrl::m_MenuItemstrings;
    EXPECT_EQ(texts.size(), 44u);
    for (Trove::MenuItems none :
         {Trove::Separator, Trove::HostCommand2, Trove::HostCommand40, Trove::AttachFromTrove})
        EXPECT_EQ(texts.count(none), 0u) << none;
    EXPECT_EQ(texts.at(Trove::SelectNewPath), TroveUI::ResStringW(32786));
    EXPECT_EQ(texts.at(Trove::AttachOrbiskModel), TroveUI::ResStringW(1024));
    EXPECT_EQ(texts.at(Trove::TooltipClose), TroveUI::ResStringW(1027));
    for (const auto& [item, text] : texts)
        EXPECT_FALSE(text.empty()) << item;

    CXrefPanelCtrl::LoadMenuItemString(Trove::Refresh, 1022);
    EXPECT_EQ(texts.at(Trove::Refresh), TroveUI::ResStringW(1022));
    CXrefPanelCtrl::LoadMenuItemStrings();
    EXPECT_EQ(texts.at(Trove::Refresh), TroveUI::ResStringW(1022)) << "the table loads only once";
    CXrefPanelCtrl::LoadMenuItemString(Trove::Refresh, 1021);
}

class StateImageTest : public ItemFixture
{};

TEST_F(StateImageTest, indexZeroClearsAndFifteenIsTheLargest)
{
    TestXrefItem* ref = Add(L"Detail");
    for (unsigned index : {7u, 15u}) {
        ref->SetTroveStateIconIndexTreeView(index);
        ref->SetTroveStateIconIndexListView(index);
        EXPECT_EQ(ref->GetTroveStateIconIndexTreeView(), index);
        EXPECT_EQ(ref->GetTroveStateIconIndexListView(), index);
    }
    ref->SetTroveStateIconIndexTreeView(16);
    ref->SetTroveStateIconIndexListView(16);
    EXPECT_EQ(ref->GetTroveStateIconIndexTreeView(), 0u) << "bits above the mask are lost";
    EXPECT_EQ(ref->GetTroveStateIconIndexListView(), 0u);
    ref->SetTroveStateIconIndexListView(17);
    EXPECT_EQ(ref->GetTroveStateIconIndexListView(), 1u);
    ref->SetTroveStateIconIndexListView(0);
    EXPECT_EQ(ref->GetTroveStateIconIndexListView(), 0u);

    // The state image does not disturb the overlay in the same word.
    ref->SetReferenceStatus(RefStatus::Unloaded, Trove::FileDataStatus::Code2);
    ref->SetTroveStateIconIndexListView(9);
    ref->SetTroveStateIconIndexTreeView(9);
    EXPECT_EQ(List().Row(ref->LVItemIndex())->Overlay(), 2);
    EXPECT_EQ(ref->GetTreeItem()->Overlay(), 2);
}

TEST_F(StateImageTest, listStateWrittenWithoutARowReachesEveryRow)
{
    TestXrefItem* ref = Add(L"Detail");
    TestXrefItem loose(*panel);
    loose.SetTroveStateIconIndexTreeView(3);
    EXPECT_EQ(loose.GetTroveStateIconIndexTreeView(), 0u);
    loose.SetTroveStateIconIndexListView(3);
    EXPECT_EQ(loose.GetTroveStateIconIndexListView(), 0u);
    EXPECT_EQ(ref->GetTroveStateIconIndexListView(), 3u);
    EXPECT_EQ(root->GetTroveStateIconIndexListView(), 3u);
}

TEST_F(StateImageTest, itemsKeepTheViewsStyleUntilTheHostSetsOne)
{
    TestXrefItem* ref = Add(L"Detail");
    EXPECT_FALSE(ref->UseDefaultColor());
    EXPECT_EQ(ref->GetItemTextColor(), 0u);
    EXPECT_EQ(ref->GetTreeCtrlItemTextFont().lfWeight, 0);
    ref->EditTextStyle().itemTextColor = MakeColorRef(200, 0, 0);
    ref->EditTextStyle().treeCtrlItemTextFont.lfWeight = 700;
    EXPECT_EQ(ref->GetItemTextColor(), MakeColorRef(200, 0, 0));
    EXPECT_EQ(ref->GetTreeCtrlItemTextFont().lfWeight, 700);
    EXPECT_EQ(root->GetItemTextColor(), 0u) << "one item's style is its own";
}

} // namespace

#include "toolbar/XrefToolBar.h"

namespace {

TEST(PanelBasics, toolBarKnowsItsPanelOnlyWhileThePanelLives)
{
    auto toolBar = std::make_shared<CXrefToolBar>();
    std::shared_ptr<CXrefMessageBox> strip;
    {
        testing::NiceMock<MockXrefPanel> panel(false, toolBar);
        strip = panel.GetMessageBox();
        EXPECT_EQ(toolBar->ParentPanel(), &panel);
        // Children of the panel's window, as the panel's layout makes them.
        toolBar->setParent(&panel);
        strip->setParent(&panel);
        testing::NiceMock<MockXrefPanel> other(false, nullptr);
        EXPECT_EQ(toolBar->ParentPanel(), &panel) << "a panel without tool bar leaves it alone";
    }
    // The shared pointers still own live objects: the panel neither deleted nor kept them.
    EXPECT_EQ(toolBar->ParentPanel(), nullptr);
    EXPECT_EQ(toolBar->parent(), nullptr);
    EXPECT_EQ(strip->parent(), nullptr);
}

} // namespace
