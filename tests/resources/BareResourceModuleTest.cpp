// A language module may lack anything: a string, an icon, a menu, or all of them at once. The
// panel must then come up bare (empty texts, no images, no tool bar menus) and still work: every
// view fills, every gesture is answered, and nothing crashes. The process-wide text and icon
// tables are built once on first use, so the scenario runs in a fresh process of its own, where
// the bare module is the first the tables ever see.

#include "support/ModalStandIns.h"
#include "support/PictureCase.h"
#include "support/ScopedOverrides.h"
#include "support/ScopedResourceModule.h"

#include "framework/ZuUiRm.h"
#include "host/KvNameDescriptionToolTipInfo.h"
#include "items/XrefPanelCtrlItem.h"
#include "items/XrefPanelCtrlItemStatus.h"
#include "items/XrefPanelCtrlItemTypes.h"
#include "items/XrefProperty.h"
#include "panel/KvXrefTroveUI.h"
#include "panel/XrefPanelCtrl.h"
#include "services/RmxImageSettings.h"
#include "services/TroveUIFunctions.h"
#include "services/XrefMessageBox.h"
#include "toolbar/TroveToolBar.h"
#include "toolbar/XrefToolBar.h"
#include "util/DateTime.h"
#include "views/TroveListCtrl.h"
#include "views/XrefTreeCtrl.h"

#include <gtest/gtest.h>

#include <QDomDocument>
#include <QHeaderView>
#include <QTest>

#include <cstdlib>
#include <memory>
#include <vector>

namespace {

class BareItem : public CXrefPanelCtrlItem
{
public:
    using CXrefPanelCtrlItem::CXrefPanelCtrlItem;
    bool HostOperation4() const override { return false; }
    bool HostOperation6() const override { return false; }
    bool HostOperation9() const override { return false; }
    bool HostOperation10() const override { return false; }
    bool IsPropertyEditable(XrefProperties, int) const override { return true; }
    using CXrefPanelCtrlItem::CreateToolTipInfo;
    using CXrefPanelCtrlItem::SetTypeIcon;
};

class BareItemTypes : public CXrefPanelCtrlItemTypes
{
public:
    static bool Register()
    {
        return RegisterClass(typeid(BareItem), Factory(),
                             CZuUiRmId(TroveUI::ResourceInstance(), "IDI_TYPE_DWG"),
                             StandardTypeIcons());
    }
};

// A host that answers like a real one: it offers the commands it is asked for and accepts
// edits, and counts what reaches it.
class BarePanel : public CXrefPanelCtrl
{
public:
    explicit BarePanel(std::shared_ptr<CXrefToolBar> toolBar)
        : CXrefPanelCtrl(nullptr, std::move(toolBar), std::make_shared<CXrefMessageBox>(), true,
                         FileReferenceViewType::ListView, DetailsViewType::Details, -1, true)
    {}

    int commands = 0;
    int removed = 0;

    std::wstring GetTroveStateToolTipText(CXrefPanelCtrlItem&) override { return {}; }
    void FillStateImageList(CZuUiImageList& list, bool, int) override
    {
        list.Add(CZuUiRm::ThemedIcon(CZuUiRmId(TroveUI::ResourceInstance(), "IDI_STATUS_BLANK")));
    }
    void OnSharedRowItemInserted(const CXrefPanelCtrlItem&) override {}
    void OnSharedRowOwnerChanged(CXrefPanelCtrlItem&) override {}
    void OnItemRemoved(CXrefPanelCtrlItem&) override { ++removed; }
    std::vector<int> GetStoredColumnDipWidths() override { return {}; }
    void HostCallback7() override {}
    void HostCallback9(std::vector<int>&) override {}
    void GetStoredLowerGroup(double& ratio, bool& shown) override
    {
        ratio = 0.6;
        shown = true;
    }
    void HostCallback11() override {}
    void FillContextMenu(QMenu& menu, const std::vector<CXrefPanelCtrlItem*>&, bool) override
    {
        CZuUiMenu::AppendMenu(&menu, CZuUiMenu::String, Trove::Refresh,
                              QString::fromStdWString(m_MenuItemstrings[Trove::Refresh]));
    }
    void OnMenuSelection(Trove::MenuItems, const std::vector<CXrefPanelCtrlItem*>&) override
    {
        ++commands;
    }
    void OnStatusColumnDoubleClicked(CXrefPanelCtrlItem*) override {}
    void OnDisplayHelp() override {}
    bool OnApplyPropertyEdit(const std::vector<CXrefPanelCtrlItem*>&, XrefProperties,
                             const std::wstring&, const std::wstring&) override
    {
        return true;
    }
    void HostCallback20() override {}
    void OnSortCriteriaChanged(int, bool) override {}
};

void click(QAbstractItemView* view, const QModelIndex& index, Qt::KeyboardModifiers keys = {},
           Qt::MouseButton button = Qt::LeftButton)
{
    QTest::mouseClick(view->viewport(), button, keys, view->visualRect(index).center());
}

// Everything a user and a host do with a panel, on a bare module. Returns normally when the
// panel came through it; EXPECT failures mark what did not work.
void runBarePanel()
{
    ScopedResourceModule bare(false);
    Util::SetCurrentResourceModule(&bare.Module());
    EXPECT_TRUE(bare.Module().StringIds().isEmpty());
    EXPECT_TRUE(TroveUI::ResString(1038).isEmpty());

    kvXrefTroveUIInitialize();
    TroveUI::RmxImageSettings::New();
    EXPECT_TRUE(BareItemTypes::Register());

    auto toolBar = std::make_shared<CTroveToolBar>();
    BarePanel panel(toolBar);
    ASSERT_TRUE(panel.Create(L"", QRect(0, 0, 640, 480), nullptr, 30000));
    // Without its menu the tool bar has no commands to offer; it may refuse to come up, but a
    // tool bar that does come up must work.
    if (toolBar->Create(&panel)) {
        toolBar->EnablePathOperations(true);
        for (unsigned id : {1081u, 1086u, 1176u, 30203u, 30204u, 30205u, 30206u})
            toolBar->OnCommand(id);
    }

    // A host drawing with references of every kind and status, two of them one file.
    panel.BeginUpdate();
    auto* root = new BareItem(panel);
    panel.InsertRootItem(*root);
    root->SetText(L"Site");
    root->SetTypeIcon(RefStatus::NoIcon, QStringLiteral("HOSTDWG"));
    std::vector<BareItem*> items;
    const char* kinds[] = {"", "IMAGE", "PDF", "DWF", "DGN", "POINTCLOUD", "MODEL", "DATALINK"};
    for (int i = 0; i < 16; ++i) {
        auto* item = new BareItem(panel);
        BareItem* shared = i == 15 ? items[3] : nullptr;
        panel.InsertItem(*item, i % 4 == 3 ? *items[size_t(i - 1)] : *root, shared);
        item->SetText(L"Ref " + std::to_wstring(i));
        item->SetTypeIcon(RefStatus::RefIcon(i % 7), QString::fromLatin1(kinds[i % 8]));
        item->SetReferenceStatus(RefStatus::RefIcon(1 + i % 6),
                                 Trove::FileDataStatus::Value(i % 22));
        item->SetType(i % 2 ? L"Overlay" : L"Attach");
        item->SetSize(1000LL * i * i * i);
        item->SetDate(Util::DateTime(QDateTime(QDate(2020, 1 + i % 12, 1), QTime(12, 0))));
        item->SetSavedPath(L"C:\\plans\\ref" + std::to_wstring(i) + L".dwg");
        item->SetTroveStateIconIndexListView(unsigned(i % 3));
        item->SetTroveStateIconIndexTreeView(unsigned(i % 3));
        items.push_back(item);
    }
    panel.EndUpdate();
    EXPECT_EQ(panel.GetUniqueXrefCount(), 15);
    EXPECT_EQ(panel.GetListCtrl()->model()->rowCount(), 16) << "the host drawing and 15 files";
    panel.GetTreeCtrl()->expandAll();

    // Texts that come from the module are empty, never garbage; values are still formatted.
    EXPECT_TRUE(CXrefPanelCtrlItemStatus::ToString(Trove::FileDataStatus::Code1).isEmpty());
    EXPECT_TRUE(CXrefProperty(CXrefPanelCtrl::XrefProperties(2)).GetName().empty());
    EXPECT_FALSE(items[5]->GetSizeDisplayText().empty());
    const auto tip = items[2]->CreateToolTipInfo(ToolTipMenuSettings{});
    ASSERT_TRUE(tip);
    EXPECT_EQ(tip->GetName(), QStringLiteral("Ref 2"));

    panel.show();
    QApplication::setActiveWindow(&panel);
    EXPECT_TRUE(QTest::qWaitForWindowExposed(&panel));
    const PictureCase look{false, 1.0};
    EXPECT_TRUE(panel.grab().save(look.PicturePath("resources", "bare_panel")));

    // Gestures in both views: clicks, extended selections, context menus, keys, sorting.
    MenuTracker menus;
    menus.ChooseCommand(Trove::Refresh);
    MessageBoxRecorder boxes;
    for (QAbstractItemView* view : {static_cast<QAbstractItemView*>(panel.GetListCtrl()),
                                    static_cast<QAbstractItemView*>(panel.GetTreeCtrl())}) {
        // Each view in turn in front, as the user switches between them.
        view->raise();
        view->show();
        if (view->width() < 200 || view->height() < 200)
            view->setGeometry(0, 0, 600, 400);
        QApplication::processEvents();
        EXPECT_TRUE(view->grab().save(look.PicturePath(
            "resources", view == panel.GetTreeCtrl() ? "bare_tree" : "bare_list")));
        QAbstractItemModel* model = view->model();
        const QModelIndex first = model->index(0, 0);
        const QModelIndex child =
            model->index(1, 0, view == panel.GetTreeCtrl() ? first : QModelIndex());
        click(view, first);
        click(view, child, Qt::ShiftModifier);
        click(view, child, Qt::ControlModifier);
        click(view, child, {}, Qt::RightButton);
        QContextMenuEvent menu(QContextMenuEvent::Mouse, view->visualRect(child).center(),
                               view->viewport()->mapToGlobal(view->visualRect(child).center()));
        QApplication::sendEvent(view->viewport(), &menu);
        QTest::mouseDClick(view->viewport(), Qt::LeftButton, {},
                           view->visualRect(model->index(1, 1, child.parent())).center());
        for (Qt::Key key : {Qt::Key_Down, Qt::Key_End, Qt::Key_Home, Qt::Key_F2, Qt::Key_Escape,
                            Qt::Key_Up, Qt::Key_Delete})
            QTest::keyClick(view, key);
        QTest::keyClick(view, Qt::Key_A, Qt::ControlModifier);
        QApplication::processEvents();
    }
    QHeaderView* header = panel.GetListCtrl()->header();
    for (int column = 0; column < header->count(); ++column)
        QTest::mouseClick(
            header->viewport(), Qt::LeftButton, {},
            QPoint(header->sectionViewportPosition(column) + 3, header->height() / 2));
    EXPECT_EQ(panel.GetListCtrl()->model()->rowCount(), 16);

    panel.OnItemsSelected({items[4], items[5]}, true);
    panel.OnItemsSelected({items[6]}, true);
    panel.OnItemsSelected({}, true);

    // Tool-tip settings go out and come back even without any text to name them.
    QDomDocument document;
    QDomElement node = document.createElement(QStringLiteral("Palette"));
    document.appendChild(node);
    panel.SaveTooltipSettings(node);
    panel.LoadTooltipSettings(node);

    // Messages the library shows with missing texts are empty boxes, not crashes.
    TroveUI::MessageBoxW(&bare.Module(), 1400, 1401, 0, 0);
    TroveUI::FormatMessageBox1(&bare.Module(), 1402, L"plan.dwg", 0, 0, 0);

    panel.DeleteTreeItem(*items[2]);
    delete items[2];
    panel.DeleteAllItems();
    EXPECT_EQ(panel.GetListCtrl()->model()->rowCount(), 0);
    TroveUI::RmxImageSettings::Delete();
}

TEST(BareResourceModule, panelWorksWithoutAnyStringIconOrMenu)
{
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    EXPECT_EXIT(
        {
            runBarePanel();
            std::exit(testing::Test::HasFailure() ? 1 : 0);
        },
        testing::ExitedWithCode(0), "");
}

} // namespace
